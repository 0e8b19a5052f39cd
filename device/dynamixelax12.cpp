#include "device/dynamixelax12.h"

namespace {

constexpr double halfTurn = 3.141592653589;

} // namespace

DynamixelAx12::DynamixelAx12()
{
    // The lower-case "i" and "d" of the two position terms are how those widgets are named.
    addLimits({
        {"positionLineEdit", 0, 2047, -halfTurn, halfTurn, nullptr},
        {"speedLineEdit", 0, 10000, 0.0, 10.0, nullptr},
        {"temperatureLineEdit", 0, 255, 0.0, 255.0, nullptr},
        {"torqueLineEdit", 0, 10, 0.0, 10.0, nullptr},
        {"voltageLineEdit", 0, 10, 0.0, 10.0, nullptr},
        {"currentLineEdit", 0, 10, 0.0, 10.0, nullptr},
        {"firmwareVersionLineEdit", 0, 255, 0.0, 255.0, nullptr},
        {"modelNumberLineEdit", 0, 255, 0.0, 255.0, nullptr},
        {"clockwiseLimitDoubleSpinBox", 0, 2047, -halfTurn, halfTurn, nullptr},
        {"counterClockwiseLimitDoubleSpinBox", 0, 2047, -halfTurn, halfTurn, nullptr},
        {"targetAngularVelocityDoubleSpinBox", 0, 10000, 0.0, 10.0, nullptr},
        {"positionProportionalTermDoubleSpinBox", 0, 10, 0.0, 10.0, nullptr},
        {"positionintegralTermDoubleSpinBox", 0, 10, 0.0, 10.0, nullptr},
        {"positionderivativeTermDoubleSpinBox", 0, 10, 0.0, 10.0, nullptr},
    });
}

unsigned DynamixelAx12::controlTableSize() const
{
    return 50;
}

std::unique_ptr<RegisterDescription> DynamixelAx12::registerDescription(uint16_t) const
{
    return nullptr;
}

unsigned DynamixelAx12::registerCount(unsigned) const
{
    return 0;
}

bool DynamixelAx12::hasRegisterMap() const
{
    return false;
}
