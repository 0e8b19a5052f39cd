#include "datacolumns.h"
#include "simulator/busfault.h"
#include "simulator/virtualbus.h"
#include "simulator/virtualbusportprovider.h"
#include "zelvarserialportinterface.h"

#include <QtTest>

namespace {

// "1 ! 9": the answers in arrival order, "!" where bytes arrived that made no answer.
QString arrivals(const std::vector<PingReply> &replies)
{
    QStringList parts;
    for (const PingReply &reply : replies)
        parts << (reply.damaged ? QStringLiteral("!") : QString::number(reply.id));
    return parts.join(' ');
}

} // namespace

// Pings through the library on the in-process bus, whose servos answer a broadcast in
// order of id, each in its own slot.
class TestBroadcastPing : public QObject
{
    Q_OBJECT

private slots:
    void answers_data()
    {
        addColumns<QList<int>, int, int, int, QString>(
            {"servos", "fault", "pingId", "highestId", "expected"});
        const int none = -1;
        const int broadcast = 0xFE;
        const QList<int> servos{1, 4, 9};

        QTest::newRow("every servo in order of id")
            << servos << none << broadcast << 253 << "1 4 9";
        QTest::newRow("the wait ends with the highest id asked for")
            << servos << none << broadcast << 4 << "1 4";
        QTest::newRow("id 253 is heard")
            << QList<int>{0, 253} << none << broadcast << 253 << "0 253";
        QTest::newRow("noise before an answer")
            << servos << int(BusFault::Garbage) << broadcast << 253 << "1 ! 4 9";
        QTest::newRow("corrupted answer")
            << servos << int(BusFault::Corrupt) << broadcast << 253 << "1 ! 9";
        QTest::newRow("truncated answer")
            << servos << int(BusFault::Truncate) << broadcast << 253 << "1 ! 9";
        QTest::newRow("missing answer")
            << servos << int(BusFault::Drop) << broadcast << 253 << "1 9";
        QTest::newRow("two servos share an id")
            << QList<int>{1, 4, 4, 9} << none << broadcast << 253 << "1 ! 9";
        QTest::newRow("one servo") << servos << none << 4 << 4 << "4";
        QTest::newRow("absent servo") << servos << none << 5 << 5 << "";
    }

    void answers()
    {
        QFETCH(QList<int>, servos);
        QFETCH(int, fault);
        QFETCH(int, pingId);
        QFETCH(int, highestId);
        QFETCH(QString, expected);

        auto bus = std::make_shared<VirtualBus>();
        for (int id : servos)
            bus->addServo(quint8(id), 1000000);
        if (fault >= 0)
            bus->injectFault(4, BusFault(fault), 1);
        const auto provider = std::make_shared<VirtualBusPortProvider>(bus);
        PortProvider::install(provider);
        ZelvarSerialPortInterface port(nullptr, 2);
        QCOMPARE(port.openSerialPort(VirtualBusPortProvider::PortName, 1000000), QString());

        std::vector<PingReply> replies;
        const bool sent = pingId == BroadcastId ? port.broadcastPing(quint8(highestId), replies)
                                                : port.ping(quint8(pingId), replies);
        port.closeSerialPort();
        PortProvider::uninstall(provider);
        QVERIFY(sent);
        QCOMPARE(arrivals(replies), expected);
        for (const PingReply &reply : replies) {
            if (!reply.damaged)
                QCOMPARE(int(reply.modelNumber), 261);
        }
    }

private:
    static constexpr int BroadcastId = 0xFE;
};

QTEST_GUILESS_MAIN(TestBroadcastPing)
#include "tst_broadcastping.moc"
