#include "packet.h"
#include "simulator/servoregisters.h"
#include "simulator/servoregistertable.h"
#include "simulator/virtualservo.h"

#include <QtTest>

namespace {

QByteArray littleEndian(quint32 value, int width)
{
    QByteArray bytes;
    for (int i = 0; i < width; ++i)
        bytes.append(char((value >> (8 * i)) & 0xFF));
    return bytes;
}

Packet writeRequest(int address, const QByteArray &data)
{
    return {0, Instruction::Write, littleEndian(address, 2) + data};
}

Packet readRequest(int address, int length)
{
    return {0, Instruction::Read, littleEndian(address, 2) + littleEndian(length, 2)};
}

quint8 errorOf(const Packet &status)
{
    return quint8(status.parameters.at(0));
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
    servo.setValue(ServoRegister::OperatingMode, 1, mode);
    servo.setValue(ServoRegister::InputMode, 1, inputMode);
    servo.setValue(ServoRegister::ControlEnable, 1, 1);
}

} // namespace

class TestVirtualServo : public QObject
{
    Q_OBJECT

private slots:
    void factoryFreshServoAnswersTheFirstStartSettings();
    void writeRules_data();
    void writeRules();
    void readsPastTheTableAreRefused();
    void newIdAppliesAfterTheReply();
    void alertBitFollowsHardwareError();
    void rebootRestoresTheVolatileArea();
    void factoryReset_data();
    void factoryReset();
    void staysStillWhileDisabled();
    void jointFollowsTheProfile_data();
    void jointFollowsTheProfile();
    void jointStopsAtTheAngleLimits();
    void wheelFollowsTargetVelocity_data();
    void wheelFollowsTargetVelocity();
    void torqueModeAcceleratesWithItsDirection();
    void overheatingDisablesTheMotorAndCoolsDown();
    void voltageStaysNearTwelveVolts();
};

void TestVirtualServo::factoryFreshServoAnswersTheFirstStartSettings()
{
    VirtualServo servo;
    QCOMPARE(servo.id(), quint8(0));
    QCOMPARE(servo.baudRateCode(), 1);
    QCOMPARE(servo.value(ServoRegister::ModelNumber, 2), 0x0105u);
    const Packet ping = servo.handle({0, Instruction::Ping, {}});
    QCOMPARE(ping.parameters.left(3), QByteArray("\x00\x05\x01", 3));
}

void TestVirtualServo::writeRules_data()
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
    volatileBlock[78 - 48] = 100;
    QTest::newRow("id") << 3 << QByteArray(1, 7) << false << 0;
    QTest::newRow("id 253") << 3 << QByteArray(1, char(253)) << false << 0;
    QTest::newRow("id 254") << 3 << QByteArray(1, char(254)) << false << 4;
    QTest::newRow("model number is read-only") << 0 << QByteArray(2, 1) << false << 7;
    QTest::newRow("starts in a gap") << 41 << QByteArray(2, 1) << false << 7;
    QTest::newRow("starts on actual position") << 86 << QByteArray(4, 1) << false << 7;
    QTest::newRow("runs past 117") << 112 << QByteArray(7, 1) << false << 7;
    QTest::newRow("non-volatile block") << 3 << nonVolatile << false << 0;
    QTest::newRow("non-volatile block while enabled") << 3 << nonVolatile << true << 7;
    QTest::newRow("default gain while enabled") << 39 << QByteArray(2, 1) << true << 7;
    QTest::newRow("volatile block over read-only registers") << 48 << volatileBlock << false << 0;
    QTest::newRow("volatile block while enabled") << 48 << volatileBlock << true << 0;
    QTest::newRow("operating mode 4") << 6 << QByteArray(1, 4) << false << 0;
    QTest::newRow("operating mode 5") << 6 << QByteArray(1, 5) << false << 4;
    QTest::newRow("baud code 34") << 4 << QByteArray(1, 34) << false << 0;
    QTest::newRow("baud code 2") << 4 << QByteArray(1, 2) << false << 4;
    QTest::newRow("bad baud code inside a block") << 3 << QByteArray("\x01\x05", 2) << false << 4;
    QTest::newRow("input mode 2") << 26 << QByteArray(1, 2) << false << 4;
    QTest::newRow("no data") << 48 << QByteArray() << false << 5;
}

