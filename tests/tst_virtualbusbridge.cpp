#include "zelvarserialportinterface.h"

#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QtTest>
#include <ctime>

namespace {

double processorSeconds()
{
    return double(std::clock()) / CLOCKS_PER_SEC;
}

} // namespace

// The library talks, through QSerialPort, to zelvar-virtual-bus on a pseudo-terminal.
class TestVirtualBusBridge : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void listedAmongThePorts();
    void readsTheWholeTable();
    void writesAndReadsBack();
    void rebootAndResetAnswerBeforeTheyReturn();
    void bridgeEndingClosesThePort();

private:
    // Sends through `send` and gathers bytes until `size` have come.
    QByteArray exchange(const std::function<bool(std::function<void()>)> &send, int size);

    const QString bridgeName =
        QString("bridge-under-test-%1").arg(QCoreApplication::applicationPid());
    QProcess bridge;
    ZelvarSerialPortInterface port{nullptr, 2};
};

void TestVirtualBusBridge::initTestCase()
{
    bridge.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    bridge.start(ZELVAR_VIRTUAL_BUS_PATH, {"--name", bridgeName});
    QVERIFY(bridge.waitForStarted(10000));
    QVERIFY(bridge.waitForReadyRead(10000));
    QVERIFY(bridge.readLine().startsWith("/dev/"));
    QCOMPARE(port.openSerialPort(bridgeName, 1000000), QString());
}

void TestVirtualBusBridge::cleanupTestCase()
{
    port.closeSerialPort();
    if (bridge.state() != QProcess::NotRunning) {
        bridge.kill();
        bridge.waitForFinished(10000);
    }
    // A killed bridge cannot remove its own entry.
    QFile::remove(QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation) +
                  "/zelvar-virtual-bus/" + bridgeName);
}

QByteArray TestVirtualBusBridge::exchange(const std::function<bool(std::function<void()>)> &send,
                                          int size)
{
    QByteArray reply;
    const bool sent = send([this, &reply] { reply += port.readPendingSerialData(); });
    if (!sent)
        return {};
    QElapsedTimer waited;
    waited.start();
    while (reply.size() < size && waited.elapsed() < 5000)
        QTest::qWait(1);
    port.cleanUp();
    return reply;
}

void TestVirtualBusBridge::listedAmongThePorts()
{
    bool listed = false;
    for (const auto &item : port.getSerialPortList())
        listed = listed || item->getPortName() == bridgeName;
    QVERIFY(listed);
}

void TestVirtualBusBridge::readsTheWholeTable()
{
    const QByteArray reply =
        exchange([this](auto onData) { return port.readData(0, 0, 118, onData); }, 129);
    QCOMPARE(reply.size(), 129);
    QCOMPARE(reply.at(7), '\x55');
    QCOMPARE(reply.at(8), '\0');
    QCOMPARE(reply.mid(9, 2), QByteArray("\x05\x01", 2));
}

void TestVirtualBusBridge::writesAndReadsBack()
{
    const QByteArray written = exchange(
        [this](auto onData) { return port.writeData(0, 5, QByteArray(1, 42), onData); }, 6);
    QCOMPARE(written.size(), 6);
    QCOMPARE(written.at(4), '\0');
    const QByteArray read =
        exchange([this](auto onData) { return port.readData(0, 5, 1, onData); }, 12);
    QCOMPARE(read.mid(8, 2), QByteArray("\x00\x2A", 2));
}

void TestVirtualBusBridge::rebootAndResetAnswerBeforeTheyReturn()
{
    QByteArray rebootReply;
    QVERIFY(port.reboot(0, [&] { rebootReply += port.readPendingSerialData(); }));
    QCOMPARE(rebootReply.size(), 6);
    QCOMPARE(rebootReply.at(2), '\0');
    QCOMPARE(rebootReply.at(4), '\0');
    port.cleanUp();

    QByteArray resetReply;
    QVERIFY(port.reset(0, [&] { resetReply += port.readPendingSerialData(); }));
    QCOMPARE(resetReply.size(), 6);
    QCOMPARE(resetReply.at(4), '\0');
    port.cleanUp();
    // The reset restored the return delay written before.
    const QByteArray read =
        exchange([this](auto onData) { return port.readData(0, 5, 1, onData); }, 12);
    QVERIFY(read.size() == 12 && read.at(9) != 42);
}

void TestVirtualBusBridge::bridgeEndingClosesThePort()
{
    bridge.kill();
    QVERIFY(bridge.waitForFinished(10000));
    const double before = processorSeconds();
    QElapsedTimer wall;
    wall.start();
    while (wall.elapsed() < 1000)
        QTest::qWait(50);
    // A port left spinning on a hung-up terminal would burn the whole second.
    QVERIFY2(processorSeconds() - before < 0.5, "busy loop after the bridge ended");
    bool called = false;
    const bool sent = port.readData(0, 0, 2, [&] { called = true; });
    QTest::qWait(200);
    QVERIFY(!sent);
    QVERIFY(!called);
}

QTEST_GUILESS_MAIN(TestVirtualBusBridge)
#include "tst_virtualbusbridge.moc"
