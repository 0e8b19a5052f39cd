#include "datacolumns.h"
#include "packet.h"
#include "simulator/servoregisters.h"
#include "simulator/servoregistertable.h"
#include "simulator/virtualservo.h"

#include <QtTest>

namespace R = ServoRegister;

namespace {

quint8 writeError(VirtualServo &servo, quint8 address, const QByteArray &data)
{
    const QByteArray parameters = QByteArray(1, char(address)) + '\0' + data;
    return quint8(servo.handle({0, Instruction::Write, parameters}).parameters.at(0));
}

// Steps in the small slices a polling host would see, recording the top speed.
double runFor(VirtualServo &servo, double seconds)
{
    double topSpeed = 0;
    for (double t = 0; t < seconds; t += 0.01) {
        servo.step(0.01);
        topSpeed = std::max(topSpeed, std::abs(servo.velocity()));
    }
    return topSpeed;
}

void enable(VirtualServo &servo, int mode, int inputMode = 0)
{
    servo.setValue(R::OperatingMode, 1, mode);
    servo.setValue(R::InputMode, 1, inputMode);
    servo.setValue(R::ControlEnable, 1, 1);
}

} // namespace

class TestVirtualServo : public QObject
{
    Q_OBJECT

private slots:
    void writeRules_data()
    {
        addColumns<int, QByteArray, bool, int>({"address", "data", "enabled", "error"});

        // The highest id, a valid baud-rate code and the highest operating mode.
        QByteArray nonVolatile = ServoRegisterTable::factoryDefaults().mid(3, 38);
        nonVolatile.replace(0, 4, "\xFD\x22\x0A\x04");
        // What the program sends: control enable and a target, stale bytes over 86 to 107.
        QByteArray volatileBlock = ServoRegisterTable::factoryDefaults().mid(48, 60);
        volatileBlock[0] = 1;
        volatileBlock[78 - 48] = 100;
        volatileBlock.replace(86 - 48, 22, QByteArray(22, char(0xEE)));
        // clang-format off
        QTest::newRow("id 254") << 3 << QByteArray(1, char(254)) << false << 4;
        QTest::newRow("model number is read-only") << 0 << QByteArray(2, 1) << false << 7;
        QTest::newRow("starts in a gap") << 41 << QByteArray(2, 1) << false << 7;
        QTest::newRow("runs past 117") << 112 << QByteArray(7, 1) << false << 7;
        QTest::newRow("non-volatile block") << 3 << nonVolatile << false << 0;
        QTest::newRow("non-volatile block while enabled") << 3 << nonVolatile << true << 7;
        QTest::newRow("volatile block over read-only registers") << 48 << volatileBlock << false << 0;
        QTest::newRow("volatile block while enabled") << 48 << volatileBlock << true << 0;
        QTest::newRow("operating mode 5") << 6 << QByteArray(1, 5) << false << 4;
        QTest::newRow("baud code 2") << 4 << QByteArray(1, 2) << false << 4;
        QTest::newRow("bad baud code inside a block") << 3 << QByteArray("\x01\x05", 2) << false << 4;
        QTest::newRow("no data") << 48 << QByteArray() << false << 5;
        // clang-format on
    }

    void writeRules()
    {
        QFETCH(int, address);
        QFETCH(QByteArray, data);
        QFETCH(bool, enabled);
        QFETCH(int, error);

        VirtualServo servo;
        servo.setValue(R::ControlEnable, 1, enabled ? 1 : 0);
        const QByteArray before = servo.controlTable();
        QCOMPARE(int(writeError(servo, address, data)), error);
        QByteArray expected = before;
        if (error == 0)
            expected.replace(address, data.size(), data);
        // The read-only registers and gaps from 86 to 107 never change.
        expected.replace(86, 22, before.mid(86, 22));
        QCOMPARE(servo.controlTable().toHex(' '), expected.toHex(' '));
    }

