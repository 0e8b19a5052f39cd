#include "packet.h"
#include "simulator/servoregisters.h"
#include "simulator/servoregistertable.h"
#include "simulator/virtualservo.h"

#include <QtTest>

namespace R = ServoRegister;

namespace {

QByteArray le16(int value)
{
    return QByteArray(1, char(value & 0xFF)) + char(value >> 8);
}

quint8 writeError(VirtualServo &servo, int address, const QByteArray &data)
{
    return quint8(servo.handle({0, Instruction::Write, le16(address) + data}).parameters.at(0));
}

Packet read(VirtualServo &servo, int address, int length)
{
    return servo.handle({0, Instruction::Read, le16(address) + le16(length)});
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
    void factoryFreshServo()
    {
        VirtualServo servo;
        QCOMPARE(servo.baudRateCode(), 1);
        QCOMPARE(servo.handle({0, Instruction::Ping, {}}).parameters.left(3),
                 QByteArray("\x00\x05\x01", 3));
        QCOMPARE(read(servo, 0, 118).parameters, '\0' + servo.controlTable());
        QCOMPARE(read(servo, 100, 19).parameters, QByteArray(1, char(ServoError::Access)));
        // A new id answers from the next request on.
        QCOMPARE(servo.handle({0, Instruction::Write, le16(R::Id) + char(9)}).id, quint8(0));
        QCOMPARE(servo.id(), quint8(9));
    }

    void writeRules_data()
    {
        QTest::addColumn<int>("address");
        QTest::addColumn<QByteArray>("data");
        QTest::addColumn<bool>("enabled");
        QTest::addColumn<int>("error");

        const QByteArray nonVolatile = ServoRegisterTable::factoryDefaults().mid(3, 38);
        // What the program sends: its own targets and gains, stale copies elsewhere.
        QByteArray volatileBlock = ServoRegisterTable::factoryDefaults().mid(48, 60);
        for (int i = 0; i < volatileBlock.size(); ++i) {
            if (!ServoRegisterTable::isWritable(48 + i))
                volatileBlock[i] = char(0xEE);
        }
        volatileBlock[0] = 1;
        volatileBlock[R::TargetPosition - 48] = 100;
        // clang-format off
        QTest::newRow("id 253") << 3 << QByteArray(1, char(253)) << false << 0;
        QTest::newRow("id 254") << 3 << QByteArray(1, char(254)) << false << 4;
        QTest::newRow("model number is read-only") << 0 << QByteArray(2, 1) << false << 7;
        QTest::newRow("starts in a gap") << 41 << QByteArray(2, 1) << false << 7;
        QTest::newRow("starts on actual position") << 86 << QByteArray(4, 1) << false << 7;
        QTest::newRow("runs past 117") << 112 << QByteArray(7, 1) << false << 7;
        QTest::newRow("non-volatile block") << 3 << nonVolatile << false << 0;
        QTest::newRow("non-volatile block while enabled") << 3 << nonVolatile << true << 7;
        QTest::newRow("volatile block over read-only registers") << 48 << volatileBlock << false << 0;
        QTest::newRow("volatile block while enabled") << 48 << volatileBlock << true << 0;
        QTest::newRow("operating mode 4") << 6 << QByteArray(1, 4) << false << 0;
        QTest::newRow("operating mode 5") << 6 << QByteArray(1, 5) << false << 4;
        QTest::newRow("baud code 34") << 4 << QByteArray(1, 34) << false << 0;
        QTest::newRow("baud code 2") << 4 << QByteArray(1, 2) << false << 4;
        QTest::newRow("bad baud code inside a block") << 3 << QByteArray("\x01\x05", 2) << false << 4;
        QTest::newRow("input mode 2") << 26 << QByteArray(1, 2) << false << 4;
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
        QByteArray expected = servo.controlTable();
        QCOMPARE(int(writeError(servo, address, data)), error);
        for (int i = 0; error == 0 && i < data.size(); ++i) {
            if (ServoRegisterTable::isWritable(address + i))
                expected[address + i] = data[i];
        }
        QCOMPARE(servo.controlTable().toHex(' '), expected.toHex(' '));
    }

    void alertBitFollowsHardwareError()
    {
        VirtualServo servo;
        // 12 V lies below a 13 V lower limit.
        QCOMPARE(writeError(servo, R::MinVoltageLimit, QByteArray(1, char(130))),
                 ServoError::AlertBit);
        QCOMPARE(servo.value(R::HardwareError, 1), quint32(HardwareErrorBit::InputVoltage));
        QCOMPARE(quint8(read(servo, 0, 2).parameters.at(0)), ServoError::AlertBit);
        QCOMPARE(writeError(servo, 0, QByteArray(1, 1)),
                 quint8(ServoError::AlertBit | ServoError::Access));
    }

    void rebootRestoresTheVolatileArea()
    {
        VirtualServo servo;
        enable(servo, ServoMode::Wheel);
        servo.setValue(R::TargetVelocity, 2, 1000);
        servo.setValue(R::PositionP, 2, 1234);
        servo.setValue(R::VelocityProfile, 2, 5);
        servo.setValue(R::TargetTorque, 2, 77);
        runFor(servo, 1);
        const quint32 position = servo.value(R::ActualPosition, 4);
        QVERIFY(position != 0);

        QCOMPARE(servo.handle({0, Instruction::Reboot, {}}).parameters.at(0), '\0');
        QCOMPARE(servo.value(R::ControlEnable, 1), 0u);
        QCOMPARE(servo.value(R::PositionP, 2), servo.value(R::DefaultPositionP, 2));
        QCOMPARE(servo.value(R::VelocityProfile, 2), servo.value(37, 2));
        QCOMPARE(servo.value(R::AccelerationProfile, 2),
                 servo.value(R::DefaultAccelerationProfile, 2));
        QCOMPARE(servo.value(R::TargetPosition, 4), position);
        QCOMPARE(servo.value(R::TargetVelocity, 2), 0u);
        QCOMPARE(servo.value(R::TargetTorque, 2), 0u);
        // Disabled, it stays where it stopped.
        runFor(servo, 1);
        QCOMPARE(servo.value(R::ActualPosition, 4), position);
        QCOMPARE(servo.value(R::Moving, 1), 0u);
    }

    void factoryReset_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<int>("error");
        QTest::addColumn<int>("id");
        QTest::addColumn<int>("baudCode");
        QTest::addColumn<int>("returnDelay");

        QTest::newRow("keep id and baud rate") << 0x02 << 0 << 7 << 34 << 10;
        QTest::newRow("keep id") << 0x01 << 0 << 7 << 1 << 10;
        QTest::newRow("everything") << 0xFF << 0 << 0 << 1 << 10;
        QTest::newRow("unknown mode") << 0x03 << 4 << 7 << 34 << 99;
    }

