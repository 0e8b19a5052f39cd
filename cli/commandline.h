#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

// Exit statuses of the tool.
enum ExitStatus { Success = 0, Failed = 1, BadUsage = 2 };

// The tool's arguments, checked against what the command takes.
struct Invocation
{
    QString command;
    QStringList arguments;
    // The command's own options, by name without dashes; flags map to an empty text.
    QHash<QString, QString> options;
    QString port;
    // As given; each command reads it its own way (scan takes a list).
    QString baud;
    bool json = false;
    bool help = false;
    bool version = false;
    // Set when the arguments make no sense; nothing else is meaningful then.
    QString usageError;

    bool has(const QString &option) const { return options.contains(option); }
};

class CommandLine
{
public:
    static Invocation parse(const QStringList &arguments);
    static QString usage();
};
