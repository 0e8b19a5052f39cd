#include "packetcodec.h"
#include "scriptedportprovider.h"
#include "scriptedservo.h"
#include "serialportitem.h"
#include "zelvarserialportinterface.h"

#include <QtTest>

#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

namespace {

const QString ServoPort = "scripted-servo";
const QString SilentPort = "scripted-silent";
const QString RebootOnlyPort = "scripted-reboot-only";

// Collects what the library hands over, one entry per onData call.
struct Receiver
{
    ZelvarSerialPortInterface *library = nullptr;
    QByteArrayList replies;

    std::function<void()> onData()
    {
        return [this] { replies.append(library->readPendingSerialData()); };
    }
};

quint8 instructionOf(const QByteArray &wire)
{
    return quint8(wire.at(7));
}

} // namespace

class TestSerialPortLibrary : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void cleanup();

    void sendsOneRequestAtATime();
    void handsOverOnlyTheLatestReply();
    void dropsWaitingReadsThatANewerOneRepeats();
    void neverDropsWrites();
    void handsOverWholeRepliesOnly_data();
    void handsOverWholeRepliesOnly();
    void ignoresWhatIsNotTheReply_data();
    void ignoresWhatIsNotTheReply();
    void abandonsUnansweredRequest();
    void rebootWaitsBehindAnUnansweredRead();
    void rebootGivesUpOnSilence();
    void failedPortRefusesRequestsUntilReopened();
    void refusesUnknownProtocolVersion();
    void listsVirtualBusesBetweenAdaptersAndOtherPorts();
    void talksThroughAPseudoTerminalBridge();

private:
    std::shared_ptr<ScriptedPortProvider> provider;
    std::shared_ptr<ScriptedServo> servo;
    std::unique_ptr<ZelvarSerialPortInterface> library;
    Receiver receiver;
};

