#include "simulator/virtualservo.h"

#include "simulator/baudratecode.h"
#include "simulator/servoregisters.h"
#include "simulator/servoregistertable.h"

#include <algorithm>
#include <cmath>

namespace {

using namespace ServoRegister;

constexpr double TwoPi = 6.283185307178;
constexpr double CountsPerRadian = 4096 / TwoPi;
constexpr double MaxSpeed = 2.3;              // rad/s, whatever the limit register says
constexpr double MaxPosition = 1044479;       // counts
constexpr double Inertia = 0.01;              // kg.m^2, rotor plus horn
constexpr double Friction = 0.1;              // N.m per rad/s
constexpr double TorquePerAmp = 2.0;          // N.m/A
constexpr double IdleCurrent = 20;            // mA while the motor is enabled
constexpr double AmbientTemperature = 25;     // degC
constexpr double HeatingPerAmpSquared = 2000; // degC above ambient at steady state
constexpr double ThermalTimeConstant = 30;    // s
constexpr double MaxStep = 0.001;             // s, keeps the integration stable
// Beyond this everything has settled, so a long idle gap costs no more than this.
constexpr double MaxCatchUp = 300;

bool isFactoryResetMode(quint8 mode)
{
    return mode == FactoryResetMode::All || mode == FactoryResetMode::KeepId ||
           mode == FactoryResetMode::KeepIdAndBaudRate;
}

double clampMagnitude(double value, double limit)
{
    return std::clamp(value, -limit, limit);
}

} // namespace

VirtualServo::VirtualServo()
    : table(ServoRegisterTable::factoryDefaults())
    , noise(12345)
{
    publish();
    updateHardwareError();
}

quint8 VirtualServo::id() const
{
    return byte(Id);
}

int VirtualServo::baudRateCode() const
{
    return byte(BaudRate);
}

int VirtualServo::returnDelayMicroseconds() const
{
    return 2 * byte(ReturnDelay);
}

int VirtualServo::byte(int address) const
{
    return quint8(table.at(address));
}

quint32 VirtualServo::value(int address, int width) const
{
    quint32 result = 0;
    for (int i = width - 1; i >= 0; --i)
        result = (result << 8) | quint8(table[address + i]);
    return result;
}

void VirtualServo::setValue(int address, int width, qint64 value)
{
    store(address, width, value);
    if (address <= ActualPosition && address + width > ActualPosition)
        positionCounts = qint32(this->value(ActualPosition, 4));
    updateHardwareError();
}

void VirtualServo::store(int address, int width, qint64 value)
{
    for (int i = 0; i < width; ++i)
        table[address + i] = char((value >> (8 * i)) & 0xFF);
}

Packet VirtualServo::handle(const Packet &request)
{
    const quint8 answeringId = id();
    quint8 error = ServoError::None;
    QByteArray data;
    switch (request.instruction) {
    case Instruction::Ping:
        data = table.left(3);
        break;
    case Instruction::Read:
        data = read(request.parameters, &error);
        break;
    case Instruction::Write:
        error = write(request.parameters);
        break;
    case Instruction::Reboot:
        break;
    case Instruction::FactoryReset:
        if (request.parameters.size() != 1)
            error = ServoError::DataLength;
        else if (!isFactoryResetMode(quint8(request.parameters[0])))
            error = ServoError::DataRange;
        break;
    default:
        error = ServoError::Instruction;
        break;
    }
    Packet reply{answeringId, Instruction::Status, QByteArray(1, char(statusError(error))) + data};
    // The servo answers first and only then restarts.
    if (request.instruction == Instruction::Reboot)
        reboot();
    else if (request.instruction == Instruction::FactoryReset && error == ServoError::None)
        factoryReset(quint8(request.parameters[0]));
    return reply;
}

quint8 VirtualServo::statusError(quint8 error) const
{
    return byte(HardwareError) != 0 ? error | ServoError::AlertBit : error;
}

QByteArray VirtualServo::read(const QByteArray &parameters, quint8 *error) const
{
    if (parameters.size() != 4) {
        *error = ServoError::DataLength;
        return {};
    }
    const int address = quint8(parameters[0]) | (quint8(parameters[1]) << 8);
    const int length = quint8(parameters[2]) | (quint8(parameters[3]) << 8);
    if (address + length > TableSize) {
        *error = ServoError::Access;
        return {};
    }
    return table.mid(address, length);
}

