#pragma once

#include <stdexcept>

// An unknown key is a fault of the build, not of the user; every table of the program
// reports it with the same text.
[[noreturn]] inline void throwInvalidKey()
{
    throw std::out_of_range("invalid map<K, T> key");
}

template<typename Map>
const typename Map::mapped_type &checkedLookup(const Map &map, const typename Map::key_type &key)
{
    const auto found = map.find(key);
    if (found == map.end())
        throwInvalidKey();
    return found->second;
}