    void factoryReset()
    {
        QFETCH(int, mode);
        QFETCH(int, error);
        QFETCH(int, id);
        QFETCH(int, baudCode);
        QFETCH(int, returnDelay);

        VirtualServo servo;
        servo.setValue(R::Id, 1, 7);
        servo.setValue(R::BaudRate, 1, 34);
        servo.setValue(R::ReturnDelay, 1, 99);
        const Packet status =
            servo.handle({7, Instruction::FactoryReset, QByteArray(1, char(mode))});
        QCOMPARE(int(status.parameters.at(0)), error);
        QCOMPARE(status.id, quint8(7));
        QCOMPARE(int(servo.id()), id);
        QCOMPARE(servo.baudRateCode(), baudCode);
        QCOMPARE(int(servo.value(R::ReturnDelay, 1)), returnDelay);
    }

    void jointFollowsTheProfile_data()
    {
        QTest::addColumn<int>("inputMode");
        QTest::addColumn<double>("speedCap");

        // The default profile runs at 1.0 rad/s, the velocity limit at 2.3 rad/s.
        QTest::newRow("trajectory") << 0 << 1.0;
        QTest::newRow("position") << 1 << 2.3;
    }

    void jointFollowsTheProfile()
    {
        QFETCH(int, inputMode);
        QFETCH(double, speedCap);

        VirtualServo servo;
        enable(servo, ServoMode::Joint, inputMode);
        servo.setValue(R::TargetPosition, 4, 1500);
        servo.step(0.3);
        QCOMPARE(servo.value(R::Moving, 1), 1u);
        const double topSpeed = runFor(servo, 5);
        QVERIFY2(topSpeed <= speedCap + 1e-6 && topSpeed > speedCap * 0.9,
                 qPrintable(QString::number(topSpeed)));
        QCOMPARE(qint32(servo.value(R::ActualPosition, 4)), 1500);
        QCOMPARE(servo.value(R::Moving, 1), 0u);
        QCOMPARE(servo.value(R::HardwareError, 1), 0u);
    }

