# Empties every test's configuration folder before a run, so that each run starts from
# a first start, whatever an earlier run (or a test run by hand) left behind.
file(GLOB homes LIST_DIRECTORIES true ${HOMES}/*)
foreach(home IN LISTS homes)
    if(IS_DIRECTORY ${home}/config)
        file(REMOVE_RECURSE ${home}/config)
        file(MAKE_DIRECTORY ${home}/config)
    endif()
endforeach()