void TestVirtualServo::writeRules()
{
    QFETCH(int, address);
    QFETCH(QByteArray, data);
    QFETCH(bool, enabled);
    QFETCH(int, error);

    VirtualServo servo;
    servo.setValue(ServoRegister::ControlEnable, 1, enabled ? 1 : 0);
    const QByteArray before = servo.controlTable();
    const Packet status = servo.handle(writeRequest(address, data));
    QCOMPARE(int(errorOf(status)), error);
    const QByteArray after = servo.controlTable();
    if (error != 0) {
        QCOMPARE(after, before);
        return;
    }
    for (int i = 0; i < data.size(); ++i) {
        const int at = address + i;
        const QByteArray expected =
            ServoRegisterTable::isWritable(at) ? data.mid(i, 1) : before.mid(at, 1);
        QVERIFY2(after.mid(at, 1) == expected, qPrintable(QString("address %1").arg(at)));
    }
}

void TestVirtualServo::readsPastTheTableAreRefused()
{
    VirtualServo servo;
    const Packet whole = servo.handle(readRequest(0, 118));
    QCOMPARE(errorOf(whole), ServoError::None);
    QCOMPARE(whole.parameters.mid(1), servo.controlTable());
    const Packet beyond = servo.handle(readRequest(100, 19));
    QCOMPARE(errorOf(beyond), ServoError::Access);
    QCOMPARE(beyond.parameters.size(), 1);
}

void TestVirtualServo::newIdAppliesAfterTheReply()
{
    VirtualServo servo;
    const Packet status = servo.handle(writeRequest(ServoRegister::Id, QByteArray(1, 9)));
    QCOMPARE(status.id, quint8(0));
    QCOMPARE(servo.id(), quint8(9));
}

void TestVirtualServo::alertBitFollowsHardwareError()
{
    VirtualServo servo;
    QCOMPARE(errorOf(servo.handle(readRequest(0, 2))), ServoError::None);
    // 12 V lies below a 13 V lower limit.
    servo.handle(writeRequest(ServoRegister::MinVoltageLimit, QByteArray(1, char(130))));
    QCOMPARE(servo.value(ServoRegister::HardwareError, 1), quint32(HardwareErrorBit::InputVoltage));
    QCOMPARE(errorOf(servo.handle(readRequest(0, 2))), ServoError::AlertBit);
    const Packet refused = servo.handle(writeRequest(0, QByteArray(1, 1)));
    QCOMPARE(errorOf(refused), quint8(ServoError::AlertBit | ServoError::Access));
}

void TestVirtualServo::rebootRestoresTheVolatileArea()
{
    VirtualServo servo;
    enable(servo, ServoMode::Wheel);
    servo.setValue(ServoRegister::TargetVelocity, 2, 1000);
    servo.setValue(ServoRegister::PositionP, 2, 1234);
    servo.setValue(ServoRegister::VelocityProfile, 2, 5);
    servo.setValue(ServoRegister::TargetTorque, 2, 77);
    runFor(servo, 1);
    const quint32 position = servo.value(ServoRegister::ActualPosition, 4);
    QVERIFY(position != 0);

    const Packet status = servo.handle({0, Instruction::Reboot, {}});
    QCOMPARE(errorOf(status), ServoError::None);
    QCOMPARE(servo.value(ServoRegister::ControlEnable, 1), 0u);
    QCOMPARE(servo.value(ServoRegister::PositionP, 2), servo.value(27, 2));
    QCOMPARE(servo.value(ServoRegister::VelocityProfile, 2), servo.value(37, 2));
    QCOMPARE(servo.value(ServoRegister::AccelerationProfile, 2), servo.value(39, 2));
    QCOMPARE(servo.value(ServoRegister::TargetPosition, 4), position);
    QCOMPARE(servo.value(ServoRegister::TargetVelocity, 2), 0u);
    QCOMPARE(servo.value(ServoRegister::TargetTorque, 2), 0u);
    QCOMPARE(servo.value(ServoRegister::ActualPosition, 4), position);
}

