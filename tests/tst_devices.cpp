#include "controllers/inputmodecontroller.h"
#include "controllers/operationmodecontroller.h"
#include "device/devicehelper.h"
#include "device/dynamixelax12.h"
#include "device/zelvarv1.h"
#include "link/serialhelper.h"
#include "scriptedportprovider.h"
#include "scriptedservo.h"

#include <QSignalSpy>
#include <QtTest>
#include <stdexcept>

namespace {

const char *const scriptedPort = "scripted-servo";
constexpr uint8_t servoId = 7;

} // namespace

class TestDevices : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();

    void zelvarLimits_data();
    void zelvarLimits();
    void ax12Limits_data();
    void ax12Limits();
    void unknownFieldThrows_data();
    void unknownFieldThrows();
    void modeComboBoxesCarryTheirControllers();
    void limitsAreCopies();
    void ax12HasNoRegisterMap();
    void identifiesByBytesFiveAndSix_data();
    void identifiesByBytesFiveAndSix();
    void eachIdentificationReplacesTheDevice();
    void identifiesOwnServoOverTheBus();
    void rebootAndResetClosePort_data();
    void rebootAndResetClosePort();
    void withoutSerialHelperNothingIsSent();
    void processWideInstance();

private:
    std::shared_ptr<ScriptedPortProvider> provider;
    std::shared_ptr<ScriptedServo> servo;
};

void TestDevices::initTestCase()
{
    servo = std::make_shared<ScriptedServo>(servoId);
    provider = std::make_shared<ScriptedPortProvider>();
    provider->addPort(scriptedPort, [this](ScriptedPortBackend &backend) {
        backend.setResponder([this](const QByteArray &bytes) { return servo->respond(bytes); });
    });
    PortProvider::install(provider);
}

void TestDevices::cleanupTestCase()
{
    PortProvider::uninstall(provider);
}

void TestDevices::zelvarLimits_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("rawMin");
    QTest::addColumn<int>("rawMax");
    QTest::addColumn<double>("physicalMin");
    QTest::addColumn<double>("physicalMax");

    QTest::newRow("actual position") << "actualPositionLineEdit" << -1044479 << 1044479
                                     << -1602.2107193496022 << 1602.2107193496022;
    QTest::newRow("angle limit has its own scale")
        << "clockwiseLimitDoubleSpinBox" << -2047 << 2047 << -3.141592653589 << 3.141592653589;
    QTest::newRow("dead zone") << "deadZoneDoubleSpinBox" << 0 << 1024 << 0.0 << 1.5707963267945;
    QTest::newRow("direction") << "targetTorqueDirectionComboBox" << 0 << 0 << 0.0 << 0.0;
}

void TestDevices::zelvarLimits()
{
    QFETCH(QString, name);
    QFETCH(int, rawMin);
    QFETCH(int, rawMax);
    QFETCH(double, physicalMin);
    QFETCH(double, physicalMax);

    const ZelvarV1 device;
    QVERIFY(device.definesField(name));
    const auto limits = device.limits(name);
    QCOMPARE(limits->rawMin, rawMin);
    QCOMPARE(limits->rawMax, rawMax);
    QVERIFY(limits->physicalMin == physicalMin);
    QVERIFY(limits->physicalMax == physicalMax);
    QVERIFY(!limits->controller);
}

void TestDevices::ax12Limits_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("rawMax");
    QTest::addColumn<double>("physicalMin");
    QTest::addColumn<double>("physicalMax");

    QTest::newRow("position") << "positionLineEdit" << 2047 << -3.141592653589 << 3.141592653589;
    QTest::newRow("lower-case i") << "positionintegralTermDoubleSpinBox" << 10 << 0.0 << 10.0;
    QTest::newRow("lower-case d") << "positionderivativeTermDoubleSpinBox" << 10 << 0.0 << 10.0;
}