    void hardwareErrorBits_data()
    {
        addColumns<int, int, int, int, int>({"address", "width", "bad", "good", "bit"});

        // A running servo on 12.0 +- 0.1 V at 25 degC, in joint mode within +-2048 counts.
        QTest::newRow("below the lowest voltage") << 12 << 1 << 122 << 119 << 0x01;
        QTest::newRow("above the highest voltage") << 13 << 1 << 118 << 121 << 0x01;
        QTest::newRow("above the temperature limit") << 11 << 1 << 24 << 26 << 0x04;
        QTest::newRow("joint target past the angle limit") << 78 << 4 << 2049 << 2048 << 0x10;
    }

    void hardwareErrorBits()
    {
        QFETCH(int, address);
        QFETCH(int, width);
        QFETCH(int, bad);
        QFETCH(int, good);
        QFETCH(int, bit);

        VirtualServo servo;
        servo.setValue(R::ControlEnable, 1, 1);
        servo.setValue(address, width, bad);
        QCOMPARE(int(servo.value(R::HardwareError, 1)), bit);
        QCOMPARE(writeError(servo, 0, QByteArray(1, 1)),
                 quint8(ServoError::AlertBit | ServoError::Access));
        // Only overheating cuts the motor out, and it stays off once the cause is gone.
        const bool cutOut = bit == HardwareErrorBit::Overheating;
        QCOMPARE(servo.value(R::ControlEnable, 1) == 0, cutOut);
        servo.setValue(address, width, good);
        QCOMPARE(servo.value(R::HardwareError, 1), 0u);
        QCOMPARE(servo.handle({0, Instruction::Ping, {}}).parameters.at(0), '\0');
        QCOMPARE(servo.value(R::ControlEnable, 1) == 0, cutOut);
    }

    void rebootRestoresTheVolatileArea()
    {
        VirtualServo servo;
        enable(servo, ServoMode::Wheel);
        servo.setValue(R::TargetVelocity, 2, 1000);
        servo.setValue(R::PositionP, 2, 1234);
        servo.setValue(R::AccelerationProfile, 2, 5);
        servo.setValue(R::TargetTorque, 2, 77);
        runFor(servo, 1);
        const quint32 position = servo.value(R::ActualPosition, 4);
        QVERIFY(position != 0);

        QCOMPARE(servo.handle({0, Instruction::Reboot, {}}).parameters.at(0), '\0');
        const QByteArray table = servo.controlTable();
        QCOMPARE(table.at(R::ControlEnable), '\0');
        // Gains from 54 and profiles from 68 start from their defaults at 27 and 37.
        QCOMPARE(table.mid(54, 10).toHex(), table.mid(27, 10).toHex());
        QCOMPARE(table.mid(68, 4).toHex(), table.mid(37, 4).toHex());
        QCOMPARE(servo.value(R::TargetPosition, 4), position);
        QCOMPARE(table.mid(82, 4), QByteArray(4, '\0'));
        // Disabled, it stays where it stopped.
        runFor(servo, 1);
        QCOMPARE(servo.value(R::ActualPosition, 4), position);
        QCOMPARE(servo.value(R::Moving, 1), 0u);
    }

    void factoryReset_data()
    {
        addColumns<int, int, QByteArray>({"mode", "error", "idRateAndDelay"});

        // Set up as id 7 at code 34 with a return delay of 99 (0x63); the default delay is 10.
        QTest::newRow("keep id and baud rate") << 0x02 << 0 << QByteArray("07220a");
        QTest::newRow("keep id") << 0x01 << 0 << QByteArray("07010a");
        QTest::newRow("everything") << 0xFF << 0 << QByteArray("00010a");
        QTest::newRow("unknown mode") << 0x03 << 4 << QByteArray("072263");
    }

    void factoryReset()
    {
        QFETCH(int, mode);

        VirtualServo servo;
        servo.setValue(R::Id, 3, 0x632207);
        const Packet status =
            servo.handle({7, Instruction::FactoryReset, QByteArray(1, char(mode))});
        QTEST(int(status.parameters.at(0)), "error");
        QCOMPARE(status.id, quint8(7));
        QTEST(servo.controlTable().mid(R::Id, 3).toHex(), "idRateAndDelay");
    }

