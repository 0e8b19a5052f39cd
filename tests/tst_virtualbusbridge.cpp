#include "bridgeprocess.h"
#include "transactionobserver.h"
#include "zelvarserialportinterface.h"

#include <QProcess>
#include <QtTest>
#include <ctime>

// The library talks, through QSerialPort, to zelvar-virtual-bus on a pseudo-terminal.
class TestVirtualBusBridge : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(bridge.started);
        QCOMPARE(port.openSerialPort(bridge.name, 1000000), QString());
    }

    void cleanupTestCase() { port.closeSerialPort(); }

    void readsWritesAndReadsBack()
    {
        const QByteArray table = read(0, 118);
        QCOMPARE(table.size(), 129);
        QCOMPARE(table.mid(7, 4), QByteArray("\x55\x00\x05\x01", 4));

        QByteArray written;
        QVERIFY(port.writeData(0, 5, QByteArray(1, 42),
                               [&] { written += port.readPendingSerialData(); }));
        QVERIFY(QTest::qWaitFor([&] { return written.size() >= 6; }, 5000));
        port.cleanUp();
        QCOMPARE(written.at(4), '\0');
        QCOMPARE(read(5, 1).mid(8, 2), QByteArray("\x00\x2A", 2));
    }

    void rebootAndResetAnswerBeforeTheyReturn()
    {
        QByteArray reply;
        const auto onData = [&] { reply += port.readPendingSerialData(); };
        QVERIFY(port.reboot(0, onData));
        QVERIFY(port.reset(0, onData));
        QCOMPARE(reply, QByteArray("\xFF\xFF\x00\x02\x00\xFD", 6).repeated(2));
        port.cleanUp();
        // The reset restored the return delay written before.
        const QByteArray delay = read(5, 1);
        QVERIFY(delay.size() == 12 && delay.at(9) != 42);
    }

    void bridgeEndingClosesThePort()
    {
        struct LossListener : TransactionObserver
        {
            QStringList reasons;
            void transactionEnded(const BusTransaction &) override {}
            void portLost(const QString &reason) override { reasons.append(reason); }
        } listener;
        port.setTransactionObserver(&listener);
        QVERIFY(bridge.kill());
        const std::clock_t before = std::clock();
        QTest::qWait(1000);
        // A port left spinning on a hung-up terminal would burn the whole second.
        QVERIFY2(double(std::clock() - before) / CLOCKS_PER_SEC < 0.5,
                 "busy loop after the bridge ended");
        bool called = false;
        QVERIFY(!port.readData(0, 0, 2, [&] { called = true; }));
        QTest::qWait(200);
        QVERIFY(!called);
        // Told as it happens, in words a user can act on.
        QCOMPARE(listener.reasons.size(), 1);
        QVERIFY2(listener.reasons.first().contains("unplugged"),
                 qPrintable(listener.reasons.first()));
        port.setTransactionObserver(nullptr);
    }

private:
    QByteArray read(int address, int length)
    {
        QByteArray reply;
        // A missing reply shows as a short result in the caller's comparison.
        if (port.readData(0, address, length, [&] { reply += port.readPendingSerialData(); }))
            (void)QTest::qWaitFor([&] { return reply.size() >= length + 11; }, 5000);
        port.cleanUp();
        return reply;
    }

    BridgeProcess bridge{ZELVAR_VIRTUAL_BUS_PATH,
                         QString("bridge-under-test-%1").arg(QCoreApplication::applicationPid())};
    ZelvarSerialPortInterface port{nullptr, 2};
};

QTEST_GUILESS_MAIN(TestVirtualBusBridge)
#include "tst_virtualbusbridge.moc"