void TestSerialPortLibrary::initTestCase()
{
    // Qt ignores a runtime folder that others may read.
    QFile::setPermissions(QString::fromLocal8Bit(qgetenv("XDG_RUNTIME_DIR")),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    provider = std::make_shared<ScriptedPortProvider>();
    provider->addPort(ServoPort, [this](ScriptedPortBackend &backend) {
        backend.setResponder([this](const QByteArray &bytes) { return servo->respond(bytes); });
    });
    provider->addPort(SilentPort);
    provider->addPort(RebootOnlyPort, [this](ScriptedPortBackend &backend) {
        backend.setResponder([this](const QByteArray &bytes) {
            return instructionOf(bytes) == Instruction::Reboot ? servo->respond(bytes)
                                                               : QByteArray();
        });
    });
    PortProvider::install(provider);
}

void TestSerialPortLibrary::cleanupTestCase()
{
    PortProvider::uninstall(provider);
}

void TestSerialPortLibrary::init()
{
    servo = std::make_shared<ScriptedServo>(5);
    for (int i = 0; i < servo->registers.size(); ++i)
        servo->registers[i] = char(0xF0 ^ i);
    library = std::make_unique<ZelvarSerialPortInterface>(nullptr, 2);
    receiver = Receiver{library.get(), {}};
}

void TestSerialPortLibrary::cleanup()
{
    library.reset();
}

void TestSerialPortLibrary::sendsOneRequestAtATime()
{
    QCOMPARE(library->openSerialPort(ServoPort, 1000000), QString());
    ScriptedPortBackend *port = provider->lastBackend();
    QVERIFY(library->readData(5, 0, 4, receiver.onData()));
    QVERIFY(library->writeData(5, 30, "\x01", receiver.onData()));
    QVERIFY(library->readData(5, 0, 8, receiver.onData()));
    // Half duplex: the later two wait until the first is answered.
    QCOMPARE(port->written().size(), 1);
    QTRY_COMPARE(port->written().size(), 3);
    QCOMPARE(port->written().at(1), PacketCodec::write(5, 30, "\x01"));
}

void TestSerialPortLibrary::handsOverOnlyTheLatestReply()
{
    QCOMPARE(library->openSerialPort(ServoPort, 57600), QString());
    QVERIFY(library->readData(5, 0, 4, receiver.onData()));
    QVERIFY(library->writeData(5, 40, "\x07", receiver.onData()));
    QVERIFY(library->readData(5, 10, 2, receiver.onData()));
    QTRY_COMPARE(servo->instructions.size(), 3);
    QTRY_COMPARE(receiver.replies.size(), 1);
    const QByteArray reply = receiver.replies.first();
    QCOMPARE(reply.size(), 2 + 11);
    QCOMPARE(quint8(reply[9]), quint8(0xF0 ^ 10));
    QCOMPARE(quint8(reply[10]), quint8(0xF0 ^ 11));
    QCOMPARE(library->readPendingSerialData(), QByteArray());
}

void TestSerialPortLibrary::dropsWaitingReadsThatANewerOneRepeats()
{
    QCOMPARE(library->openSerialPort(ServoPort, 1000000), QString());
    ScriptedPortBackend *port = provider->lastBackend();
    QVERIFY(library->readData(5, 0, 118, receiver.onData()));
    QVERIFY(library->readData(5, 0, 118, receiver.onData()));
    QVERIFY(library->readData(5, 3, 2, receiver.onData()));
    QVERIFY(library->readData(5, 0, 118, receiver.onData()));
    QTRY_COMPARE(receiver.replies.size(), 1);
    // The first is on the wire already; of the waiting ones the repeated read goes once.
    const QByteArrayList expected = {PacketCodec::read(5, 0, 118), PacketCodec::read(5, 3, 2),
                                     PacketCodec::read(5, 0, 118)};
    QCOMPARE(port->written(), expected);
    QCOMPARE(receiver.replies.first().size(), 118 + 11);
}

void TestSerialPortLibrary::neverDropsWrites()
{
    QCOMPARE(library->openSerialPort(ServoPort, 1000000), QString());
    QVERIFY(library->readData(5, 0, 4, receiver.onData()));
    for (int i = 0; i < 3; ++i)
        QVERIFY(library->writeData(5, 60, "\x2A", receiver.onData()));
    QTRY_COMPARE(receiver.replies.size(), 1);
    QCOMPARE(servo->instructions.size(), 4);
    QCOMPARE(receiver.replies.first(), QByteArray("\xFF\xFF\x05\x02\x00\xF8", 6));
}

void TestSerialPortLibrary::handsOverWholeRepliesOnly_data()
{
    QTest::addColumn<int>("chunkSize");
    QTest::addColumn<int>("length");

    QTest::newRow("byte by byte") << 1 << 4;
    QTest::newRow("odd pieces") << 7 << 118;
    QTest::newRow("in one piece") << 0 << 255;
    QTest::newRow("nothing to read") << 3 << 0;
}

void TestSerialPortLibrary::handsOverWholeRepliesOnly()
{
    QFETCH(int, chunkSize);
    QFETCH(int, length);

    // Register values that need stuffing on the wire, handed over without it.
    servo->registers.replace(0, 6, QByteArray("\xFF\xFF\xFD\xFF\xFF\xFD", 6));
    QCOMPARE(library->openSerialPort(ServoPort, 1000000), QString());
    provider->lastBackend()->setChunkSize(chunkSize);
    QVERIFY(library->readData(5, 0, quint8(length), receiver.onData()));
    QTRY_COMPARE(receiver.replies.size(), 1);
    const QByteArray reply = receiver.replies.first();
    QCOMPARE(reply.size(), length + 11);
    QCOMPARE(reply.left(8), QByteArray("\xFF\xFF\xFD\x00\x05", 5) +
                                QByteArray(1, char((length + 4) & 0xFF)) +
                                QByteArray(1, char((length + 4) >> 8)) + QByteArray("\x55"));
    QCOMPARE(quint8(reply[8]), quint8(0));
    QCOMPARE(reply.mid(9, length), servo->registers.left(length));
}

void TestSerialPortLibrary::ignoresWhatIsNotTheReply_data()
{
    QTest::addColumn<QByteArray>("noise");

    QByteArray corrupt = PacketCodec::status(5, 0, "\x01\x02");
    corrupt[9] = 'x';
    QTest::newRow("another servo") << PacketCodec::status(6, 0, "\x01\x02");
    QTest::newRow("wrong length") << PacketCodec::status(5, 0, "\x01");
    QTest::newRow("an instruction echo") << PacketCodec::read(5, 0, 2);
    QTest::newRow("corrupt") << corrupt;
    QTest::newRow("line noise") << QByteArray("\x00\xFF\xFF\xFD\x00\x05\x20", 7);
}

void TestSerialPortLibrary::ignoresWhatIsNotTheReply()
{
    QFETCH(QByteArray, noise);

    QCOMPARE(library->openSerialPort(SilentPort, 1000000), QString());
    ScriptedPortBackend *port = provider->lastBackend();
    QVERIFY(library->readData(5, 0, 2, receiver.onData()));
    port->deliver(noise + PacketCodec::status(5, 0x80, "\x33\x44"));
    QTRY_COMPARE(receiver.replies.size(), 1);
    QCOMPARE(receiver.replies.first(), PacketCodec::status(5, 0x80, "\x33\x44"));
}

void TestSerialPortLibrary::abandonsUnansweredRequest()
{
    QCOMPARE(library->openSerialPort(SilentPort, 1000000), QString());
    ScriptedPortBackend *port = provider->lastBackend();
    QVERIFY(library->readData(5, 0, 2, receiver.onData()));
    port->setResponder([](const QByteArray &bytes) {
        return instructionOf(bytes) == Instruction::Write ? PacketCodec::status(5, 0)
                                                          : QByteArray();
    });
    // Half a reply, then silence: the request is given up and its bytes with it.
    port->deliver(PacketCodec::status(5, 0, "\x01\x02").left(6));
    QVERIFY(library->writeData(5, 20, "\x09", receiver.onData()));
    QCOMPARE(port->written().size(), 1);
    QTRY_COMPARE(receiver.replies.size(), 1);
    QCOMPARE(receiver.replies.first(), QByteArray("\xFF\xFF\x05\x02\x00\xF8", 6));
}

void TestSerialPortLibrary::rebootWaitsBehindAnUnansweredRead()
{
    QCOMPARE(library->openSerialPort(RebootOnlyPort, 57600), QString());
    QVERIFY(library->readData(5, 0, 118, receiver.onData()));
    QVERIFY(library->reboot(5, receiver.onData()));
    // Returned with the reply in hand, though no event loop ran in between.
    QCOMPARE(receiver.replies, QByteArrayList{QByteArray("\xFF\xFF\x05\x02\x00\xF8", 6)});
    QCOMPARE(provider->lastBackend()->written().size(), 2);
}

void TestSerialPortLibrary::rebootGivesUpOnSilence()
{
    QCOMPARE(library->openSerialPort(SilentPort, 9600), QString());
    QVERIFY(library->reset(5, receiver.onData()));
    QVERIFY(receiver.replies.isEmpty());
    QCOMPARE(provider->lastBackend()->written(),
             QByteArrayList{PacketCodec::factoryReset(5, FactoryResetMode::KeepIdAndBaudRate)});
}

void TestSerialPortLibrary::failedPortRefusesRequestsUntilReopened()
{
    QCOMPARE(library->openSerialPort(ServoPort, 1000000), QString());
    QVERIFY(library->readData(5, 0, 4, receiver.onData()));
    provider->lastBackend()->fail("unplugged");
    QVERIFY(!library->readData(5, 0, 4, receiver.onData()));
    QVERIFY(!library->reboot(5, receiver.onData()));
    QTest::qWait(20);
    QVERIFY(receiver.replies.isEmpty());

    QCOMPARE(library->openSerialPort(ServoPort, 1000000), QString());
    QVERIFY(library->readData(5, 0, 4, receiver.onData()));
    QTRY_COMPARE(receiver.replies.size(), 1);
}

void TestSerialPortLibrary::refusesUnknownProtocolVersion()
{
    ZelvarSerialPortInterface version1(nullptr, 1);
    const QString error = version1.openSerialPort(ServoPort, 1000000);
    QVERIFY(error.contains(ServoPort));
    QVERIFY(!version1.readData(5, 0, 4, [] {}));
}

void TestSerialPortLibrary::listsVirtualBusesBetweenAdaptersAndOtherPorts()
{
    const QString folder =
        QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation) + "/zelvar-virtual-bus";
    QVERIFY(QDir().mkpath(folder));
    QVERIFY(QFile::link("/dev/null", folder + "/bus-bridge"));
    QVERIFY(QFile::link(folder + "/gone", folder + "/dangling-bridge"));

    const auto ports = library->getSerialPortList();
    QStringList virtualNames;
    int firstVirtual = -1;
    int lastVirtual = -1;
    for (int i = 0; i < int(ports.size()); ++i) {
        const auto &port = ports[std::size_t(i)];
        const bool isVirtual = port->getDescription() == "Virtual bus bridge" ||
                               port->getDescription() == "Scripted port";
        if (isVirtual) {
            virtualNames.append(port->getPortName());
            firstVirtual = firstVirtual < 0 ? i : firstVirtual;
            lastVirtual = i;
        } else if (firstVirtual < 0) {
            QVERIFY(port->getVendorIdentifier() != 0);
        } else {
            QCOMPARE(port->getVendorIdentifier(), quint16(0));
        }
        if (port->getPortName() == "bus-bridge") {
            QCOMPARE(port->getSystemLocation(), QString("/dev/null"));
            QCOMPARE(port->getManufacturer(), QString());
        }
    }
    QCOMPARE(virtualNames, QStringList({"bus-bridge", RebootOnlyPort, ServoPort, SilentPort}));
    QCOMPARE(lastVirtual - firstVirtual + 1, virtualNames.size());
    QDir(folder).removeRecursively();
}