    void jointStopsAtTheAngleLimits()
    {
        VirtualServo servo;
        servo.setValue(R::CounterClockwiseLimit, 2, 1023);
        enable(servo, ServoMode::Joint, 1);
        servo.setValue(R::TargetPosition, 4, 3000);
        QCOMPARE(servo.value(R::HardwareError, 1), quint32(HardwareErrorBit::AngleLimit));
        runFor(servo, 5);
        // 1023 steps of pi/2047 are just under 1023.5 counts of 4096 per turn.
        QCOMPARE(qint32(servo.value(R::ActualPosition, 4)), 1023);
        servo.setValue(R::TargetPosition, 4, -100);
        QCOMPARE(servo.value(R::HardwareError, 1), 0u);
    }

    void velocityAndTorqueModes_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<int>("target");
        QTest::addColumn<int>("velocityLimit");
        QTest::addColumn<double>("velocity");

        QTest::newRow("wheel forward") << ServoMode::Wheel << 1500 << 2300 << 1.5;
        QTest::newRow("wheel backward") << ServoMode::Wheel << (0x8000 | 1500) << 2300 << -1.5;
        QTest::newRow("wheel held by the limit") << ServoMode::Wheel << 2000 << 800 << 0.8;
        QTest::newRow("wheel never past 2.3 rad/s") << ServoMode::Wheel << 2400 << 2400 << 2.3;
        // 0.05 N.m against 0.1 N.m per rad/s of friction settles at 0.5 rad/s.
        QTest::newRow("torque backward") << ServoMode::Torque << (0x8000 | 50) << 2300 << -0.5;
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
        runFor(servo, 3);
        QVERIFY2(std::abs(servo.velocity() - velocity) < 0.005,
                 qPrintable(QString::number(servo.velocity())));
        QVERIFY(std::abs(int(servo.value(R::ActualVelocity, 2)) - std::abs(velocity) * 1000) < 5);
        QCOMPARE(qint32(servo.value(R::ActualPosition, 4)) < 0, velocity < 0);
        QCOMPARE(servo.value(R::Moving, 1), 1u);
        QVERIFY(servo.value(R::ActualCurrent, 2) > 20 && servo.value(R::ActualTorque, 2) > 0);
    }

    void overheatingDisablesTheMotorAndCoolsDown()
    {
        VirtualServo servo;
        servo.setValue(R::TemperatureLimit, 1, 35);
        enable(servo, ServoMode::Wheel);
        servo.setValue(R::TargetVelocity, 2, 2000);
        for (int i = 0; i < 1200 && servo.value(R::ControlEnable, 1) != 0; ++i)
            servo.step(0.1);
        QCOMPARE(servo.value(R::ControlEnable, 1), 0u);
        servo.step(5);
        QVERIFY(servo.value(R::HardwareError, 1) & HardwareErrorBit::Overheating);
        QCOMPARE(quint8(read(servo, 0, 1).parameters.at(0)), ServoError::AlertBit);
        servo.step(300);
        QCOMPARE(servo.value(R::HardwareError, 1), 0u);
        QCOMPARE(servo.value(R::ActualTemperature, 1), 25u);
        QCOMPARE(servo.value(R::Moving, 1), 0u);
    }
};

QTEST_GUILESS_MAIN(TestVirtualServo)
#include "tst_virtualservo.moc"
