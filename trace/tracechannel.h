#pragma once

#include <QByteArray>
#include <QString>
#include <cmath>
#include <functional>

// One quantity taken from every polled table: what it is called, its unit and how its
// value is read from a reply.
struct TraceChannel
{
    // Stable across connections and unit changes, so a choice of channels can be kept.
    QString key;
    QString name;
    QString unit;
    // The register's value as its type says (signed or not) from a whole-table reply.
    std::function<double(const QByteArray &reply)> raw;
    // Raw to the user's units; none for values shown as they are.
    std::function<double(double raw)> toDisplay;

    // NaN (no value) stays NaN.
    double display(double rawValue) const
    {
        return toDisplay && !std::isnan(rawValue) ? toDisplay(rawValue) : rawValue;
    }
    double value(const QByteArray &reply) const { return display(raw(reply)); }
    // "Name [unit]", or the name alone for a value without a unit.
    QString title() const
    {
        return unit.isEmpty() ? name : name + QStringLiteral(" [") + unit + ']';
    }
};
