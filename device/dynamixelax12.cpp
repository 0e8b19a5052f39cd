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

std::vector<RegisterSpan> DynamixelAx12::registers() const
{
    // The AX-12's published control table, named like our own registers so that the same
    // quantity is found by the same name on both models. Speed and load carry their
    // direction in bit 10.
    struct Row
    {
        uint8_t address;
        uint8_t size;
        bool writable;
        const char *description;
        const char *field;
        int32_t fieldId;
        int directionBit;
    };
    // clang-format off
    static const Row rows[] = {
        {0, 2, false, "Model number", "modelNumberLineEdit", 17, -1},
        {2, 1, false, "Firmware version", "firmwareVersionLineEdit", 22, -1},
        {3, 1, true, "ID", "", -1, -1},
        {4, 1, true, "Baud rate", "", -1, -1},
        {5, 1, true, "Return delay time", "", -1, -1},
        {6, 2, true, "CW angle limit", "clockwiseLimitDoubleSpinBox", 1, -1},
        {8, 2, true, "CCW angle limit", "counterClockwiseLimitDoubleSpinBox", 1, -1},
        {11, 1, true, "Upper temperature limit", "", -1, -1},
        {12, 1, true, "Lower input voltage limit", "", -1, -1},
        {13, 1, true, "Upper input voltage limit", "", -1, -1},
        {14, 2, true, "Torque limit", "", -1, -1},
        {16, 1, true, "Status return level", "", -1, -1},
        {17, 1, true, "Alarm LED", "", -1, -1},
        {18, 1, true, "Shutdown", "", -1, -1},
        {24, 1, true, "Torque enable", "", -1, -1},
        {25, 1, true, "LED", "", -1, -1},
        {26, 1, true, "CW compliance margin", "", -1, -1},
        {27, 1, true, "CCW compliance margin", "", -1, -1},
        {28, 1, true, "CW compliance slope", "", -1, -1},
        {29, 1, true, "CCW compliance slope", "", -1, -1},
        {30, 2, true, "Target position", "positionLineEdit", 1, -1},
        {32, 2, true, "Target angular velocity", "targetAngularVelocityDoubleSpinBox", 0, 10},
        {34, 2, true, "Volatile torque limit", "", -1, -1},
        {36, 2, false, "Actual position", "positionLineEdit", 1, -1},
        {38, 2, false, "Actual angular velocity", "speedLineEdit", 0, 10},
        {40, 2, false, "Actual torque", "torqueLineEdit", 3, 10},
        {42, 1, false, "Actual voltage", "voltageLineEdit", 4, -1},
        {43, 1, false, "Actual temperature", "temperatureLineEdit", 6, -1},
        {44, 1, false, "Registered", "", -1, -1},
        {46, 1, false, "Moving", "", -1, -1},
        {47, 1, true, "Lock", "", -1, -1},
        {48, 2, true, "Punch", "", -1, -1},
    };
    // clang-format on
    std::vector<RegisterSpan> spans;
    for (const Row &row : rows)
        spans.push_back(RegisterSpan{
            row.address, row.size, false, row.writable, QString::fromLatin1(row.description),
            QString::fromLatin1(row.field), row.fieldId, row.directionBit});
    return spans;
}
