#include "cli/commandline.h"
#include "cli/commands.h"
#include "cli/console.h"
#include "simulator/virtualbusportprovider.h"

#include <QCoreApplication>

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("zelvar-servo"));
    QCoreApplication::setApplicationVersion(QStringLiteral(ZELVAR_VERSION));
    // "Virtual bus" works here as it does in the window.
    VirtualBusPortProvider::installProcessBus();

    const Invocation invocation = CommandLine::parse(QCoreApplication::arguments().mid(1));
    const Console console(invocation.json);
    if (invocation.help) {
        console.line(CommandLine::usage().trimmed());
        return Success;
    }
    if (invocation.version) {
        console.line(QStringLiteral("zelvar-servo %1").arg(QCoreApplication::applicationVersion()));
        return Success;
    }
    if (!invocation.usageError.isEmpty()) {
        console.problem(invocation.usageError);
        console.problem(QStringLiteral("'zelvar-servo --help' lists the commands"));
        return BadUsage;
    }
    return Commands::run(invocation, console);
}