quint8 VirtualServo::write(const QByteArray &parameters)
{
    if (parameters.size() < 3)
        return ServoError::DataLength;
    const int address = quint8(parameters[0]) | (quint8(parameters[1]) << 8);
    const QByteArray data = parameters.mid(2);
    const int end = address + data.size();
    if (end > TableSize || !ServoRegisterTable::isWritable(address))
        return ServoError::Access;
    const bool touchesNonVolatile = address <= NonVolatileLast && end > NonVolatileFirst;
    if (touchesNonVolatile && byte(ControlEnable) != 0)
        return ServoError::Access;
    if (const quint8 error = checkRanges(address, data))
        return error;
    for (int i = 0; i < data.size(); ++i) {
        if (ServoRegisterTable::isWritable(address + i))
            table[address + i] = data[i];
    }
    updateHardwareError();
    return ServoError::None;
}

quint8 VirtualServo::checkRanges(int address, const QByteArray &data) const
{
    struct Range
    {
        int address;
        bool (*accepts)(int);
    };
    static const Range ranges[] = {
        {Id, [](int id) { return id <= 253; }},
        {BaudRate, [](int code) { return BaudRateCode::isValid(code); }},
        {OperatingMode, [](int mode) { return mode <= ServoMode::Stepper; }},
        {InputMode, [](int mode) { return mode <= 1; }},
    };
    for (const Range &range : ranges) {
        const int offset = range.address - address;
        if (offset >= 0 && offset < data.size() && !range.accepts(quint8(data[offset])))
            return ServoError::DataRange;
    }
    return ServoError::None;
}

void VirtualServo::reboot()
{
    table[ControlEnable] = 0;
    table[PendingShadowInstruction] = 0;
    for (const auto &copy : ServoRegisterTable::defaultCopies())
        store(copy.to, 2, value(copy.from, 2));
    store(TargetPosition, 4, qint32(std::lround(positionCounts)));
    store(TargetVelocity, 2, 0);
    store(TargetTorque, 2, 0);
    velocityRadPerSec = 0;
    publish();
    updateHardwareError();
}

void VirtualServo::factoryReset(quint8 mode)
{
    const QByteArray defaults = ServoRegisterTable::factoryDefaults();
    const char keptId = byte(Id);
    const char keptBaudRate = byte(BaudRate);
    table.replace(NonVolatileFirst, NonVolatileLast - NonVolatileFirst + 1,
                  defaults.mid(NonVolatileFirst, NonVolatileLast - NonVolatileFirst + 1));
    if (mode != FactoryResetMode::All)
        table[Id] = keptId;
    if (mode == FactoryResetMode::KeepIdAndBaudRate)
        table[BaudRate] = keptBaudRate;
    reboot();
}

void VirtualServo::step(double seconds)
{
    seconds = std::clamp(seconds, 0.0, MaxCatchUp);
    while (seconds > 0) {
        const double dt = std::min(seconds, MaxStep);
        integrate(dt);
        seconds -= dt;
    }
    publish();
    updateHardwareError();
}

double VirtualServo::signedTarget(int address) const
{
    const quint32 raw = value(address, 2);
    const double magnitude = (raw & ~DirectionBit) * 0.001;
    return (raw & DirectionBit) ? -magnitude : magnitude;
}

double VirtualServo::positionTarget() const
{
    const double target = qint32(value(TargetPosition, 4));
    if (byte(OperatingMode) != ServoMode::Joint)
        return std::clamp(target, -MaxPosition, MaxPosition);
    // Angle limits count pi/2047 per step, positions 4096 per turn.
    const double cw = qint16(value(ClockwiseLimit, 2)) * 2048.0 / 2047.0;
    const double ccw = qint16(value(CounterClockwiseLimit, 2)) * 2048.0 / 2047.0;
    return std::clamp(target, std::min(cw, ccw), std::max(cw, ccw));
}

