#include "link/serialhelper.h"
#include "scriptedportprovider.h"
#include "scriptedservo.h"
#include "serialportitem.h"

#include <QtTest>

class TestSerialHelper : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void cleanup();

    void readReplyLength_data();
    void readReplyLength();
    void writeCallbackIsNeverCalled();
    void rebootAndResetDeliverBeforeReturning_data();
    void rebootAndResetDeliverBeforeReturning();
    void requestsFailWithoutPort();
    void unknownPortNamesTheCause();
    void listsScriptedPorts();
    void baudRateRegisterValue_data();
    void baudRateRegisterValue();
    void baudRateIndex_data();
    void baudRateIndex();

private:
    std::shared_ptr<ScriptedPortProvider> provider;
    std::shared_ptr<ScriptedServo> servo;
    std::unique_ptr<SerialHelper> helper;
};

void TestSerialHelper::initTestCase()
{
    provider = std::make_shared<ScriptedPortProvider>();
    provider->addPort("scripted-servo", [this](ScriptedPortBackend &backend) {
        backend.setResponder([this](const QByteArray &bytes) { return servo->respond(bytes); });
    });
    PortProvider::install(provider);
}

void TestSerialHelper::cleanupTestCase()
{
    PortProvider::uninstall(provider);
}

void TestSerialHelper::init()
{
    servo = std::make_shared<ScriptedServo>(7);
    for (int i = 0; i < servo->registers.size(); ++i)
        servo->registers[i] = char(i);
    helper = std::make_unique<SerialHelper>();
    QCOMPARE(helper->openSerialPort("scripted-servo", 1000000), QString());
}

void TestSerialHelper::cleanup()
{
    helper.reset();
}

void TestSerialHelper::readReplyLength_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("replySize");

    QTest::newRow("empty read waits for 11 bytes") << 0 << 11;
    QTest::newRow("model number and firmware") << 4 << 15;
    QTest::newRow("whole table") << 118 << 129;
    // 245 + 11 is 0 in 8 bits: the first chunk wraps the counter, 256 bytes complete it.
    QTest::newRow("count wraps to zero") << 245 << 256;
}

void TestSerialHelper::readReplyLength()
{
    QFETCH(int, length);
    QFETCH(int, replySize);

    QList<QByteArray> replies;
    QVERIFY(helper->readData(7, 2, uint8_t(length), [&](QByteArray r) { replies.append(r); }));
    QTRY_COMPARE(replies.size(), 1);
    const QByteArray reply = replies.first();
    QCOMPARE(reply.size(), replySize);
    QCOMPARE(quint8(reply[8]), quint8(0));
    for (int i = 0; i < length; ++i)
        QCOMPARE(quint8(reply[9 + i]), quint8(2 + i));
}

void TestSerialHelper::writeCallbackIsNeverCalled()
{
    int calls = 0;
    QVERIFY(helper->writeData(7, 40, QByteArray("\x11\x22", 2), [&](QByteArray) { ++calls; }));
    QTRY_COMPARE(servo->instructions.size(), 1);
    // A read issued afterwards completes, so the write's reply has come and gone.
    QByteArray readBack;
    QVERIFY(helper->readData(7, 40, 2, [&](QByteArray r) { readBack = r; }));
    QTRY_COMPARE(readBack.size(), 13);
    QCOMPARE(readBack.mid(9, 2), QByteArray("\x11\x22", 2));
    QCOMPARE(calls, 0);
}

void TestSerialHelper::rebootAndResetDeliverBeforeReturning_data()
{
    QTest::addColumn<bool>("reboot");
    QTest::addColumn<int>("error");

    QTest::newRow("reboot") << true << 0;
    QTest::newRow("reboot refused") << true << 5;
    QTest::newRow("reset") << false << 0;
    QTest::newRow("reset with alert") << false << 0x80;
}

