#include "cli/commandline.h"

#include <algorithm>
#include <array>

namespace {

struct CommandShape
{
    const char *name;
    const char *synopsis;
    int minArguments;
    // -1 for no limit.
    int maxArguments;
    // Options taking a value end in '='.
    std::vector<const char *> options;
};

const std::array<CommandShape, 12> commands{{
    {"ports", "ports", 0, 0, {}},
    {"scan", "scan [--baud all|RATE,...] [--ids A-B]", 0, 0, {"ids="}},
    {"ping", "ping ID", 1, 1, {}},
    {"reboot", "reboot ID", 1, 1, {}},
    {"reset", "reset ID [--keep id,baud|id|none]", 1, 1, {"keep="}},
    {"read", "read ID ADDR LEN", 3, 3, {}},
    {"get", "get ID NAME...", 2, -1, {}},
    {"set", "set ID NAME VALUE[UNIT]... [--dry-run]", 3, -1, {"dry-run"}},
    {"dump", "dump ID", 1, 1, {}},
    {"monitor", "monitor ID [--rate HZ] [--csv] [--count N]", 1, 1, {"rate=", "csv", "count="}},
    {"save", "save ID FILE", 2, 2, {}},
    {"load", "load ID FILE [--dry-run] [--include-id-baud]", 2, 2, {"dry-run", "include-id-baud"}},
}};

const CommandShape *shapeOf(const QString &name)
{
    const auto found = std::find_if(commands.begin(), commands.end(), [&name](const auto &shape) {
        return name == QLatin1String(shape.name);
    });
    return found == commands.end() ? nullptr : &*found;
}

// "name=" when the option takes a value, "name" for a flag, empty when it is unknown.
QString optionForm(const CommandShape *shape, const QString &name)
{
    if (!shape)
        return {};
    for (const char *option : shape->options) {
        const QString form = QLatin1String(option);
        if (form == name || form == name + '=')
            return form;
    }
    return {};
}

} // namespace

Invocation CommandLine::parse(const QStringList &arguments)
{
    Invocation invocation;
    invocation.baud = QStringLiteral("1000000");
    const CommandShape *shape = nullptr;
    bool baudGiven = false;
    bool optionsEnded = false;
    for (int i = 0; i < arguments.size() && invocation.usageError.isEmpty(); ++i) {
        const QString &argument = arguments.at(i);
        if (!optionsEnded && argument == QLatin1String("--")) {
            optionsEnded = true;
            continue;
        }
        if (optionsEnded || !argument.startsWith(QLatin1String("--"))) {
            if (invocation.command.isEmpty()) {
                invocation.command = argument;
                shape = shapeOf(argument);
                if (!shape)
                    invocation.usageError = QStringLiteral("unknown command '%1'").arg(argument);
            } else {
                invocation.arguments << argument;
            }
            continue;
        }
        QString name = argument.mid(2);
        QString value;
        const int equals = name.indexOf('=');
        const bool inlineValue = equals >= 0;
        if (inlineValue) {
            value = name.mid(equals + 1);
            name.truncate(equals);
        }
        const bool global = name == QLatin1String("port") || name == QLatin1String("baud");
        const QString form = optionForm(shape, name);
        const bool takesValue = global || form.endsWith('=');
        if (!global && form.isEmpty()) {
            if (name == QLatin1String("json") || name == QLatin1String("help") ||
                name == QLatin1String("version")) {
                if (inlineValue)
                    invocation.usageError = QStringLiteral("--%1 takes no value").arg(name);
                invocation.json = invocation.json || name == QLatin1String("json");
                invocation.help = invocation.help || name == QLatin1String("help");
                invocation.version = invocation.version || name == QLatin1String("version");
                continue;
            }
            invocation.usageError =
                shape ? QStringLiteral("%1 has no option --%2").arg(invocation.command, name)
                      : QStringLiteral("unknown option --%1").arg(name);
            break;
        }
        if (takesValue && !inlineValue) {
            if (i + 1 >= arguments.size()) {
                invocation.usageError = QStringLiteral("--%1 needs a value").arg(name);
                break;
            }
            value = arguments.at(++i);
        } else if (!takesValue && inlineValue) {
            invocation.usageError = QStringLiteral("--%1 takes no value").arg(name);
            break;
        }
        if (name == QLatin1String("port")) {
            invocation.port = value;
        } else if (name == QLatin1String("baud")) {
            invocation.baud = value;
            baudGiven = true;
        } else {
            invocation.options.insert(name, value);
        }
    }
    if (!invocation.usageError.isEmpty() || invocation.help || invocation.version)
        return invocation;
    if (!shape) {
        invocation.usageError = QStringLiteral("no command given");
        return invocation;
    }
    // Scan looks at every rate unless told otherwise.
    if (invocation.command == QLatin1String("scan") && !baudGiven)
        invocation.baud = QStringLiteral("all");
    const int count = invocation.arguments.size();
    if (count < shape->minArguments || (shape->maxArguments >= 0 && count > shape->maxArguments))
        invocation.usageError = QStringLiteral("usage: zelvar-servo %1").arg(shape->synopsis);
    return invocation;
}

QString CommandLine::usage()
{
    QString text = QStringLiteral(
        "Usage: zelvar-servo [--port NAME] [--baud RATE] [--json] COMMAND [ARGUMENTS]\n"
        "\n"
        "Configure and watch Zelvar servos from a shell or a script.\n"
        "\n"
        "Options:\n"
        "  --port NAME   the port, as 'zelvar-servo ports' lists it (also \"Virtual bus\")\n"
        "  --baud RATE   the bus's baud rate (default 1000000)\n"
        "  --json        machine-readable output\n"
        "  --help        this text\n"
        "  --version     the program's version\n"
        "\n"
        "Commands:\n");
    for (const CommandShape &shape : commands)
        text += QStringLiteral("  %1\n").arg(QLatin1String(shape.synopsis));
    text += QStringLiteral(
        "\n"
        "Exit status: 0 on success, 1 when a servo answered with an error or nothing\n"
        "answered, 2 on bad usage. See zelvar-servo(1).\n");
    return text;
}
