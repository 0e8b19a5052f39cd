#include "link/serialhelper.h"
#include "scriptedportprovider.h"
#include "scriptedservo.h"

#include <QtTest>

class TestSerialHelper : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        provider->addPort("scripted-servo", [this](ScriptedPortBackend &backend) {
            backend.setResponder([this](const QByteArray &bytes) { return servo->respond(bytes); });
        });
        PortProvider::install(provider);
    }

    void cleanupTestCase() { PortProvider::uninstall(provider); }

    void init()
    {
        servo = std::make_shared<ScriptedServo>(7);
        for (int i = 0; i < servo->registers.size(); ++i)
            servo->registers[i] = char(i);
        helper = std::make_unique<SerialHelper>();
        QCOMPARE(helper->openSerialPort("scripted-servo", 1000000), QString());
    }

    void readReplyLength_data()
    {
        QTest::addColumn<int>("length");
        QTest::addColumn<int>("replySize");

        QTest::newRow("empty read waits for 11 bytes") << 0 << 11;
        QTest::newRow("whole table") << 118 << 129;
        // 245 + 11 is 0 in 8 bits: the first chunk wraps the counter, 256 bytes complete it.
        QTest::newRow("count wraps to zero") << 245 << 256;
    }

    void readReplyLength()
    {
        QFETCH(int, length);
        QFETCH(int, replySize);

        QList<QByteArray> replies;
        QVERIFY(helper->readData(7, 2, uint8_t(length), [&](QByteArray r) { replies.append(r); }));
        QTRY_COMPARE(replies.size(), 1);
        QCOMPARE(replies[0].size(), replySize);
        QCOMPARE(replies[0].mid(8, length + 1), '\0' + servo->registers.mid(2, length));
    }

    void writeCallbackIsNeverCalled()
    {
        int calls = 0;
        QVERIFY(helper->writeData(7, 40, QByteArray("\x11\x22", 2), [&](QByteArray) { ++calls; }));
        // A read issued afterwards completes, so the write's reply has come and gone.
        QByteArray readBack;
        QVERIFY(helper->readData(7, 40, 2, [&](QByteArray r) { readBack = r; }));
        QTRY_COMPARE(readBack.size(), 13);
        QCOMPARE(readBack.mid(9, 2), QByteArray("\x11\x22", 2));
        QCOMPARE(calls, 0);
    }

    void rebootAndResetDeliverBeforeReturning_data()
    {
        QTest::addColumn<bool>("reboot");
        QTest::addColumn<int>("error");

        QTest::newRow("reboot") << true << 0;
        QTest::newRow("reboot refused") << true << 5;
        QTest::newRow("reset with alert") << false << 0x80;
    }

    void rebootAndResetDeliverBeforeReturning()
    {
        QFETCH(bool, reboot);
        QFETCH(int, error);

        servo->errorByte = quint8(error);
        QByteArray reply;
        const auto callback = [&](QByteArray r) { reply = r; };
        QVERIFY(reboot ? helper->reboot(7, callback) : helper->reset(7, callback));
        // The short form: FF FF id 02 error checksum.
        QCOMPARE(reply, QByteArray("\xFF\xFF\x07\x02", 4) + char(error) + char(~(7 + 2 + error)));
        // A reset keeps the id and the baud rate: instruction 06, mode 02.
        QCOMPARE(servo->instructions.last(),
                 reboot ? QByteArray(1, char(Instruction::Reboot)) : QByteArray("\x06\x02", 2));
    }

    void unknownPortRefusesRequests()
    {
        const QString error = helper->openSerialPort("ttyNoSuchPort42", 57600);
        QVERIFY(error.contains("ttyNoSuchPort42") && error.contains("no such port"));
        int calls = 0;
        const auto callback = [&](QByteArray) { ++calls; };
        QVERIFY(!helper->readData(7, 0, 4, callback));
        QVERIFY(!helper->writeData(7, 0, QByteArray(1, '\0'), callback));
        QVERIFY(!helper->reboot(7, callback));
        QVERIFY(!helper->reset(7, callback));
        QCOMPARE(calls, 0);
    }

    void baudRateCodes()
    {
        // The servo runs at 2,000,000 / (code + 1) bps; index 9 and anything off the list fall
        // to 1.
        const int rates[] = {9600,   19200,  38400,  57600,   115200, 200000,
                             250000, 400000, 500000, 1000000, 2000000};
        for (int index = 0; index <= 10; ++index) {
            const int code = SerialHelper::baudRateRegisterValue(index);
            QVERIFY2(qAbs(2000000.0 / (code + 1) / rates[index] - 1) < 0.03,
                     qPrintable(QString::number(index)));
            QCOMPARE(SerialHelper::baudRateIndex(code), index);
        }
        QCOMPARE(SerialHelper::baudRateRegisterValue(9), 1);
        QCOMPARE(SerialHelper::baudRateRegisterValue(11), 1);
        QCOMPARE(SerialHelper::baudRateRegisterValue(-1), 1);
        QCOMPARE(SerialHelper::baudRateIndex(2), -1);
        QCOMPARE(SerialHelper::baudRateIndex(300), -1);
    }

private:
    std::shared_ptr<ScriptedPortProvider> provider = std::make_shared<ScriptedPortProvider>();
    std::shared_ptr<ScriptedServo> servo;
    std::unique_ptr<SerialHelper> helper;
};

QTEST_GUILESS_MAIN(TestSerialHelper)
#include "tst_serialhelper.moc"
