#pragma once

#include "packet.h"

#include <QByteArray>
#include <random>

// One simulated Zelvar servo: its 118-byte control table, the rules by which it
// answers instructions, and a motor that moves when time is stepped.
class VirtualServo
{
public:
    VirtualServo();

    quint8 id() const;
    int baudRateCode() const;
    int returnDelayMicroseconds() const;

    QByteArray controlTable() const { return table; }
    quint32 value(int address, int width) const;
    // Sets registers as a workbench would, past every write rule: for set-up and tests.
    void setValue(int address, int width, qint64 value);

    // Answers one instruction addressed to this servo. The status packet carries the
    // id the servo had when the instruction arrived; a new id applies afterwards.
    Packet handle(const Packet &request);

    // Runs the motor and the sensors for `seconds` of simulated time.
    void step(double seconds);

    // Signed speed in rad/s; the register holds only its magnitude.
    double velocity() const { return velocityRadPerSec; }

private:
    void reboot();
    void factoryReset(quint8 mode);
    int byte(int address) const;
    void store(int address, int width, qint64 value);
    quint8 statusError(quint8 error) const;
    QByteArray read(const QByteArray &parameters, quint8 *error) const;
    quint8 write(const QByteArray &parameters);
    quint8 checkRanges(int address, const QByteArray &data) const;
    void integrate(double dt);
    double positionTarget() const;
    void publish();
    void updateHardwareError();
    double signedTarget(int address) const;

    QByteArray table;
    double positionCounts = 0;
    double velocityRadPerSec = 0;
    double torqueNm = 0;
    double temperatureCelsius = 25;
    std::minstd_rand noise;
};
