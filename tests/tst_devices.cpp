#include "datacolumns.h"
#include "device/devicehelper.h"
#include "device/dynamixelax12.h"
#include "device/zelvarv1.h"
#include "link/serialhelper.h"
#include "scriptedportprovider.h"
#include "scriptedservo.h"

#include <QtTest>
#include <stdexcept>

namespace {
const char *const scriptedPort = "scripted-servo";
constexpr uint8_t servoId = 7;

QVector<double> numbers(const FieldLimits &limits)
{
    return {double(limits.rawMin), double(limits.rawMax), limits.physicalMin, limits.physicalMax};
}

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

    void limitsOfEachModel()
    {
        const double position = 1602.2107193496022;
        const auto ours = ZelvarV1().limits("actualPositionLineEdit");
        QCOMPARE(numbers(*ours), (QVector<double>{-1044479, 1044479, -position, position}));
        const auto ax12 = DynamixelAx12().limits("positionintegralTermDoubleSpinBox");
        QCOMPARE(numbers(*ax12), (QVector<double>{0, 10, 0.0, 10.0}));
        QVERIFY(DynamixelAx12().definesField("positionLineEdit"));
    }

    void unknownNameThrows_data()
    {
        addColumns<bool, QString>({"ax12", "name"});

        QTest::newRow("baud rate") << false << "baudRateComboBox";
        QTest::newRow("ax12 name on ours") << false << "positionintegralTermDoubleSpinBox";
        QTest::newRow("servo id on the ax12") << true << "idSpinBox";
        QTest::newRow("case matters") << true << "positionIntegralTermDoubleSpinBox";
    }

    void unknownNameThrows()
    {
        QFETCH(bool, ax12);
        QFETCH(QString, name);

        const std::unique_ptr<IDevice> device =
            ax12 ? std::unique_ptr<IDevice>(new DynamixelAx12) : std::make_unique<ZelvarV1>();
        // Widgets ask first, so that a smaller model leaves them on their placeholder.
        QVERIFY(!device->definesField(name));
        QVERIFY_EXCEPTION_THROWN(device->limits(name), std::out_of_range);
    }

    void ax12HasNoRegisterMap()
    {
        const DynamixelAx12 ax12;
        QVERIFY(!ax12.hasRegisterMap());
        QVERIFY(ZelvarV1().hasRegisterMap());
        for (unsigned bank = 0; bank < 4; ++bank)
            QCOMPARE(ax12.registerCount(bank), 0u);
        for (uint16_t address : {0, 3, 49, 117})
            QVERIFY(!ax12.registerDescription(address));
    }

    void identifiesByBytesFiveAndSix_data()
    {
        addColumns<QByteArray, bool>({"reply", "ax12"});

        // clang-format off
        QTest::newRow("12, 0 is an AX-12") << modelReply(12, 0) << true;
        QTest::newRow("12, 1") << modelReply(12, 1) << false;
        QTest::newRow("13, 0") << modelReply(13, 0) << false;
        QTest::newRow("only byte 6 missing reads as 0") << QByteArray("\xff\xff\xfd\x00\x07\x0c", 6) << true;
        QTest::newRow("short reply") << QByteArray("\xff\xff", 2) << false;
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

private:
    std::shared_ptr<ScriptedPortProvider> provider;
    std::shared_ptr<ScriptedServo> servo;
};

QTEST_MAIN(TestDevices)
#include "tst_devices.moc"
