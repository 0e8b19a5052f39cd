#include "packetcodec.h"
#include "packetframer.h"
#include "portprovider.h"
#include "simulator/manualbusclock.h"
#include "simulator/servoregisters.h"
#include "simulator/virtualbus.h"
#include "simulator/virtualbusportbackend.h"
#include "simulator/virtualbusportprovider.h"
#include "simulator/virtualservo.h"

#include <QtTest>

namespace {

int wireSize(const Packet &packet)
{
    return PacketCodec::encode(packet).size();
}

std::vector<BusReply> send(VirtualBus &bus, const Packet &request, int baudRate = 1000000)
{
    return bus.transfer(request, wireSize(request), baudRate);
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
    void answersOnlyItsIdAndRate_data();
    void answersOnlyItsIdAndRate();
    void replyTakesWireTimeAndReturnDelay();
    void broadcastPingIsAnsweredInTurn();
    void sharedIdCollides();
    void newBaudRateAppliesAfterTheReply();
    void clockMovesTheServos();
    void faultsForTheNextReplies_data();
    void faultsForTheNextReplies();
    void faultProbability();
    void backendDeliversAtTheDueTime();
    void backendWaitsWithoutAnEventLoop();
    void processBusIsListedOnce();
};

void TestVirtualBus::answersOnlyItsIdAndRate_data()
{
    QTest::addColumn<int>("requestId");
    QTest::addColumn<int>("instruction");
    QTest::addColumn<int>("hostBaudRate");
    QTest::addColumn<bool>("answered");

    // The servo is id 5 at code 34: 2,000,000 / 35 = 57,142 bps.
    QTest::newRow("own id and rate") << 5 << int(Instruction::Ping) << 57600 << true;
    QTest::newRow("other id") << 6 << int(Instruction::Ping) << 57600 << false;
    QTest::newRow("2.5 % fast") << 5 << int(Instruction::Ping) << 58571 << true;
    QTest::newRow("4 % fast") << 5 << int(Instruction::Ping) << 59428 << false;
    QTest::newRow("2.9 % slow") << 5 << int(Instruction::Ping) << 55500 << true;
    QTest::newRow("other rate") << 5 << int(Instruction::Ping) << 1000000 << false;
    QTest::newRow("broadcast ping") << int(BroadcastId) << int(Instruction::Ping) << 57600 << true;
    QTest::newRow("broadcast reboot")
        << int(BroadcastId) << int(Instruction::Reboot) << 57600 << false;
}

void TestVirtualBus::answersOnlyItsIdAndRate()
{
    QFETCH(int, requestId);
    QFETCH(int, instruction);
    QFETCH(int, hostBaudRate);
    QFETCH(bool, answered);

    VirtualBus bus(std::make_shared<ManualBusClock>());
    bus.addServo(5, 57600);
    const auto replies = send(bus, {quint8(requestId), quint8(instruction), {}}, hostBaudRate);
    QCOMPARE(replies.size(), size_t(answered ? 1 : 0));
    if (answered) {
        const auto status = decode(replies.front().bytes);
        QVERIFY(status);
        QCOMPARE(status->id, quint8(5));
    }
}

void TestVirtualBus::replyTakesWireTimeAndReturnDelay()
{
    auto clock = std::make_shared<ManualBusClock>();
    clock->advance(1'000'000);
    VirtualBus bus(clock);
    bus.addServo(1, 1000000)->setValue(ServoRegister::ReturnDelay, 1, 50);
    bus.addServo(3, 57600);
    const Packet request = readRequest(1, 0, 118);
    const auto fast = send(bus, request);
    QCOMPARE(fast.size(), size_t(1));
    QCOMPARE(fast.front().bytes.size(), 129);
    // 14 request and 129 reply bytes of 10 us each, and 50 x 2 us of return delay.
    QCOMPARE(fast.front().dueNanoseconds, 1'000'000 + (14 + 129) * 10'000 + 100'000);

    const auto slow = send(bus, readRequest(3, 0, 118), 57600);
    QCOMPARE(slow.size(), size_t(1));
    QCOMPARE(slow.front().dueNanoseconds,
             1'000'000 + VirtualBus::wireNanoseconds(14 + 129, 57600) + 20'000);
}

void TestVirtualBus::broadcastPingIsAnsweredInTurn()
{
    VirtualBus bus(std::make_shared<ManualBusClock>());
    bus.addServo(2, 1000000);
    bus.addServo(1, 1000000);
    bus.addServo(4, 57600);
    const auto replies = send(bus, {BroadcastId, Instruction::Ping, {}});
    QCOMPARE(replies.size(), size_t(2));
    QCOMPARE(decode(replies[0].bytes)->id, quint8(1));
    QCOMPARE(decode(replies[1].bytes)->id, quint8(2));
    QVERIFY(replies[1].dueNanoseconds - replies[0].dueNanoseconds >=
            VirtualBus::wireNanoseconds(replies[1].bytes.size(), 1000000));
}

void TestVirtualBus::sharedIdCollides()
{
    VirtualBus bus(std::make_shared<ManualBusClock>());
    bus.addServo(7, 1000000);
    bus.addServo(7, 1000000);
    const Packet request = readRequest(7, 0, 4);
    const auto replies = send(bus, request);
    QCOMPARE(replies.size(), size_t(1));
    const QByteArray clean = PacketCodec::encode(VirtualServo().handle(request));
    QCOMPARE(replies.front().bytes.size(), clean.size());
    QVERIFY(replies.front().bytes != clean);
    QVERIFY(!decode(replies.front().bytes));
}

void TestVirtualBus::newBaudRateAppliesAfterTheReply()
{
    VirtualBus bus(std::make_shared<ManualBusClock>());
    bus.addServo(1, 1000000);
    const Packet write{1, Instruction::Write, QByteArray("\x04\x00\x22", 3)};
    const auto replies = send(bus, write);
    QCOMPARE(replies.size(), size_t(1));
    QCOMPARE(quint8(decode(replies.front().bytes)->parameters.at(0)), ServoError::None);
    QVERIFY(send(bus, {1, Instruction::Ping, {}}).empty());
    QCOMPARE(send(bus, {1, Instruction::Ping, {}}, 57600).size(), size_t(1));
}

void TestVirtualBus::clockMovesTheServos()
{
    auto clock = std::make_shared<ManualBusClock>();
    VirtualBus bus(clock);
    auto servo = bus.addServo(1, 1000000);
    send(bus, {1, Instruction::Write, QByteArray("\x4E\x00\xE8\x03\x00\x00", 6)});
    send(bus, {1, Instruction::Write, QByteArray("\x30\x00\x01", 3)});
    clock->advance(5'000'000'000);
    const auto replies = send(bus, readRequest(1, ServoRegister::ActualPosition, 4));
    QCOMPARE(decode(replies.front().bytes)->parameters, QByteArray("\x00\xE8\x03\x00\x00", 5));
}

void TestVirtualBus::faultsForTheNextReplies_data()
{
    QTest::addColumn<BusFault>("fault");
    QTest::newRow("drop") << BusFault::Drop;
    QTest::newRow("corrupt") << BusFault::Corrupt;
    QTest::newRow("truncate") << BusFault::Truncate;
    QTest::newRow("garbage") << BusFault::Garbage;
    QTest::newRow("late") << BusFault::Late;
    QTest::newRow("twice") << BusFault::Twice;
}

void TestVirtualBus::faultsForTheNextReplies()
{
    QFETCH(BusFault, fault);

    VirtualBus bus(std::make_shared<ManualBusClock>());
    bus.addServo(1, 1000000);
    const Packet request = readRequest(1, 0, 10);
    const auto clean = send(bus, request);
    QCOMPARE(clean.size(), size_t(1));
    const BusReply expected = clean.front();

    bus.injectFault(1, fault, 2);
    for (int i = 0; i < 2; ++i) {
        const auto replies = send(bus, request);
        switch (fault) {
        case BusFault::Drop:
            QVERIFY(replies.empty());
            break;
        case BusFault::Corrupt:
            QCOMPARE(replies.size(), size_t(1));
            QCOMPARE(replies[0].bytes.size(), expected.bytes.size());
            QVERIFY(!decode(replies[0].bytes) ||
                    !(*decode(replies[0].bytes) == *decode(expected.bytes)));
            break;
        case BusFault::Truncate:
            QCOMPARE(replies.size(), size_t(1));
            QVERIFY(replies[0].bytes.size() < expected.bytes.size());
            QVERIFY(expected.bytes.startsWith(replies[0].bytes));
            break;
        case BusFault::Garbage:
            QCOMPARE(replies.size(), size_t(1));
            QVERIFY(replies[0].bytes.size() > expected.bytes.size());
            QVERIFY(replies[0].bytes.endsWith(expected.bytes));
            QCOMPARE(*decode(replies[0].bytes), *decode(expected.bytes));
            break;
        case BusFault::Late:
            QCOMPARE(replies.size(), size_t(1));
            QVERIFY(replies[0].dueNanoseconds >=
                    expected.dueNanoseconds + VirtualBus::LateReplyNanoseconds);
            break;
        case BusFault::Twice:
            QCOMPARE(replies.size(), size_t(2));
            QCOMPARE(replies[0].bytes, expected.bytes);
            QCOMPARE(replies[1].bytes, expected.bytes);
            QVERIFY(replies[1].dueNanoseconds > replies[0].dueNanoseconds);
            break;
        }
    }
    const auto healed = send(bus, request);
    QCOMPARE(healed.size(), size_t(1));
    QCOMPARE(healed.front().bytes, expected.bytes);
}

void TestVirtualBus::faultProbability()
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

void TestVirtualBus::backendDeliversAtTheDueTime()
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
    QVERIFY(backend.write(request.left(5)));
    QVERIFY(backend.write(request.mid(5)));
    QVERIFY(readyRead.wait(5000));
    QVERIFY(bus->now() - sent >= VirtualBus::wireNanoseconds(14 + 129, 57600));
    const QByteArray reply = backend.readAll();
    QCOMPARE(reply.size(), 129);
    QCOMPARE(decode(reply)->id, quint8(3));
    QVERIFY(backend.readAll().isEmpty());
}

void TestVirtualBus::backendWaitsWithoutAnEventLoop()
{
    auto bus = std::make_shared<VirtualBus>();
    bus->addServo(1, 1000000);
    VirtualBusPortBackend backend(bus);
    backend.open(1000000);
    QVERIFY(backend.write(PacketCodec::reboot(1)));
    QVERIFY(backend.waitForReadyRead(2000));
    QCOMPARE(decode(backend.readAll())->id, quint8(1));
    QVERIFY(backend.write(PacketCodec::ping(2)));
    QVERIFY(!backend.waitForReadyRead(20));
    backend.close();
    QVERIFY(!backend.isOpen());
}

void TestVirtualBus::processBusIsListedOnce()
{
    const auto bus = VirtualBusPortProvider::installProcessBus();
    QCOMPARE(VirtualBusPortProvider::installProcessBus(), bus);
    int listed = 0;
    for (const auto &provider : PortProvider::installed()) {
        for (const SerialPortItem &port : provider->ports()) {
            if (port.getPortName() != "Virtual bus")
                continue;
            ++listed;
            QCOMPARE(port.getDescription(), QString("Simulated Zelvar servos"));
            QVERIFY(port.getManufacturer().isEmpty());
            QCOMPARE(port.getVendorIdentifier(), quint16(0));
            QVERIFY(provider->createBackend("Virtual bus"));
            QVERIFY(!provider->createBackend("/dev/ttyUSB0"));
        }
    }
    QCOMPARE(listed, 1);
    QList<int> answering;
    for (const auto &servo : bus->servos())
        answering << servo->id() << servo->baudRateCode()
                  << int(servo->value(ServoRegister::OperatingMode, 1));
    QCOMPARE(answering, QList<int>({0, 1, 2, 1, 1, 1, 3, 34, 2}));
}

QTEST_GUILESS_MAIN(TestVirtualBus)
#include "tst_virtualbus.moc"
