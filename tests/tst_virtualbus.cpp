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
        QTest::addColumn<int>("requestId");
        QTest::addColumn<int>("instruction");
        QTest::addColumn<int>("hostBaudRate");
        QTest::addColumn<bool>("answered");

        // The servo is id 5 at code 34: 2,000,000 / 35 = 57,142 bps.
        // clang-format off
        QTest::newRow("own id and rate") << 5 << int(Instruction::Ping) << 57600 << true;
        QTest::newRow("other id") << 6 << int(Instruction::Ping) << 57600 << false;
        QTest::newRow("2.5 % fast") << 5 << int(Instruction::Ping) << 58571 << true;
        QTest::newRow("4 % fast") << 5 << int(Instruction::Ping) << 59428 << false;
        QTest::newRow("2.9 % slow") << 5 << int(Instruction::Ping) << 55500 << true;
        QTest::newRow("other rate") << 5 << int(Instruction::Ping) << 1000000 << false;
        QTest::newRow("broadcast ping") << int(BroadcastId) << int(Instruction::Ping) << 57600 << true;
        QTest::newRow("broadcast reboot") << int(BroadcastId) << int(Instruction::Reboot) << 57600 << false;
        // clang-format on
    }

    void answersOnlyItsIdAndRate()
    {
        QFETCH(int, requestId);
        QFETCH(int, instruction);
        QFETCH(int, hostBaudRate);
        QFETCH(bool, answered);

        VirtualBus bus(std::make_shared<ManualBusClock>());
        bus.addServo(5, 57600);
        const auto replies = send(bus, {quint8(requestId), quint8(instruction), {}}, hostBaudRate);
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
        const auto fast = send(bus, readRequest(1, 0, 118));
        QCOMPARE(fast.size(), size_t(1));
        QCOMPARE(fast.front().bytes.size(), 129);
        // 14 request and 129 reply bytes of 10 us each, and 50 x 2 us of return delay.
        QCOMPARE(fast.front().dueNanoseconds, 1'000'000 + (14 + 129) * 10'000 + 100'000);
        QCOMPARE(send(bus, readRequest(3, 0, 118), 57600).front().dueNanoseconds,
                 1'000'000 + VirtualBus::wireNanoseconds(14 + 129, 57600) + 20'000);

        // A broadcast ping is answered in id order, one reply after another.
        const auto replies = send(bus, {BroadcastId, Instruction::Ping, {}});
        QCOMPARE(replies.size(), size_t(2));
        QCOMPARE(decode(replies[0].bytes)->id, quint8(1));
        QCOMPARE(decode(replies[1].bytes)->id, quint8(2));
        QVERIFY(replies[1].dueNanoseconds - replies[0].dueNanoseconds >=
                VirtualBus::wireNanoseconds(replies[1].bytes.size(), 1000000));
    }

    void sharedIdCollides()
    {
        VirtualBus bus(std::make_shared<ManualBusClock>());
        bus.addServo(7, 1000000);
        bus.addServo(7, 1000000);
        const auto replies = send(bus, readRequest(7, 0, 4));
        QCOMPARE(replies.size(), size_t(1));
        QCOMPARE(replies.front().bytes.size(), PacketCodec::statusPacketSize(4));
        QVERIFY(!decode(replies.front().bytes));
    }

    void newBaudRateAppliesAfterTheReply()
    {
        VirtualBus bus(std::make_shared<ManualBusClock>());
        bus.addServo(1, 1000000);
        const auto replies = send(bus, {1, Instruction::Write, QByteArray("\x04\x00\x22", 3)});
        QCOMPARE(decode(replies.at(0).bytes)->parameters, QByteArray(1, '\0'));
        QVERIFY(send(bus, {1, Instruction::Ping, {}}).empty());
        QCOMPARE(send(bus, {1, Instruction::Ping, {}}, 57600).size(), size_t(1));
    }

    void clockMovesTheServos()
    {
        auto clock = std::make_shared<ManualBusClock>();
        VirtualBus bus(clock);
        bus.addServo(1, 1000000);
        send(bus, {1, Instruction::Write, QByteArray("\x4E\x00\xE8\x03\x00\x00", 6)});
        send(bus, {1, Instruction::Write, QByteArray("\x30\x00\x01", 3)});
        clock->advance(5'000'000'000);
        const auto replies = send(bus, readRequest(1, ServoRegister::ActualPosition, 4));
        QCOMPARE(decode(replies.front().bytes)->parameters, QByteArray("\x00\xE8\x03\x00\x00", 5));
    }

    void faultsForTheNextReplies_data()
    {
        QTest::addColumn<BusFault>("fault");
        QTest::newRow("drop") << BusFault::Drop;
        QTest::newRow("corrupt") << BusFault::Corrupt;
        QTest::newRow("truncate") << BusFault::Truncate;
        QTest::newRow("garbage") << BusFault::Garbage;
        QTest::newRow("late") << BusFault::Late;
        QTest::newRow("twice") << BusFault::Twice;
    }

    void faultsForTheNextReplies()
    {
        QFETCH(BusFault, fault);

        VirtualBus bus(std::make_shared<ManualBusClock>());
        bus.addServo(1, 1000000);
        const Packet request = readRequest(1, 0, 10);
        const BusReply clean = send(bus, request).at(0);

        bus.injectFault(1, fault, 2);
        for (int i = 0; i < 2; ++i) {
            const auto replies = send(bus, request);
            QCOMPARE(replies.size(), size_t(fault == BusFault::Drop    ? 0
                                            : fault == BusFault::Twice ? 2
                                                                       : 1));
            if (replies.empty())
                continue;
            const QByteArray &bytes = replies[0].bytes;
            switch (fault) {
            case BusFault::Corrupt:
                QCOMPARE(bytes.size(), clean.bytes.size());
                QVERIFY(!decode(bytes) || !(*decode(bytes) == *decode(clean.bytes)));
                break;
            case BusFault::Truncate:
                QVERIFY(bytes.size() < clean.bytes.size() && clean.bytes.startsWith(bytes));
                break;
            case BusFault::Garbage:
                QVERIFY(bytes.size() > clean.bytes.size() && bytes.endsWith(clean.bytes));
                QCOMPARE(*decode(bytes), *decode(clean.bytes));
                break;
            case BusFault::Late:
                QVERIFY(replies[0].dueNanoseconds >=
                        clean.dueNanoseconds + VirtualBus::LateReplyNanoseconds);
                break;
            default:
                QVERIFY(bytes == clean.bytes && replies[1].bytes == clean.bytes);
                QVERIFY(replies[1].dueNanoseconds > replies[0].dueNanoseconds);
            }
        }
        QCOMPARE(send(bus, request).at(0).bytes, clean.bytes);
    }

    void faultProbability()
    {
        VirtualBus bus(std::make_shared<ManualBusClock>());
        bus.addServo(1, 1000000);
        const Packet ping{1, Instruction::Ping, {}};
        bus.setFaultProbability(1, BusFault::Drop, 0.5);
        int dropped = 0;
        for (int i = 0; i < 400; ++i)
            dropped += send(bus, ping).empty() ? 1 : 0;
        QVERIFY2(dropped > 120 && dropped < 280, qPrintable(QString::number(dropped)));
        bus.clearFaults();
        for (int i = 0; i < 50; ++i)
            QCOMPARE(send(bus, ping).size(), size_t(1));
    }

    void backendDeliversAtTheDueTime()
    {
        auto bus = std::make_shared<VirtualBus>();
        bus->addServo(3, 57600);
        VirtualBusPortBackend backend(bus);
        QVERIFY(!backend.write(PacketCodec::ping(3)));
        QCOMPARE(backend.open(57600), QString());
        QSignalSpy readyRead(&backend, SIGNAL(readyRead()));
        const qint64 sent = bus->now();
        const QByteArray request = PacketCodec::read(3, 0, 118);
        // Written in two pieces, as a serial driver may hand it over.
        QVERIFY(backend.write(request.left(5)) && backend.write(request.mid(5)));
        QVERIFY(readyRead.wait(5000));
        QVERIFY(bus->now() - sent >= VirtualBus::wireNanoseconds(14 + 129, 57600));
        QCOMPARE(decode(backend.readAll())->parameters.size(), 119);
        QVERIFY(backend.readAll().isEmpty());

        // Without an event loop, as reboot and reset wait.
        QVERIFY(backend.write(PacketCodec::reboot(3)));
        QVERIFY(backend.waitForReadyRead(2000));
        QCOMPARE(decode(backend.readAll())->id, quint8(3));
        QVERIFY(backend.write(PacketCodec::ping(2)));
        QVERIFY(!backend.waitForReadyRead(20));
    }
};

QTEST_GUILESS_MAIN(TestVirtualBus)
#include "tst_virtualbus.moc"