    void jointFollowsTheProfile_data()
    {
        addColumns<int, int, int, double, int>({"inputMode", "limit", "target", "speedCap", "end"});

        // The default profile runs at 1.0 rad/s, the velocity limit at 2.3 rad/s.
        QTest::newRow("trajectory") << 0 << 2047 << 1500 << 1.0 << 1500;
        QTest::newRow("position") << 1 << 2047 << 1500 << 2.3 << 1500;
        // 1023 steps of pi/2047 are just under 1023.5 counts of 4096 per turn.
        QTest::newRow("stops at the angle limit") << 1 << 1023 << 3000 << 2.3 << 1023;
    }

    void jointFollowsTheProfile()
    {
        QFETCH(int, inputMode);
        QFETCH(int, limit);
        QFETCH(int, target);
        QFETCH(double, speedCap);
        QFETCH(int, end);

        VirtualServo servo;
        servo.setValue(R::CounterClockwiseLimit, 2, limit);
        enable(servo, ServoMode::Joint, inputMode);
        servo.setValue(R::TargetPosition, 4, target);
        servo.step(0.3);
        QCOMPARE(servo.value(R::Moving, 1), 1u);
        const double topSpeed = runFor(servo, 5);
        QVERIFY2(topSpeed <= speedCap + 1e-6 && topSpeed > speedCap * 0.9,
                 qPrintable(QString::number(topSpeed)));
        QCOMPARE(qint32(servo.value(R::ActualPosition, 4)), end);
        QCOMPARE(servo.value(R::Moving, 1), 0u);
    }

    void velocityAndTorqueModes_data()
    {
        addColumns<int, int, int, double>({"mode", "target", "velocityLimit", "velocity"});

        QTest::newRow("wheel backward") << ServoMode::Wheel << (0x8000 | 1500) << 2300 << -1.5;
        QTest::newRow("wheel held by the limit") << ServoMode::Wheel << 2000 << 800 << 0.8;
        QTest::newRow("wheel never past 2.3 rad/s") << ServoMode::Wheel << 2400 << 2400 << 2.3;
        // 0.05 N.m against 0.1 N.m per rad/s of friction settles at 0.5 rad/s.
        QTest::newRow("torque backward") << ServoMode::Torque << (0x8000 | 50) << 2300 << -0.5;
        QTest::newRow("torque held at top speed") << ServoMode::Torque << 4000 << 2300 << 2.3;
    }

    void velocityAndTorqueModes()
    {
        QFETCH(int, mode);
        QFETCH(int, target);
        QFETCH(int, velocityLimit);
        QFETCH(double, velocity);

        VirtualServo servo;
        servo.setValue(R::VelocityLimit, 2, velocityLimit);
        enable(servo, mode);
        servo.setValue(mode == ServoMode::Wheel ? R::TargetVelocity : R::TargetTorque, 2, target);
        // Long enough to heat up to where it settles, below the 80 degC limit.
        runFor(servo, 120);
        QVERIFY2(std::abs(servo.velocity() - velocity) < 0.005,
                 qPrintable(QString::number(servo.velocity())));
        QVERIFY(std::abs(int(servo.value(R::ActualVelocity, 2)) - std::abs(velocity) * 1000) < 5);
        QCOMPARE(qint32(servo.value(R::ActualPosition, 4)) < 0, velocity < 0);
        QCOMPARE(servo.value(R::Moving, 1), 1u);
        QCOMPARE(servo.value(R::HardwareError, 1), 0u);
        // At a steady speed the motor only overcomes friction, 0.1 N.m per rad/s.
        const double load = std::abs(velocity) * 100;
        QVERIFY2(std::abs(servo.value(R::ActualTorque, 2) - load) < 5,
                 qPrintable(QString::number(servo.value(R::ActualTorque, 2))));
        // Warmed by the current, it cools back to 25 degC once the motor is off.
        QVERIFY(servo.value(R::ActualTemperature, 1) > 25);
        servo.setValue(R::ControlEnable, 1, 0);
        servo.step(300);
        QCOMPARE(servo.value(R::ActualTemperature, 1), 25u);
    }
};

QTEST_GUILESS_MAIN(TestVirtualServo)
#include "tst_virtualservo.moc"
