#pragma once

#include <QByteArray>
#include <QString>
#include <functional>

// One quantity taken from every polled table: what it is called, its unit and how its
// value is read from a reply.
struct TraceChannel
{
    // Stable across connections, so a choice of channels can be kept.
    QString key;
    QString name;
    QString unit;
    // Reads the value from a whole-table reply (register a at byte 9 + a).
    std::function<double(const QByteArray &reply)> decode;

    // "Name [unit]", or the name alone for a value without a unit.
    QString title() const
    {
        return unit.isEmpty() ? name : name + QStringLiteral(" [") + unit + ']';
    }
};