void VirtualServo::integrate(double dt)
{
    const bool enabled = byte(ControlEnable) != 0;
    const double speedLimit = std::min(MaxSpeed, value(VelocityLimit, 2) * 0.001);
    const double accelerationLimit = value(AccelerationLimit, 2) * 0.001;
    const double torqueLimit = value(TorqueLimit, 2) * 0.001;

    double acceleration = -Friction * velocityRadPerSec / Inertia;
    if (enabled) {
        const int mode = byte(OperatingMode);
        if (mode == ServoMode::Torque) {
            const double command = clampMagnitude(signedTarget(TargetTorque), torqueLimit);
            acceleration = (command - Friction * velocityRadPerSec) / Inertia;
        } else if (mode == ServoMode::Wheel) {
            const double wanted = clampMagnitude(signedTarget(TargetVelocity), speedLimit);
            acceleration = (wanted - velocityRadPerSec) / dt;
        } else {
            // Trajectory input follows the profile; position input runs at the limits.
            double speed = speedLimit;
            double rate = accelerationLimit;
            if (byte(InputMode) == 0) {
                if (const double profile = value(VelocityProfile, 2) * 0.001; profile > 0)
                    speed = std::min(speed, profile);
                if (const double profile = value(AccelerationProfile, 2) * 0.001; profile > 0)
                    rate = std::min(rate, profile);
            }
            const double error = (positionTarget() - positionCounts) / CountsPerRadian;
            const double wanted =
                std::copysign(std::min(speed, std::sqrt(2 * rate * std::abs(error))), error);
            acceleration = clampMagnitude((wanted - velocityRadPerSec) / dt, rate);
        }
        acceleration = clampMagnitude(acceleration, accelerationLimit);
        // The torque limit caps what the motor can push against inertia and friction.
        const double torque =
            clampMagnitude(Inertia * acceleration + Friction * velocityRadPerSec, torqueLimit);
        acceleration = (torque - Friction * velocityRadPerSec) / Inertia;
    }

    const double before = velocityRadPerSec;
    velocityRadPerSec += acceleration * dt;
    if (enabled)
        velocityRadPerSec = clampMagnitude(velocityRadPerSec, speedLimit);
    // Held at the speed limit, the motor pushes only what keeps it there, not what the
    // command asked for; the load, the current and the heat follow that.
    const double applied =
        Inertia * (velocityRadPerSec - before) / dt + Friction * velocityRadPerSec;
    torqueNm = enabled ? std::min(std::abs(applied), torqueLimit) : 0;
    positionCounts += velocityRadPerSec * dt * CountsPerRadian;

    const int mode = byte(OperatingMode);
    const bool holdsPosition = mode >= ServoMode::Joint;
    if (enabled && holdsPosition) {
        const double target = positionTarget();
        if (std::abs(target - positionCounts) < 0.5 && std::abs(velocityRadPerSec) < 0.01) {
            positionCounts = target;
            velocityRadPerSec = 0;
        }
    } else if (std::abs(positionCounts) > MaxPosition) {
        // The counter wraps like a hardware one would.
        positionCounts -= std::copysign(2 * (MaxPosition + 1), positionCounts);
    }

    const double currentAmps = enabled ? (IdleCurrent / 1000 + torqueNm / TorquePerAmp) : 0;
    const double steadyRise = HeatingPerAmpSquared * currentAmps * currentAmps;
    temperatureCelsius +=
        (steadyRise - (temperatureCelsius - AmbientTemperature)) * dt / ThermalTimeConstant;

    updateHardwareError();
}

void VirtualServo::updateHardwareError()
{
    quint8 error = 0;
    const int voltage = byte(ActualVoltage);
    if (voltage < byte(MinVoltageLimit) || voltage > byte(MaxVoltageLimit))
        error |= HardwareErrorBit::InputVoltage;
    // Clearing control enable keeps the motor off until the host enables it again.
    if (temperatureCelsius > byte(TemperatureLimit)) {
        error |= HardwareErrorBit::Overheating;
        table[ControlEnable] = 0;
    }
    if (byte(OperatingMode) == ServoMode::Joint &&
        positionTarget() != qint32(value(TargetPosition, 4)))
        error |= HardwareErrorBit::AngleLimit;
    table[HardwareError] = char(error);
}

void VirtualServo::publish()
{
    const int current = byte(ControlEnable) != 0
                            ? int(std::lround(IdleCurrent + torqueNm / TorquePerAmp * 1000))
                            : 0;
    const double speed = std::abs(velocityRadPerSec);
    // About 12.0 V, with a tenth of a volt of noise either way.
    std::uniform_int_distribution<int> jitter(-1, 1);
    store(ActualPosition, 4, qint32(std::lround(positionCounts)));
    store(ActualVelocity, 2, std::min(0xFFFFL, std::lround(speed * 1000)));
    store(ActualTorque, 2, std::min(0xFFFFL, std::lround(torqueNm * 1000)));
    store(ActualVoltage, 1, 120 + jitter(noise));
    store(ActualCurrent, 2, std::min(0xFFFF, current));
    store(ActualTemperature, 1, std::clamp(std::lround(temperatureCelsius), 0L, 255L));
    store(Moving, 1, speed > value(MovingThreshold, 2) * 0.001 ? 1 : 0);
    store(ActiveVelocityProfile, 2, value(VelocityProfile, 2));
}