void TestVirtualServo::factoryReset_data()
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

void TestVirtualServo::factoryReset()
{
    QFETCH(int, mode);
    QFETCH(int, error);
    QFETCH(int, id);
    QFETCH(int, baudCode);
    QFETCH(int, returnDelay);

    VirtualServo servo;
    servo.setValue(ServoRegister::Id, 1, 7);
    servo.setValue(ServoRegister::BaudRate, 1, 34);
    servo.setValue(ServoRegister::ReturnDelay, 1, 99);
    const Packet status = servo.handle({7, Instruction::FactoryReset, QByteArray(1, char(mode))});
    QCOMPARE(int(errorOf(status)), error);
    QCOMPARE(status.id, quint8(7));
    QCOMPARE(int(servo.id()), id);
    QCOMPARE(servo.baudRateCode(), baudCode);
    QCOMPARE(int(servo.value(ServoRegister::ReturnDelay, 1)), returnDelay);
}

void TestVirtualServo::staysStillWhileDisabled()
{
    VirtualServo servo;
    servo.setValue(ServoRegister::TargetPosition, 4, 1000);
    runFor(servo, 2);
    QCOMPARE(servo.value(ServoRegister::ActualPosition, 4), 0u);
    QCOMPARE(servo.value(ServoRegister::Moving, 1), 0u);
}

void TestVirtualServo::jointFollowsTheProfile_data()
{
    QTest::addColumn<int>("inputMode");
    QTest::addColumn<double>("speedCap");

    // The default profile runs at 1.0 rad/s, the velocity limit at 2.3 rad/s.
    QTest::newRow("trajectory") << 0 << 1.0;
    QTest::newRow("position") << 1 << 2.3;
}

void TestVirtualServo::jointFollowsTheProfile()
{
    QFETCH(int, inputMode);
    QFETCH(double, speedCap);

    VirtualServo servo;
    enable(servo, ServoMode::Joint, inputMode);
    servo.setValue(ServoRegister::TargetPosition, 4, 1500);
    servo.step(0.3);
    QCOMPARE(servo.value(ServoRegister::Moving, 1), 1u);
    const double topSpeed = runFor(servo, 5);
    QVERIFY2(topSpeed <= speedCap + 1e-6, qPrintable(QString::number(topSpeed)));
    QVERIFY2(topSpeed > speedCap * 0.9, qPrintable(QString::number(topSpeed)));
    QCOMPARE(qint32(servo.value(ServoRegister::ActualPosition, 4)), 1500);
    QCOMPARE(servo.value(ServoRegister::Moving, 1), 0u);
    QCOMPARE(servo.value(ServoRegister::HardwareError, 1), 0u);
}

void TestVirtualServo::jointStopsAtTheAngleLimits()
{
    VirtualServo servo;
    servo.setValue(ServoRegister::CounterClockwiseLimit, 2, 1023);
    enable(servo, ServoMode::Joint, 1);
    servo.setValue(ServoRegister::TargetPosition, 4, 3000);
    QCOMPARE(servo.value(ServoRegister::HardwareError, 1), quint32(HardwareErrorBit::AngleLimit));
    runFor(servo, 5);
    // 1023 steps of pi/2047 are just under 1023.5 counts of 4096 per turn.
    QCOMPARE(qint32(servo.value(ServoRegister::ActualPosition, 4)), 1023);
    servo.setValue(ServoRegister::TargetPosition, 4, -100);
    QCOMPARE(servo.value(ServoRegister::HardwareError, 1), 0u);
}

