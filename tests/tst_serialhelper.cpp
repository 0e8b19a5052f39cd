#include "datacolumns.h"
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

    void handsOverOneWholeReply_data()
    {
        addColumns<QString, int, int>({"request", "length", "error"});

        QTest::newRow("empty read") << "read" << 0 << 0;
        QTest::newRow("whole table") << "read" << 118 << 0;
        // 245 + 11 is 0 in 8 bits: the counter wraps, and the whole 256 bytes complete it.
        QTest::newRow("count wraps to zero") << "read" << 245 << 0x20;
        QTest::newRow("reboot refused") << "reboot" << 0 << 5;
        QTest::newRow("reset with alert") << "reset" << 0 << 0x80;
    }

    void handsOverOneWholeReply()
    {
        QFETCH(QString, request);
        QFETCH(int, length);
        QFETCH(int, error);

        servo->errorByte = quint8(error);
        QByteArrayList replies;
        const auto callback = [&](QByteArray r) { replies.append(r); };
        if (request == "read") {
            QVERIFY(helper->readData(7, 2, uint8_t(length), callback));
            const QByteArray reply =
                PacketCodec::status(7, quint8(error), servo->registers.mid(2, length));
            QTRY_COMPARE(replies, QByteArrayList{reply});
            return;
        }
        // Before the call returns, in the short form: FF FF id 02 error checksum.
        QVERIFY(request == "reboot" ? helper->reboot(7, callback) : helper->reset(7, callback));
        const QByteArray shortForm =
            QByteArray("\xFF\xFF\x07\x02", 4) + char(error) + char(~(7 + 2 + error));
        QCOMPARE(replies, QByteArrayList{shortForm});
    }

    void writeReplyIsSwallowed()
    {
        const QByteArray data("\x11\x22", 2);
        QVERIFY(helper->writeData(7, 40, data, [](QByteArray) { QFAIL("write callback called"); }));
        QTest::qWait(20);
        // A read after it counts right.
        QByteArray readBack;
        QVERIFY(helper->readData(7, 40, 2, [&](QByteArray r) { readBack = r; }));
        QTRY_COMPARE(readBack.size(), 13);
        QCOMPARE(readBack.mid(9, 2), data);
    }

    void baudRateCodes()
    {
        // The servo runs at 2,000,000 / (code + 1) baud; index 9 and anything off the list
        // fall to 1.
        const int rates[] = {9600,   19200,  38400,  57600,   115200, 200000,
                             250000, 400000, 500000, 1000000, 2000000};
        for (int index = 0; index <= 10; ++index) {
            const int code = SerialHelper::baudRateRegisterValue(index);
            QVERIFY2(qAbs(2000000.0 / (code + 1) / rates[index] - 1) < 0.03,
                     qPrintable(QString::number(index)));
            QCOMPARE(SerialHelper::baudRateIndex(code), index);
        }
        QCOMPARE(SerialHelper::baudRateRegisterValue(11), 1);
        QCOMPARE(SerialHelper::baudRateIndex(2), -1);
    }

private:
    std::shared_ptr<ScriptedPortProvider> provider = std::make_shared<ScriptedPortProvider>();
    std::shared_ptr<ScriptedServo> servo;
    std::unique_ptr<SerialHelper> helper;
};

QTEST_GUILESS_MAIN(TestSerialHelper)
#include "tst_serialhelper.moc"