void TestSerialHelper::rebootAndResetDeliverBeforeReturning()
{
    QFETCH(bool, reboot);
    QFETCH(int, error);

    servo->errorByte = quint8(error);
    QByteArray reply;
    const auto callback = [&](QByteArray r) { reply = r; };
    QVERIFY(reboot ? helper->reboot(7, callback) : helper->reset(7, callback));
    QCOMPARE(reply.size(), 6);
    QCOMPARE(quint8(reply[2]), quint8(7));
    QCOMPARE(quint8(reply[4]), quint8(error));
    QCOMPARE(quint8(reply[5]), quint8(~(7 + 2 + error)));
    const QByteArray instruction = servo->instructions.last();
    QCOMPARE(quint8(instruction[0]), reboot ? Instruction::Reboot : Instruction::FactoryReset);
    if (!reboot)
        QCOMPARE(instruction.mid(1), QByteArray(1, char(FactoryResetMode::KeepIdAndBaudRate)));
}

void TestSerialHelper::requestsFailWithoutPort()
{
    helper->closeSerialPort();
    int calls = 0;
    const auto callback = [&](QByteArray) { ++calls; };
    QVERIFY(!helper->readData(7, 0, 4, callback));
    QVERIFY(!helper->writeData(7, 0, QByteArray(1, '\0'), callback));
    QVERIFY(!helper->reboot(7, callback));
    QVERIFY(!helper->reset(7, callback));
    QCOMPARE(calls, 0);
}

void TestSerialHelper::unknownPortNamesTheCause()
{
    const QString error = helper->openSerialPort("ttyNoSuchPort42", 57600);
    QVERIFY(error.contains("ttyNoSuchPort42"));
    QVERIFY(error.contains("no such port"));
    QVERIFY(!helper->readData(7, 0, 4, [](QByteArray) {}));
}

void TestSerialHelper::listsScriptedPorts()
{
    const auto ports = helper->getSerialPortList();
    const auto found = std::find_if(ports.begin(), ports.end(), [](const auto &port) {
        return port->getPortName() == "scripted-servo";
    });
    QVERIFY(found != ports.end());
    QCOMPARE((*found)->getDescription(), QString("Scripted port"));
}

void TestSerialHelper::baudRateRegisterValue_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("value");

    QTest::newRow("9600") << 0 << 207;
    QTest::newRow("19200") << 1 << 103;
    QTest::newRow("38400") << 2 << 51;
    QTest::newRow("57600") << 3 << 34;
    QTest::newRow("115200") << 4 << 16;
    QTest::newRow("200000") << 5 << 9;
    QTest::newRow("250000") << 6 << 7;
    QTest::newRow("400000") << 7 << 4;
    QTest::newRow("500000") << 8 << 3;
    QTest::newRow("1000000 falls to the default") << 9 << 1;
    QTest::newRow("2000000") << 10 << 0;
    QTest::newRow("placeholder") << 11 << 1;
    QTest::newRow("no choice") << -1 << 1;
}

void TestSerialHelper::baudRateRegisterValue()
{
    QFETCH(int, index);
    QFETCH(int, value);
    QCOMPARE(SerialHelper::baudRateRegisterValue(index), value);
}

void TestSerialHelper::baudRateIndex_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("index");

    QTest::newRow("9600") << 207 << 0;
    QTest::newRow("57600") << 34 << 3;
    QTest::newRow("500000") << 3 << 8;
    QTest::newRow("1000000") << 1 << 9;
    QTest::newRow("2000000") << 0 << 10;
    QTest::newRow("unknown") << 2 << -1;
    QTest::newRow("out of byte range") << 300 << -1;
}

void TestSerialHelper::baudRateIndex()
{
    QFETCH(int, value);
    QFETCH(int, index);
    QCOMPARE(SerialHelper::baudRateIndex(value), index);
}

QTEST_GUILESS_MAIN(TestSerialHelper)
#include "tst_serialhelper.moc"
