#include "bridgefolder.h"
#include "datacolumns.h"
#include "packetcodec.h"
#include "scriptedportprovider.h"
#include "scriptedservo.h"
#include "serialportitem.h"
#include "zelvarserialportinterface.h"

#include <QtTest>
#include <limits>

namespace {

const QString ServoPort = "scripted-servo";
const QString SilentPort = "scripted-silent";
// Statuses are handed over in the short form: FF FF id 02 error checksum.
const QByteArray ShortStatus("\xFF\xFF\x05\x02\x00\xF8", 6);

// Answers only the given instruction, with an empty status of servo 5.
ScriptedPortBackend::Responder answerOnly(quint8 instruction)
{
    return [instruction](const QByteArray &bytes) {
        return quint8(bytes.at(7)) == instruction ? PacketCodec::status(5, 0) : QByteArray();
    };
}

} // namespace

class TestSerialPortLibrary : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        provider->addPort(ServoPort, [this](ScriptedPortBackend &backend) {
            backend.setResponder([this](const QByteArray &bytes) { return servo->respond(bytes); });
        });
        provider->addPort(SilentPort);
        PortProvider::install(provider);
    }

    void cleanupTestCase() { PortProvider::uninstall(provider); }

    void init()
    {
        servo = std::make_shared<ScriptedServo>(5);
        for (int i = 0; i < servo->registers.size(); ++i)
            servo->registers[i] = char(0xF0 ^ i);
        library = std::make_unique<ZelvarSerialPortInterface>(nullptr, 2);
        replies.clear();
    }

    void cleanup() { library.reset(); }

    void queuesAndHandsOverOnlyTheLatestReply()
    {
        QVERIFY(open(ServoPort));
        const QByteArray whole = PacketCodec::read(5, 0, 118),
                         write = PacketCodec::write(5, 60, "\x2A");
        QVERIFY(library->readData(5, 0, 118, onData()));
        QVERIFY(library->readData(5, 0, 118, onData()));
        QVERIFY(library->writeData(5, 60, "\x2A", onData()));
        QVERIFY(library->writeData(5, 60, "\x2A", onData()));
        QVERIFY(library->readData(5, 3, 2, onData()));
        QVERIFY(library->readData(5, 0, 118, onData()));
        // Half duplex: the rest wait until the first is answered.
        QCOMPARE(port->written.size(), 1);
        QTRY_COMPARE(replies.size(), 1);
        // The repeat rides on the read on the wire; the last read waits behind the writes,
        // whose effect it must see. The waiting repeat of a newer read goes; writes never do.
        QCOMPARE(port->written,
                 QByteArrayList({whole, write, write, PacketCodec::read(5, 3, 2), whole}));
        QCOMPARE(replies[0].size(), 118 + 11);
        QCOMPARE(replies[0].mid(9, 118), servo->registers.left(118));
        QCOMPARE(library->readPendingSerialData(), QByteArray());
    }

    void repeatedReadTakesOverTheOneOnTheWire()
    {
        QVERIFY(open(ServoPort));
        // As from a polling timer faster than the wire: the same read is asked for again
        // before each answer arrives.
        port->setResponder([this](const QByteArray &bytes) {
            QTimer::singleShot(0, port.data(), [this] { library->readData(5, 0, 118, onData()); });
            return servo->respond(bytes);
        });
        int superseded = 0;
        for (int answered = 1; answered <= 3; ++answered) {
            QVERIFY(library->readData(5, 0, 118, [&superseded] { ++superseded; }));
            QTRY_COMPARE_WITH_TIMEOUT(replies.size(), answered, 1000);
        }
        QCOMPARE(superseded, 0);
        QCOMPARE(port->written.size(), 3);
        QCOMPARE(replies.last().size(), 118 + 11);
    }

    void handsOverWholeValidRepliesOnly_data()
    {
        addColumns<int, int, QByteArray>({"chunkSize", "length", "noise"});

        QTest::newRow("byte by byte") << 1 << 4 << QByteArray();
        QTest::newRow("in one piece") << 0 << 255 << QByteArray();
        QTest::newRow("after another servo's") << 0 << 2 << PacketCodec::status(6, 0, "\x01\x02");
        QTest::newRow("after a wrong length") << 3 << 2 << PacketCodec::status(5, 0, "\x01");
        QTest::newRow("after an instruction echo") << 0 << 2 << PacketCodec::read(5, 0, 2);
    }

    void handsOverWholeValidRepliesOnly()
    {
        QFETCH(int, chunkSize);
        QFETCH(int, length);
        QFETCH(QByteArray, noise);

        QVERIFY(open(SilentPort));
        port->chunkSize = chunkSize;
        QVERIFY(library->readData(5, 0, quint8(length), onData()));
        // Register values that need stuffing on the wire, handed over without it.
        const QByteArray data = QByteArray("\xFF\xFF\xFD", 3).repeated(85).left(length);
        port->deliver(noise + PacketCodec::status(5, 0x80, data));
        QTRY_COMPARE(replies.size(), 1);
        QCOMPARE(replies[0].size(), length + 11);
        QCOMPARE(replies[0].left(9), QByteArray("\xFF\xFF\xFD\x00\x05", 5) + char(length + 4) +
                                         char((length + 4) >> 8) + "\x55\x80");
        QCOMPARE(replies[0].mid(9, length), data);
    }

    void abandonsUnansweredRequest_data()
    {
        addColumns<int, double, double>({"baudRate", "earliestMs", "latestMs"});

        // The wait follows the wire: 143 bytes out and back, the servo's return delay and a
        // margin make 4 ms at 1,000,000 baud and 27 ms at 57,600.
        QTest::newRow("1,000,000 baud") << 1000000 << 3.0 << 10.0;
        QTest::newRow("57,600 baud") << 57600 << 25.0 << 60.0;
    }

    void abandonsUnansweredRequest()
    {
        QFETCH(int, baudRate);
        QFETCH(double, earliestMs);
        QFETCH(double, latestMs);

        QVERIFY(open(SilentPort, baudRate));
        port->setResponder(answerOnly(Instruction::Write));
        QElapsedTimer clock;
        clock.start();
        QVERIFY(library->readData(5, 0, 118, onData()));
        QVERIFY(library->writeData(5, 20, "\x09", onData()));
        QCOMPARE(port->written.size(), 1);
        // Not QTRY: its waits sleep 10 ms at a time, longer than the timeout itself.
        while (replies.isEmpty() && clock.elapsed() < 1000)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        const double elapsedMs = clock.nsecsElapsed() / 1e6;
        QCOMPARE(replies, QByteArrayList{ShortStatus});
        QVERIFY2(elapsedMs >= earliestMs && elapsedMs < latestMs,
                 qPrintable(QString("given up after %1 ms").arg(elapsedMs)));
    }

    void rebootAndResetBlockUntilReplyOrTimeout()
    {
        QVERIFY(open(SilentPort, 57600));
        port->setResponder(answerOnly(Instruction::Reboot));
        QVERIFY(library->readData(5, 0, 118, onData()));
        QVERIFY(library->reboot(5, onData()));
        // Returned with the reply in hand, though no event loop ran in between.
        QCOMPARE(replies, QByteArrayList{ShortStatus});
        QCOMPARE(port->written.size(), 2);
        // Unanswered, a reset returns all the same once its time is up.
        QVERIFY(library->reset(5, onData()));
        QCOMPARE(replies.size(), 1);
        QCOMPARE(port->written.last(),
                 PacketCodec::factoryReset(5, FactoryResetMode::KeepIdAndBaudRate));
    }

    void failedPortRefusesRequestsUntilReopened()
    {
        QVERIFY(open(ServoPort));
        // A write the port refuses drops its request, though the port stays open.
        port->writable = false;
        QVERIFY(!library->writeData(5, 0, "\x01", onData()));
        QVERIFY(!library->reboot(5, onData()));
        port->writable = true;
        QVERIFY(library->readData(5, 0, 4, onData()));
        port->fail("The connection was lost: unplugged.");
        QVERIFY(!library->readData(5, 0, 4, onData()));
        QVERIFY(!library->reboot(5, onData()));
        QTest::qWait(20);
        QVERIFY(replies.isEmpty());

        // Still gone: the next open says so, and why it went.
        PortProvider::uninstall(provider);
        const QString error = library->openSerialPort(ServoPort, 57600);
        PortProvider::install(provider);
        QVERIFY2(error.contains(ServoPort) && error.contains("no such port") &&
                     error.contains("unplugged"),
                 qPrintable(error));
        QVERIFY(!library->readData(5, 0, 4, onData()));

        QVERIFY(open(ServoPort));
        QVERIFY(library->readData(5, 0, 4, onData()));
        QTRY_COMPARE(replies.size(), 1);
    }

    void listsVirtualBusesBetweenAdaptersAndOtherPorts()
    {
        const QString folder = BridgeFolder::path();
        QVERIFY(QDir().mkpath(folder));
        QVERIFY(QFile::link("/dev/null", folder + "/bus-bridge"));
        QVERIFY(QFile::link(folder + "/gone", folder + "/dangling-bridge"));
        // A killed bridge leaves its link to a terminal that someone else may have now.
        QVERIFY(QFile::link("/dev/null", folder + "/killed-bridge"));
        QFile record(folder + "/killed-bridge.pid");
        QVERIFY(record.open(QIODevice::WriteOnly));
        record.write(QByteArray::number(std::numeric_limits<int>::max()) + '\n');
        record.close();

        // Adapters (with a vendor id) first, then the virtual buses, then the rest.
        QStringList virtualNames;
        QString order;
        for (const auto &item : library->getSerialPortList()) {
            const bool isVirtual = item->getDescription() == "Virtual bus bridge" ||
                                   item->getDescription() == "Scripted port";
            const QChar kind = isVirtual ? 'v' : item->getVendorIdentifier() != 0 ? 'a' : 'o';
            if (order.isEmpty() || order.back() != kind)
                order += kind;
            if (isVirtual)
                virtualNames.append(item->getPortName());
        }
        QVERIFY2(QRegularExpression("^a?vo?$").match(order).hasMatch(), qPrintable(order));
        QCOMPARE(virtualNames, QStringList({"bus-bridge", ServoPort, SilentPort}));
        QDir(folder).removeRecursively();
    }

private:
    std::function<void()> onData()
    {
        return [this] { replies.append(library->readPendingSerialData()); };
    }

    bool open(const QString &name, int baudRate = 1000000)
    {
        const bool opened = library->openSerialPort(name, baudRate).isEmpty();
        port = opened ? provider->lastBackend.data() : nullptr;
        return opened && port;
    }

    std::shared_ptr<ScriptedPortProvider> provider = std::make_shared<ScriptedPortProvider>();
    std::shared_ptr<ScriptedServo> servo;
    std::unique_ptr<ZelvarSerialPortInterface> library;
    QPointer<ScriptedPortBackend> port;
    QByteArrayList replies;
};

QTEST_GUILESS_MAIN(TestSerialPortLibrary)
#include "tst_serialportlibrary.moc"
