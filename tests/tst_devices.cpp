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

QByteArray modelReply(char low, char high)
{
    QByteArray bytes(13, '\0');
    bytes[5] = low;
    bytes[6] = high;
    return bytes;
}
} // namespace

class TestDevices : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        servo = std::make_shared<ScriptedServo>(servoId);
        provider = std::make_shared<ScriptedPortProvider>();
        provider->addPort(scriptedPort, [this](ScriptedPortBackend &backend) {
            backend.setResponder([this](const QByteArray &bytes) { return servo->respond(bytes); });
        });
        PortProvider::install(provider);
    }

    void cleanupTestCase() { PortProvider::uninstall(provider); }

    void limits_data()
    {
        QTest::addColumn<bool>("ax12");
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("rawMin");
        QTest::addColumn<int>("rawMax");
        QTest::addColumn<double>("physicalMin");
        QTest::addColumn<double>("physicalMax");

        const double pi = 3.141592653589, position = 1602.2107193496022;
        // clang-format off
        QTest::newRow("position") << false << "actualPositionLineEdit" << -1044479 << 1044479 << -position << position;
        QTest::newRow("angle limit") << false << "clockwiseLimitDoubleSpinBox" << -2047 << 2047 << -pi << pi;
        QTest::newRow("direction") << false << "targetTorqueDirectionComboBox" << 0 << 0 << 0.0 << 0.0;
        QTest::newRow("ax12 position") << true << "positionLineEdit" << 0 << 2047 << -pi << pi;
        QTest::newRow("ax12 lower-case i") << true << "positionintegralTermDoubleSpinBox" << 0 << 10 << 0.0 << 10.0;
        // rawMax -1: the model does not define the name.
        QTest::newRow("baud rate") << false << "baudRateComboBox" << 0 << -1 << 0.0 << 0.0;
        QTest::newRow("ax12 name on ours") << false << "positionintegralTermDoubleSpinBox" << 0 << -1 << 0.0 << 0.0;
        QTest::newRow("servo id on the ax12") << true << "idSpinBox" << 0 << -1 << 0.0 << 0.0;
        QTest::newRow("case matters") << true << "positionIntegralTermDoubleSpinBox" << 0 << -1 << 0.0 << 0.0;
        // clang-format on
    }

    void limits()
    {
        QFETCH(bool, ax12);
        QFETCH(QString, name);
        QFETCH(int, rawMin);
        QFETCH(int, rawMax);
        QFETCH(double, physicalMin);
        QFETCH(double, physicalMax);

        const std::unique_ptr<IDevice> device =
            ax12 ? std::unique_ptr<IDevice>(new DynamixelAx12) : std::make_unique<ZelvarV1>();
        // Widgets ask first, so that a smaller model leaves them on their placeholder.
        QCOMPARE(device->definesField(name), rawMax >= 0);
        try {
            const auto limits = device->limits(name);
            QCOMPARE(limits->rawMin, rawMin);
            QCOMPARE(limits->rawMax, rawMax);
            QVERIFY(limits->physicalMin == physicalMin);
            QVERIFY(limits->physicalMax == physicalMax);
            QVERIFY(!limits->controller);
        } catch (const std::out_of_range &error) {
            QCOMPARE(rawMax, -1);
            QCOMPARE(error.what(), "invalid map<K, T> key");
        }
    }

    void modeComboBoxesCarryTheirControllers()
    {
        const ZelvarV1 device;
        const auto operating = device.limits("operatingModeComboBox");
        QVERIFY(dynamic_cast<OperationModeController *>(operating->controller.get()));
        QVERIFY(dynamic_cast<InputModeController *>(
            device.limits("inputModeComboBox")->controller.get()));
        // Shared with every widget that asks, and made anew for each model.
        QCOMPARE(device.limits("operatingModeComboBox")->controller, operating->controller);
        QVERIFY(ZelvarV1().limits("operatingModeComboBox")->controller != operating->controller);
        // Each ask gets its own copy of the numbers.
        operating->rawMax = 99;
        QVERIFY(device.limits("operatingModeComboBox")->rawMax != 99);
    }

    void ax12HasNoRegisterMap()
    {
        const DynamixelAx12 ax12;
        QCOMPARE(ax12.controlTableSize(), 50u);
        QVERIFY(!ax12.hasRegisterMap());
        QVERIFY(ZelvarV1().hasRegisterMap());
        for (unsigned bank = 0; bank < 4; ++bank)
            QCOMPARE(ax12.registerCount(bank), 0u);
        for (uint16_t address : {0, 3, 49, 117})
            QVERIFY(!ax12.registerDescription(address));
    }

    void identifiesByBytesFiveAndSix_data()
    {
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<bool>("ax12");

        // clang-format off
        QTest::newRow("12, 0 is an AX-12") << modelReply(12, 0) << true;
        QTest::newRow("12, 1") << modelReply(12, 1) << false;
        QTest::newRow("13, 0") << modelReply(13, 0) << false;
        QTest::newRow("only byte 6 missing reads as 0") << QByteArray("\xff\xff\xfd\x00\x07\x0c", 6) << true;
        QTest::newRow("short reply") << QByteArray("\xff\xff", 2) << false;
        QTest::newRow("empty reply") << QByteArray() << false;
        // clang-format on
    }

    void identifiesByBytesFiveAndSix()
    {
        QFETCH(QByteArray, reply);
        QFETCH(bool, ax12);

        QStringList order;
        DeviceHelper helper(nullptr, [&] { order << "callback"; });
        // Receivers already see the new model.
        connect(&helper, &DeviceHelper::loadDeviceMetadata, this,
                [&] { order << QString::number(helper.device()->controlTableSize()); });
        helper.onModelNumberRead(reply);
        const std::weak_ptr<IDevice> first = helper.device();
        helper.onModelNumberRead(reply);

        QVERIFY(first.expired());
        const QString size = ax12 ? "50" : "118";
        QCOMPARE(order, (QStringList{size, "callback", size, "callback"}));
    }

    void identifiesOwnServoOverTheBus()
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

    void rebootAndResetClosePort_data()
    {
        QTest::addColumn<bool>("reboot");

        QTest::newRow("reboot") << true;
        QTest::newRow("factory reset") << false;
    }

    void rebootAndResetClosePort()
    {
        QFETCH(bool, reboot);

        auto serial = std::make_shared<SerialHelper>();
        QCOMPARE(serial->openSerialPort(scriptedPort, 1000000), QString());
        DeviceHelper helper(serial, [] {});
        const int before = servo->instructions.size();
        const auto send = [&] {
            const auto ignore = [](QByteArray) {};
            return reboot ? helper.reboot(servoId, ignore) : helper.factoryReset(servoId, ignore);
        };
        QVERIFY(send());
        QCOMPARE(servo->instructions.size(), before + 1);
        QVERIFY(!serial->readData(servoId, 0, 2, [](QByteArray) {}));
        // With the port closed, the same command now fails.
        QVERIFY(!send());
    }

    void withoutSerialHelperNothingIsSent()
    {
        DeviceHelper helper(nullptr, [] {});
        QVERIFY(!helper.identify(servoId));
        QVERIFY(!helper.reboot(servoId, [](QByteArray) {}));
        QVERIFY(!helper.factoryReset(servoId, [](QByteArray) {}));
        QVERIFY(!helper.device());
    }

private:
    std::shared_ptr<ScriptedPortProvider> provider;
    std::shared_ptr<ScriptedServo> servo;
};

QTEST_MAIN(TestDevices)
#include "tst_devices.moc"