void TestVirtualServo::wheelFollowsTargetVelocity_data()
{
    QTest::addColumn<int>("target");
    QTest::addColumn<int>("velocityLimit");
    QTest::addColumn<double>("velocity");

    QTest::newRow("forward") << 1500 << 2300 << 1.5;
    QTest::newRow("backward") << (0x8000 | 1500) << 2300 << -1.5;
    QTest::newRow("held by the limit") << 2000 << 800 << 0.8;
    QTest::newRow("never past 2.3 rad/s") << 2400 << 2400 << 2.3;
}

void TestVirtualServo::wheelFollowsTargetVelocity()
{
    QFETCH(int, target);
    QFETCH(int, velocityLimit);
    QFETCH(double, velocity);

    VirtualServo servo;
    servo.setValue(ServoRegister::VelocityLimit, 2, velocityLimit);
    enable(servo, ServoMode::Wheel);
    servo.setValue(ServoRegister::TargetVelocity, 2, target);
    runFor(servo, 2);
    QVERIFY2(std::abs(servo.velocity() - velocity) < 1e-6,
             qPrintable(QString::number(servo.velocity())));
    QCOMPARE(servo.value(ServoRegister::ActualVelocity, 2),
             quint32(std::lround(std::abs(velocity) * 1000)));
    QCOMPARE(servo.value(ServoRegister::Moving, 1), 1u);
    QVERIFY(servo.value(ServoRegister::ActualCurrent, 2) > 20);
    QVERIFY(servo.value(ServoRegister::ActualTorque, 2) > 0);
}

void TestVirtualServo::torqueModeAcceleratesWithItsDirection()
{
    VirtualServo servo;
    enable(servo, ServoMode::Torque);
    servo.setValue(ServoRegister::TargetTorque, 2, 0x8000 | 50);
    runFor(servo, 3);
    // 0.05 N.m against 0.1 N.m per rad/s of friction settles at 0.5 rad/s.
    QVERIFY2(std::abs(servo.velocity() + 0.5) < 0.01,
             qPrintable(QString::number(servo.velocity())));
    QVERIFY(qint32(servo.value(ServoRegister::ActualPosition, 4)) < 0);
    QCOMPARE(servo.value(ServoRegister::ActualTorque, 2), 50u);
}

void TestVirtualServo::overheatingDisablesTheMotorAndCoolsDown()
{
    VirtualServo servo;
    servo.setValue(ServoRegister::TemperatureLimit, 1, 35);
    enable(servo, ServoMode::Wheel);
    servo.setValue(ServoRegister::TargetVelocity, 2, 2000);
    for (int i = 0; i < 1200 && servo.value(ServoRegister::ControlEnable, 1) != 0; ++i)
        servo.step(0.1);
    QVERIFY(servo.value(ServoRegister::HardwareError, 1) & HardwareErrorBit::Overheating);
    QCOMPARE(servo.value(ServoRegister::ControlEnable, 1), 0u);
    servo.step(5);
    QVERIFY(servo.value(ServoRegister::HardwareError, 1) & HardwareErrorBit::Overheating);
    QCOMPARE(errorOf(servo.handle(readRequest(0, 1))), ServoError::AlertBit);
    servo.step(300);
    QCOMPARE(servo.value(ServoRegister::HardwareError, 1), 0u);
    QCOMPARE(servo.value(ServoRegister::ActualTemperature, 1), 25u);
    QCOMPARE(servo.value(ServoRegister::Moving, 1), 0u);
}

void TestVirtualServo::voltageStaysNearTwelveVolts()
{
    VirtualServo servo;
    QSet<quint32> seen;
    for (int i = 0; i < 200; ++i) {
        servo.step(0.01);
        seen.insert(servo.value(ServoRegister::ActualVoltage, 1));
    }
    for (quint32 voltage : seen)
        QVERIFY(voltage >= 119 && voltage <= 121);
    QVERIFY2(seen.size() > 1, "the voltage carries a little noise");
}

QTEST_GUILESS_MAIN(TestVirtualServo)
#include "tst_virtualservo.moc"
