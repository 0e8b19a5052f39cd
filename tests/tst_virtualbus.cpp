#include "datacolumns.h"
#include "packetcodec.h"
#include "packetframer.h"
#include "simulator/manualbusclock.h"
#include "simulator/servoregisters.h"
#include "simulator/virtualbus.h"
#include "simulator/virtualbusportbackend.h"
#include "simulator/virtualservo.h"

#include <QtTest>

namespace {

std::vector<BusReply> send(VirtualBus &bus, const Packet &request, int baudRate = 1000000)
{
    return bus.transfer(request, PacketCodec::encode(request).size(), baudRate);
}

std::optional<Packet> decode(const QByteArray &bytes)
{
    PacketFramer framer;
    framer.append(bytes);
    return framer.next();
}

Packet readRequest(quint8 id, int address, int length)
{
    return *decode(PacketCodec::read(id, address, length));
}

} // namespace

Q_DECLARE_METATYPE(BusFault)

class TestVirtualBus : public QObject
{
    Q_OBJECT

private slots:
    void answersOnlyItsIdAndRate_data()
    {
        addColumns<int, int, bool>({"requestId", "hostBaudRate", "answered"});

        // The servo is id 5 at code 34: 2,000,000 / 35 = 57,142 bps.
        QTest::newRow("own id and rate") << 5 << 57600 << true;
        QTest::newRow("other id") << 6 << 57600 << false;
        QTest::newRow("2.5 % fast") << 5 << 58571 << true;
        QTest::newRow("4 % fast") << 5 << 59428 << false;
        QTest::newRow("2.9 % slow") << 5 << 55500 << true;
        QTest::newRow("broadcast") << int(BroadcastId) << 57600 << true;
    }

    void answersOnlyItsIdAndRate()
    {
        QFETCH(int, requestId);
        QFETCH(int, hostBaudRate);
        QFETCH(bool, answered);

        VirtualBus bus(std::make_shared<ManualBusClock>());
        bus.addServo(5, 57600);
        const auto replies = send(bus, {quint8(requestId), Instruction::Ping, {}}, hostBaudRate);
        QCOMPARE(replies.size(), size_t(answered ? 1 : 0));
        QVERIFY(!answered || decode(replies.front().bytes)->id == 5);
    }

