#pragma once

#include <QString>
#include <optional>
#include <vector>

// The values a servo is watched by: its realtime state and the targets it follows.
enum class Quantity {
    Position,
    AngularVelocity,
    Torque,
    PhaseCurrent,
    Voltage,
    Temperature,
    Moving,
    TargetPosition,
    TargetAngularVelocity,
    TargetTorque,
};

// Names of the quantities: a short key for files and command lines, and the register
// description by which each model's catalogue finds it.
class QuantityTable
{
public:
    static const std::vector<Quantity> &all();
    static QString key(Quantity quantity);
    static QString description(Quantity quantity);
    static std::optional<Quantity> fromKey(const QString &key);
};
