#include "telemetry/quantitytable.h"

#include <array>

namespace {

struct Names
{
    Quantity quantity;
    const char *key;
    const char *description;
};

const std::array<Names, 10> names{{
    {Quantity::Position, "position", "Actual position"},
    {Quantity::AngularVelocity, "velocity", "Actual angular velocity"},
    {Quantity::Torque, "torque", "Actual torque"},
    {Quantity::PhaseCurrent, "current", "Actual phase current"},
    {Quantity::Voltage, "voltage", "Actual voltage"},
    {Quantity::Temperature, "temperature", "Actual temperature"},
    {Quantity::Moving, "moving", "Moving"},
    {Quantity::TargetPosition, "target-position", "Target position"},
    {Quantity::TargetAngularVelocity, "target-velocity", "Target angular velocity"},
    {Quantity::TargetTorque, "target-torque", "Target torque"},
}};

const Names &namesOf(Quantity quantity)
{
    return names[size_t(quantity)];
}

} // namespace

const std::vector<Quantity> &QuantityTable::all()
{
    static const std::vector<Quantity> quantities = [] {
        std::vector<Quantity> list;
        for (const Names &entry : names)
            list.push_back(entry.quantity);
        return list;
    }();
    return quantities;
}

QString QuantityTable::key(Quantity quantity)
{
    return QString::fromLatin1(namesOf(quantity).key);
}

QString QuantityTable::description(Quantity quantity)
{
    return QString::fromLatin1(namesOf(quantity).description);
}

std::optional<Quantity> QuantityTable::fromKey(const QString &key)
{
    for (const Names &entry : names) {
        if (key == QLatin1String(entry.key))
            return entry.quantity;
    }
    return std::nullopt;
}