void TestDevices::ax12Limits()
{
    QFETCH(QString, name);
    QFETCH(int, rawMax);
    QFETCH(double, physicalMin);
    QFETCH(double, physicalMax);

    const DynamixelAx12 device;
    QVERIFY(device.definesField(name));
    const auto limits = device.limits(name);
    QCOMPARE(limits->rawMin, 0);
    QCOMPARE(limits->rawMax, rawMax);
    QVERIFY(limits->physicalMin == physicalMin);
    QVERIFY(limits->physicalMax == physicalMax);
}

void TestDevices::unknownFieldThrows_data()
{
    QTest::addColumn<bool>("ax12");
    QTest::addColumn<QString>("name");

    QTest::newRow("baud rate is not range-mapped") << false << "baudRateComboBox";
    QTest::newRow("ax12 name on ours") << false << "positionintegralTermDoubleSpinBox";
    QTest::newRow("ours on the ax12") << true << "operatingModeComboBox";
    QTest::newRow("servo id on the ax12") << true << "idSpinBox";
    QTest::newRow("case matters") << true << "positionIntegralTermDoubleSpinBox";
}

void TestDevices::unknownFieldThrows()
{
    QFETCH(bool, ax12);
    QFETCH(QString, name);

    const std::unique_ptr<IDevice> device =
        ax12 ? std::unique_ptr<IDevice>(new DynamixelAx12) : std::make_unique<ZelvarV1>();
    // Widgets ask first, so that a smaller model leaves them on their placeholder.
    QVERIFY(!device->definesField(name));
    try {
        device->limits(name);
        QFAIL("no exception");
    } catch (const std::out_of_range &error) {
        QCOMPARE(error.what(), "invalid map<K, T> key");
    }
}

void TestDevices::modeComboBoxesCarryTheirControllers()
{
    const ZelvarV1 device;
    const auto operating = device.limits("operatingModeComboBox");
    const auto input = device.limits("inputModeComboBox");
    QVERIFY(dynamic_cast<OperationModeController *>(operating->controller.get()));
    QVERIFY(dynamic_cast<InputModeController *>(input->controller.get()));
    // Shared with every widget that asks, and made anew for each model.
    QCOMPARE(device.limits("operatingModeComboBox")->controller, operating->controller);
    QVERIFY(ZelvarV1().limits("operatingModeComboBox")->controller != operating->controller);
}

void TestDevices::limitsAreCopies()
{
    const ZelvarV1 device;
    auto limits = device.limits("idSpinBox");
    limits->rawMax = 1;
    QCOMPARE(device.limits("idSpinBox")->rawMax, 253);
}

void TestDevices::ax12HasNoRegisterMap()
{
    const DynamixelAx12 ax12;
    const ZelvarV1 zelvar;
    QCOMPARE(ax12.controlTableSize(), 50u);
    QCOMPARE(zelvar.controlTableSize(), 118u);
    QVERIFY(!ax12.hasRegisterMap());
    QVERIFY(zelvar.hasRegisterMap());
    for (unsigned bank = 0; bank < 4; ++bank)
        QCOMPARE(ax12.registerCount(bank), 0u);
    for (uint16_t address : {0, 3, 49, 117})
        QVERIFY(!ax12.registerDescription(address));
}

void TestDevices::identifiesByBytesFiveAndSix_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<bool>("ax12");

    const auto reply = [](char low, char high) {
        QByteArray bytes(13, '\0');
        bytes[5] = low;
        bytes[6] = high;
        return bytes;
    };
    QTest::newRow("12, 0 is an AX-12") << reply(12, 0) << true;
    QTest::newRow("12, 1") << reply(12, 1) << false;
    QTest::newRow("13, 0") << reply(13, 0) << false;
    QTest::newRow("0, 12") << reply(0, 12) << false;
    QTest::newRow("only byte 6 missing reads as 0")
        << QByteArray("\xff\xff\xfd\x00\x07\x0c", 6) << true;
    QTest::newRow("short reply") << QByteArray("\xff\xff", 2) << false;
    QTest::newRow("empty reply") << QByteArray() << false;
}

