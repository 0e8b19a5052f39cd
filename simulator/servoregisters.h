#pragma once

#include <QtGlobal>

// Addresses of the Zelvar control table that the simulator acts on.
namespace ServoRegister {
constexpr int Id = 3;
constexpr int BaudRate = 4;
constexpr int ReturnDelay = 5;
constexpr int OperatingMode = 6;
constexpr int ClockwiseLimit = 7;
constexpr int CounterClockwiseLimit = 9;
constexpr int TemperatureLimit = 11;
constexpr int MinVoltageLimit = 12;
constexpr int MaxVoltageLimit = 13;
constexpr int TorqueLimit = 14;
constexpr int VelocityLimit = 16;
constexpr int AccelerationLimit = 18;
constexpr int MovingThreshold = 24;
constexpr int InputMode = 26;
constexpr int DefaultPositionP = 27;
constexpr int DefaultAccelerationProfile = 39;
constexpr int ControlEnable = 48;
constexpr int PendingShadowInstruction = 49;
constexpr int PositionP = 54;
constexpr int VelocityProfile = 68;
constexpr int AccelerationProfile = 70;
constexpr int TargetPosition = 78;
constexpr int TargetVelocity = 82;
constexpr int TargetTorque = 84;
constexpr int ActualPosition = 86;
constexpr int ActualVelocity = 90;
constexpr int ActualTorque = 92;
constexpr int ActualVoltage = 94;
constexpr int ActualCurrent = 95;
constexpr int ActualTemperature = 97;
constexpr int Moving = 99;
constexpr int ActiveVelocityProfile = 101;
constexpr int HardwareError = 107;

constexpr int TableSize = 118;
constexpr int NonVolatileFirst = 3;
constexpr int NonVolatileLast = 40;
} // namespace ServoRegister

namespace ServoMode {
constexpr int Torque = 0;
constexpr int Wheel = 1;
constexpr int Joint = 2;
constexpr int MultiTurn = 3;
constexpr int Stepper = 4;
} // namespace ServoMode

namespace HardwareErrorBit {
constexpr quint8 InputVoltage = 0x01;
constexpr quint8 Overheating = 0x04;
constexpr quint8 AngleLimit = 0x10;
} // namespace HardwareErrorBit

// Magnitude and direction share a 16-bit target register: bit 15 set means negative.
constexpr quint16 DirectionBit = 0x8000;
