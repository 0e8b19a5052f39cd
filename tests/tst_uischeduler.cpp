#include "datacolumns.h"
#include "device/devicehelper.h"
#include "device/statushelper.h"
#include "device/uiregisterhelper.h"
#include "link/serialhelper.h"
#include "link/uischeduler.h"
#include "recordingfield.h"
#include "scriptedportprovider.h"
#include "scriptedservo.h"
#include "ui_editview.h"
#include "views/registerview.h"
#include "widgets/uigrouphelper.h"

#include <QTableWidget>
#include <QtTest>

namespace {

constexpr quint8 servoId = 5;

// A read reply of the whole table, with the alert bit in its error byte, whose register a
// holds byte a + 1.
QByteArray countingReply(int length)
{
    QByteArray reply(8, '\0');
    reply.append('\x80');
    for (int address = 0; address < 118; ++address)
        reply.append(char(address + 1));
    reply.append(2, '\0');
    return reply.left(length);
}

} // namespace

class TestUiScheduler : public QObject
{
    Q_OBJECT

    std::shared_ptr<ScriptedPortProvider> provider;
    std::shared_ptr<ScriptedServo> servo;
    std::shared_ptr<SerialHelper> serialHelper;
    std::unique_ptr<RegisterView> registerView;
    std::map<QString, std::unique_ptr<RecordingField>> fields;
    QWidget statusView;
    Ui::EditView statusForm;

    void loadDevice(bool ax12)
    {
        registerView->connectDevice();
        // Model number bytes 5 and 6 of an identify reply: AX-12, or one of our own.
        QByteArray reply(13, '\0');
        reply[5] = ax12 ? 12 : 0x50;
        DeviceHelper::instance()->onModelNumberRead(reply);
    }

    // One tick of the polling timer, then time for its reply to come back.
    void tick(UiScheduler &scheduler)
    {
        const int before = servo->instructions.size();
        QTimerEvent event(scheduler.timerId);
        QCoreApplication::sendEvent(&scheduler, &event);
        QTRY_VERIFY_WITH_TIMEOUT(servo->instructions.size() > before, 10000);
        QCoreApplication::processEvents();
    }

private slots:
    void initTestCase()
    {
        provider = std::make_shared<ScriptedPortProvider>();
        provider->addPort("scripted-servo", [this](ScriptedPortBackend &backend) {
            backend.setResponder([this](const QByteArray &bytes) { return servo->respond(bytes); });
        });
        PortProvider::install(provider);
        serialHelper = std::make_shared<SerialHelper>();
        DeviceHelper::instance(serialHelper, [] {});
        registerView = std::make_unique<RegisterView>();
        statusForm.setupUi(&statusView);
        StatusHelper::create(&statusForm);
        for (const char *name : {"clockwiseLimitDoubleSpinBox", "temperatureLimitDoubleSpinBox",
                                 "actualPositionLineEdit", "actualTemperatureLineEdit"}) {
            fields[name] = std::make_unique<RecordingField>(name);
            UiRegisterHelper::instance()->registerWidget(name, fields[name].get());
        }
    }
    void cleanupTestCase() { PortProvider::uninstall(provider); }

    void init()
    {
        servo = std::make_shared<ScriptedServo>(servoId);
        for (int i = 0; i < 118; ++i)
            servo->registers[i] = char(i + 1);
        QCOMPARE(serialHelper->openSerialPort("scripted-servo", 1000000), QString());
        loadDevice(false);
        for (auto &entry : fields)
            entry.second->values.clear();
    }
    void cleanup() { serialHelper->closeSerialPort(); }

    void onlyTheNewestSchedulerReceivesWrites()
    {
        const std::shared_ptr<UiGroupHelper> groupHelper = UiGroupHelper::create(nullptr);
        auto first = std::make_unique<UiScheduler>(servoId, serialHelper);
        emit groupHelper->addQueueRequest(3, QByteArray(38, '\0'));
        QCOMPARE(first->queuedRequests(), size_t(1));

        auto second = std::make_unique<UiScheduler>(servoId, serialHelper);
        first.reset();
        emit groupHelper->addQueueRequest(48, QByteArray(60, '\0'));
        QCOMPARE(second->queuedRequests(), size_t(1));
    }

    void writesGoFirstOnePerTick()
    {
        UiScheduler scheduler(servoId, serialHelper);
        scheduler.addQueueRequest(11, QByteArray(1, '\x50'));
        scheduler.addQueueRequest(3, QByteArray(1, '\x07'));
        scheduler.addQueueRequest(11, QByteArray(1, '\x51'));
        for (int i = 0; i < 4; ++i)
            tick(scheduler);

        const QByteArrayList expected = {
            QByteArray::fromHex("030b0050"),
            QByteArray::fromHex("03030007"),
            QByteArray::fromHex("030b0051"),
            QByteArray::fromHex("0200007600"),
        };
        QCOMPARE(servo->instructions, expected);
        QCOMPARE(scheduler.queuedRequests(), size_t(0));
        QCOMPARE(servo->registers.at(11), '\x51');
    }