void TestDevices::identifiesByBytesFiveAndSix()
{
    QFETCH(QByteArray, reply);
    QFETCH(bool, ax12);

    int loadedCalls = 0;
    DeviceHelper helper(nullptr, [&] { ++loadedCalls; });
    QSignalSpy announced(&helper, SIGNAL(loadDeviceMetadata()));
    helper.onModelNumberRead(reply);

    QVERIFY(helper.device());
    QCOMPARE(bool(dynamic_cast<DynamixelAx12 *>(helper.device().get())), ax12);
    QCOMPARE(bool(dynamic_cast<ZelvarV1 *>(helper.device().get())), !ax12);
    QCOMPARE(announced.count(), 1);
    QCOMPARE(loadedCalls, 1);
}

void TestDevices::eachIdentificationReplacesTheDevice()
{
    QStringList order;
    DeviceHelper helper(nullptr, [&] { order << "callback"; });
    connect(&helper, &DeviceHelper::loadDeviceMetadata, this, [&] {
        // Receivers already see the new model.
        order << QString::number(helper.device()->controlTableSize());
    });
    QVERIFY(!helper.device());

    QByteArray ax12Reply(13, '\0');
    ax12Reply[5] = 12;
    helper.onModelNumberRead(ax12Reply);
    const std::weak_ptr<IDevice> first = helper.device();
    helper.onModelNumberRead(QByteArray(13, '\0'));

    QVERIFY(first.expired());
    QCOMPARE(order, (QStringList{"50", "callback", "118", "callback"}));
}

void TestDevices::identifiesOwnServoOverTheBus()
{
    // A Protocol 2.0 status packet carries its length (6) at bytes 5 and 6.
    auto serial = std::make_shared<SerialHelper>();
    QCOMPARE(serial->openSerialPort(scriptedPort, 1000000), QString());
    bool loaded = false;
    DeviceHelper helper(serial, [&] { loaded = true; });
    QVERIFY(helper.identify(servoId));
    QTRY_VERIFY_WITH_TIMEOUT(loaded, 10000);
    QCOMPARE(helper.device()->controlTableSize(), 118u);
    QCOMPARE(servo->instructions.size(), 1);
}

void TestDevices::rebootAndResetClosePort_data()
{
    QTest::addColumn<bool>("reboot");

    QTest::newRow("reboot") << true;
    QTest::newRow("factory reset") << false;
}

void TestDevices::rebootAndResetClosePort()
{
    QFETCH(bool, reboot);

    auto serial = std::make_shared<SerialHelper>();
    QCOMPARE(serial->openSerialPort(scriptedPort, 1000000), QString());
    DeviceHelper helper(serial, [] {});
    const int before = servo->instructions.size();
    QByteArray reply;
    const auto callback = [&](QByteArray bytes) { reply = bytes; };
    QVERIFY(reboot ? helper.reboot(servoId, callback) : helper.factoryReset(servoId, callback));
    QCOMPARE(servo->instructions.size(), before + 1);
    QVERIFY(!serial->readData(servoId, 0, 2, [](QByteArray) {}));
    // With the port closed, the same command now fails.
    QVERIFY(reboot ? !helper.reboot(servoId, callback) : !helper.factoryReset(servoId, callback));
}

void TestDevices::withoutSerialHelperNothingIsSent()
{
    DeviceHelper helper(nullptr, [] {});
    QVERIFY(!helper.identify(servoId));
    QVERIFY(!helper.reboot(servoId, [](QByteArray) {}));
    QVERIFY(!helper.factoryReset(servoId, [](QByteArray) {}));
    QVERIFY(!helper.device());
}

void TestDevices::processWideInstance()
{
    QVERIFY(!DeviceHelper::instance());
    int calls = 0;
    const auto created = DeviceHelper::instance(nullptr, [&] { ++calls; });
    QVERIFY(created);
    QCOMPARE(DeviceHelper::instance(), created);
    QCOMPARE(DeviceHelper::instance(nullptr, [] {}), created);
    created->onModelNumberRead(QByteArray());
    QCOMPARE(calls, 1);
}

QTEST_MAIN(TestDevices)
#include "tst_devices.moc"