void TestSerialPortLibrary::talksThroughAPseudoTerminalBridge()
{
    const int master = posix_openpt(O_RDWR | O_NOCTTY);
    QVERIFY(master >= 0);
    QVERIFY(fcntl(master, F_SETFL, O_NONBLOCK) == 0);
    QVERIFY(grantpt(master) == 0 && unlockpt(master) == 0);
    const QString folder =
        QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation) + "/zelvar-virtual-bus";
    QVERIFY(QDir().mkpath(folder));
    QVERIFY(QFile::link(QString::fromLocal8Bit(ptsname(master)), folder + "/pty-bridge"));

    QCOMPARE(library->openSerialPort("pty-bridge", 1000000), QString());
    QVERIFY(library->readData(5, 2, 3, receiver.onData()));
    QByteArray request;
    QTRY_VERIFY_WITH_TIMEOUT(([&] {
                                 char buffer[64];
                                 const auto n = ::read(master, buffer, sizeof buffer);
                                 request.append(buffer, int(qMax<ssize_t>(0, n)));
                                 return request.size() >= PacketCodec::read(5, 2, 3).size();
                             }()),
                             5000);
    QCOMPARE(request, PacketCodec::read(5, 2, 3));
    // Answering late would be too late; answer at once and check the handover.
    const QByteArray reply = PacketCodec::status(5, 0, "\x0A\x0B\x0C");
    QCOMPARE(int(::write(master, reply.constData(), size_t(reply.size()))), reply.size());
    QTRY_COMPARE(receiver.replies.size(), 1);
    QCOMPARE(receiver.replies.first(), reply);

    // The far end goes away: the port closes itself, requests fail, nothing spins.
    ::close(master);
    QTRY_VERIFY(!library->readData(5, 2, 3, receiver.onData()));
    QDir(folder).removeRecursively();
}

QTEST_GUILESS_MAIN(TestSerialPortLibrary)
#include "tst_serialportlibrary.moc"