    void refusedWriteIsDropped()
    {
        UiScheduler scheduler(servoId, serialHelper);
        scheduler.addQueueRequest(11, QByteArray(1, '\x50'));
        serialHelper->closeSerialPort();
        QTimerEvent event(0);
        QCoreApplication::sendEvent(&scheduler, &event);
        QCOMPARE(scheduler.queuedRequests(), size_t(0));

        QCOMPARE(serialHelper->openSerialPort("scripted-servo", 1000000), QString());
        tick(scheduler);
        QCOMPARE(servo->instructions.last().at(0), '\x02'); // a read
    }

    // The own family's 118-byte read ends the test above.
    void axPollReadsItsShorterTable()
    {
        loadDevice(true);
        UiScheduler scheduler(servoId, serialHelper);
        // The cursor moves on, the request does not.
        tick(scheduler);
        tick(scheduler);
        const QByteArray read50 = QByteArray::fromHex("0200003200");
        QCOMPARE(servo->instructions, QByteArrayList({read50, read50}));
    }

    void cursorWalksThePollMapAndWraps()
    {
        UiScheduler scheduler(servoId, serialHelper);
        const UiRegisterHelper::PollMap &map = UiRegisterHelper::instance()->pollMap();
        QList<int> stops;
        serialHelper->closeSerialPort(); // only the walk matters here
        do {
            stops.append(scheduler.currentPollCursor());
            QVERIFY(map.count(scheduler.currentPollCursor()));
            QTimerEvent event(0);
            QCoreApplication::sendEvent(&scheduler, &event);
            QVERIFY(stops.size() < 200);
        } while (scheduler.currentPollCursor() != 0);
        QCOMPARE(stops.first(), 0);
        QCOMPARE(stops.last(), 119);
        QCOMPARE(stops.at(1), 2);
    }

    void replyFeedsBindingsRegisterViewAndStatus_data()
    {
        addColumns<int, int, int, int, QString>({"replyLength", "clockwiseLimit", "actualPosition",
                                                 "actualTemperature", "temperatureCell"});

        // Register a holds a + 1: 7/8 give 0x0908, 86..89 give 0x5a595857.
        QTest::newRow("whole reply") << 129 << 0x0908 << 0x5a595857 << 98 << "0x62";
        // Cut inside the actual position: its missing bytes and everything after read 0.
        QTest::newRow("short reply") << 9 + 88 << 0x0908 << 0x5857 << 0 << "0x00";
        // No error byte either: the alert of the row before is cleared.
        QTest::newRow("no data at all") << 5 << 0 << 0 << 0 << "0x00";
    }
    void replyFeedsBindingsRegisterViewAndStatus()
    {
        QFETCH(int, replyLength);
        QFETCH(int, clockwiseLimit);
        QFETCH(int, actualPosition);
        QFETCH(int, actualTemperature);

        UiScheduler scheduler(servoId, serialHelper);
        scheduler.groupCallback(countingReply(replyLength));

        QCOMPARE(fields["clockwiseLimitDoubleSpinBox"]->values, QList<int>{clockwiseLimit});
        QCOMPARE(fields["actualPositionLineEdit"]->values, QList<int>{actualPosition});
        QCOMPARE(fields["actualTemperatureLineEdit"]->values, QList<int>{actualTemperature});
        // Address 97 is row 11 of the second volatile bank.
        QTableWidgetItem *cell = registerView->bankTable(3)->item(11, 1);
        QVERIFY(cell);
        QTEST(cell->text(), "temperatureCell");
        QCOMPARE(statusForm.alertStatusCheckBox->isChecked(), replyLength > 8);
    }

    void replyAfterTheSchedulerIsGoneGoesNowhere()
    {
        auto scheduler = std::make_unique<UiScheduler>(servoId, serialHelper);
        QTimerEvent event(0);
        QCoreApplication::sendEvent(scheduler.get(), &event);
        scheduler.reset();
        QTRY_COMPARE_WITH_TIMEOUT(servo->instructions.size(), 1, 10000);
        QTest::qWait(20);
        QVERIFY(fields["actualPositionLineEdit"]->values.isEmpty());
    }

    void volatileSaveKeepsTheServosOtherRegisters()
    {
        UiScheduler scheduler(servoId, serialHelper);
        tick(scheduler);
        QTRY_VERIFY_WITH_TIMEOUT(!fields["actualPositionLineEdit"]->values.isEmpty(), 10000);
        // Without a form the block is nothing but the servo's own registers 48 to 107.
        QCOMPARE(UiGroupHelper::instance()->volatileBlock(), servo->registers.mid(48, 60));
    }
};

QTEST_MAIN(TestUiScheduler)
#include "tst_uischeduler.moc"