    void replyTiming()
    {
        auto clock = std::make_shared<ManualBusClock>();
        clock->advance(1'000'000);
        VirtualBus bus(clock);
        bus.addServo(1, 1000000)->setValue(ServoRegister::ReturnDelay, 1, 50);
        bus.addServo(2, 1000000);
        bus.addServo(3, 57600);
        const auto dueOf = [&](const Packet &request, int baudRate = 1000000) {
            return send(bus, request, baudRate).at(0).dueNanoseconds;
        };
        // 14 request and 129 reply bytes of 10 us each, and 50 x 2 us of return delay.
        QCOMPARE(dueOf(readRequest(1, 0, 118)), 1'000'000 + (14 + 129) * 10'000 + 100'000);
        // 1430 bits at 57,600 baud, and the factory 10 x 2 us.
        QCOMPARE(dueOf(readRequest(3, 0, 118), 57600), 1'000'000 + 24'826'388 + 20'000);

        // A broadcast ping is answered in id order, one reply after another.
        const auto replies = send(bus, {BroadcastId, Instruction::Ping, {}});
        QCOMPARE(replies.size(), size_t(2));
        QCOMPARE(decode(replies[0].bytes)->id, quint8(1));
        QCOMPARE(decode(replies[1].bytes)->id, quint8(2));
        QVERIFY(replies[1].dueNanoseconds - replies[0].dueNanoseconds >=
                VirtualBus::wireNanoseconds(replies[1].bytes.size(), 1000000));
        // Any other broadcast is obeyed without a reply.
        QVERIFY(send(bus, {BroadcastId, Instruction::Reboot, {}}).empty());

        // A new return delay of 250 x 2 us applies from the next reply on.
        QCOMPARE(dueOf({2, Instruction::Write, QByteArray("\x05\x00\xFA", 3)}),
                 1'000'000 + (13 + 11) * 10'000 + 20'000);
        QCOMPARE(dueOf({2, Instruction::Ping, {}}), 1'000'000 + (10 + 14) * 10'000 + 500'000);
    }

    void sharedIdCollides()
    {
        VirtualBus bus(std::make_shared<ManualBusClock>());
        bus.addServo(7, 1000000);
        const auto other = bus.addServo(8, 1000000);
        bus.injectFault(7, BusFault::Drop, 1);
        other->setValue(ServoRegister::Id, 1, 7);
        // The first servo's reply is dropped, so the other's comes through whole.
        const auto whole = decode(send(bus, readRequest(7, 0, 4)).at(0).bytes);
        QVERIFY(whole && whole->parameters.size() == 5);
        const auto replies = send(bus, readRequest(7, 0, 4));
        QCOMPARE(replies.size(), size_t(1));
        QCOMPARE(replies.front().bytes.size(), PacketCodec::statusPacketSize(4));
        QVERIFY(!decode(replies.front().bytes));
    }

    void faultsForTheNextReplies_data()
    {
        addColumns<BusFault, int>({"fault", "replyCount"});
        QTest::newRow("drop") << BusFault::Drop << 0;
        QTest::newRow("corrupt") << BusFault::Corrupt << 1;
        QTest::newRow("truncate") << BusFault::Truncate << 1;
        QTest::newRow("garbage") << BusFault::Garbage << 1;
        QTest::newRow("late") << BusFault::Late << 1;
        QTest::newRow("twice") << BusFault::Twice << 2;
    }

    void faultsForTheNextReplies()
    {
        QFETCH(BusFault, fault);
        QFETCH(int, replyCount);

        VirtualBus bus(std::make_shared<ManualBusClock>());
        bus.addServo(1, 1000000);
        const Packet request = readRequest(1, 0, 10);
        const BusReply clean = send(bus, request).at(0);
        bus.injectFault(1, fault, 2);
        for (int i = 0; i < 3; ++i) {
            // The third reply comes from a fault that strikes every time until cleared.
            if (i == 2)
                bus.setFaultProbability(1, fault, 1.0);
            const auto replies = send(bus, request);
            QCOMPARE(int(replies.size()), replyCount);
            if (replies.empty())
                continue;
            const QByteArray &bytes = replies[0].bytes;
            const int growth = bytes.size() - clean.bytes.size();
            if (fault == BusFault::Corrupt)
                QVERIFY(growth == 0 && bytes != clean.bytes);
            else if (fault == BusFault::Truncate)
                QVERIFY(growth < 0 && clean.bytes.startsWith(bytes));
            else if (fault == BusFault::Garbage)
                QVERIFY(growth > 0 && bytes.endsWith(clean.bytes) &&
                        decode(bytes) == decode(clean.bytes));
            else if (fault == BusFault::Late)
                QVERIFY(replies[0].dueNanoseconds >=
                        clean.dueNanoseconds + VirtualBus::LateReplyNanoseconds);
            else if (fault == BusFault::Twice)
                QVERIFY(bytes == clean.bytes && replies[1].bytes == clean.bytes &&
                        replies[1].dueNanoseconds > replies[0].dueNanoseconds);
        }
        bus.clearFaults();
        QCOMPARE(send(bus, request).at(0).bytes, clean.bytes);
    }

    void backendDeliversAtTheDueTime()
    {
        auto bus = std::make_shared<VirtualBus>();
        bus->addServo(3, 57600);
        VirtualBusPortBackend backend(bus);
        QCOMPARE(backend.open(57600), QString());
        QSignalSpy readyRead(&backend, SIGNAL(readyRead()));
        const qint64 sent = bus->now();
        const QByteArray request = PacketCodec::read(3, 0, 118);
        // Written in two pieces, as a serial driver may hand it over.
        QVERIFY(backend.write(request.left(5)) && backend.write(request.mid(5)));
        QByteArray received;
        qint64 firstByteNs = 0;
        while (received.size() < 129 && readyRead.wait(5000)) {
            if (received.isEmpty())
                firstByteNs = bus->now() - sent;
            received += backend.readAll();
        }
        // The first byte once it has crossed the wire, the last once the whole reply has.
        QVERIFY(firstByteNs >= VirtualBus::wireNanoseconds(14 + 1, 57600));
        QVERIFY(firstByteNs < VirtualBus::wireNanoseconds(14 + 129, 57600));
        QVERIFY(bus->now() - sent >= VirtualBus::wireNanoseconds(14 + 129, 57600));
        QCOMPARE(decode(received)->parameters.size(), 119);
        QVERIFY(backend.readAll().isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestVirtualBus)
#include "tst_virtualbus.moc"
