#include "bridgefolder.h"
#include "datacolumns.h"
#include "packetcodec.h"
#include "scriptedportprovider.h"
#include "scriptedservo.h"
#include "serialportitem.h"
#include "transactionobserver.h"
#include "zelvarserialportinterface.h"

#include <QtTest>
#include <limits>
#include <sys/stat.h>
#include <unistd.h>

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

// Every record and loss the library reports, in order.
struct Recorder : TransactionObserver
{
    QList<BusTransaction> records;
    QStringList losses;

    void transactionEnded(const BusTransaction &transaction) override
    {
        records.append(transaction);
    }
    void portLost(const QString &reason) override { losses.append(reason); }

    // "Reply 7 handed", "Timeout", ...: what a link monitor would tell apart.
    QStringList outcomes() const
    {
        static const char *const names[] = {"Reply",      "Timeout", "Damaged",
                                            "Superseded", "NotSent", "PortLost"};
        QStringList result;
        for (const BusTransaction &t : records) {
            QString text = names[int(t.outcome)];
            if (t.outcome == BusTransaction::Outcome::Reply)
                text += QString(" %1%2").arg(t.error).arg(t.handedOver ? " handed" : "");
            result.append(text);
        }
        return result;
    }
};

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
        library->setTransactionObserver(&recorder);
        replies.clear();
        recorder.records.clear();
        recorder.losses.clear();
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
        addColumns<int, int, QByteArray, QByteArray, bool>(
            {"chunkSize", "length", "before", "after", "handedOver"});

        const QByteArray none;
        QTest::newRow("byte by byte") << 1 << 4 << none << none << true;
        QTest::newRow("in one piece") << 0 << 255 << none << none << true;
        QTest::newRow("after an instruction echo")
            << 0 << 2 << PacketCodec::read(5, 0, 2) << none << true;
        // The line is out of step: the reply may be a stale one.
        QTest::newRow("after another servo's")
            << 0 << 2 << PacketCodec::status(6, 0, "\x01\x02") << none << false;
        QTest::newRow("after a wrong length")
            << 3 << 2 << PacketCodec::status(5, 0, "\x01") << none << false;
        QTest::newRow("after noise") << 0 << 2 << QByteArray("\x13\x00", 2) << none << false;
        QTest::newRow("with bytes right behind")
            << 0 << 2 << none << QByteArray("\xFF", 1) << false;
    }

    void handsOverWholeValidRepliesOnly()
    {
        QFETCH(int, chunkSize);
        QFETCH(int, length);
        QFETCH(QByteArray, before);
        QFETCH(QByteArray, after);
        QFETCH(bool, handedOver);

        QVERIFY(open(SilentPort));
        port->chunkSize = chunkSize;
        QVERIFY(library->readData(5, 0, quint8(length), onData()));
        // Register values that need stuffing on the wire, handed over without it.
        const QByteArray data = QByteArray("\xFF\xFF\xFD", 3).repeated(85).left(length);
        port->deliver(before + PacketCodec::status(5, 0x80, data) + after);
        if (!handedOver) {
            QTest::qWait(20);
            QCOMPARE(replies.size(), 0);
            return;
        }
        QTRY_COMPARE(replies.size(), 1);
        QCOMPARE(replies[0].size(), length + 11);
        QCOMPARE(replies[0].left(9), QByteArray("\xFF\xFF\xFD\x00\x05", 5) + char(length + 4) +
                                         char((length + 4) >> 8) + "\x55\x80");
        QCOMPARE(replies[0].mid(9, length), data);
    }

    void reportsEveryRequestOnce_data()
    {
        // Requests: r reads 4 bytes at 0, R 2 bytes at 3, w writes one byte; ! loses the port.
        addColumns<QString, QString, QStringList>({"answer", "requests", "records"});

        QTest::newRow("poll") << "servo"
                              << "r" << QStringList{"Reply 0 handed"};
        QTest::newRow("refused write") << "access error"
                                       << "w" << QStringList{"Reply 7 handed"};
        QTest::newRow("timeout") << "nothing"
                                 << "r" << QStringList{"Timeout"};
        QTest::newRow("damaged reply") << "bad crc"
                                       << "r" << QStringList{"Damaged"};
        // The first R waits behind the write and is replaced by the second before it goes out.
        QTest::newRow("superseded read")
            << "servo"
            << "rwRR" << QStringList{"Superseded", "Reply 0", "Reply 0", "Reply 0 handed"};
        QTest::newRow("lost port") << "nothing"
                                   << "rw!" << QStringList{"PortLost", "PortLost"};
    }

    void reportsEveryRequestOnce()
    {
        QFETCH(QString, answer);
        QFETCH(QString, requests);
        QFETCH(QStringList, records);

        QVERIFY(open(ServoPort));
        port->setResponder([this, answer](const QByteArray &bytes) -> QByteArray {
            if (answer == "nothing")
                return {};
            if (answer == "access error")
                return PacketCodec::status(5, ServoError::Access);
            QByteArray reply = servo->respond(bytes);
            if (answer == "bad crc")
                reply[reply.size() - 1] = char(reply.back() ^ 0x01);
            return reply;
        });
        for (const QChar request : requests) {
            if (request == 'r')
                QVERIFY(library->readData(5, 0, 4, onData()));
            else if (request == 'R')
                QVERIFY(library->readData(5, 3, 2, onData()));
            else if (request == 'w')
                QVERIFY(library->writeData(5, 60, "\x2A", onData()));
            else
                port->fail("The connection to scripted-servo was lost: unplugged.");
        }
        QTRY_COMPARE(recorder.outcomes(), records);
        const bool lost = requests.endsWith('!');
        QCOMPARE(recorder.losses.size(), lost ? 1 : 0);
        for (const BusTransaction &record : recorder.records) {
            QCOMPARE(record.id, quint8(5));
            const bool wentOut = record.outcome != BusTransaction::Outcome::Superseded &&
                                 (!lost || &record == &recorder.records.first());
            QCOMPARE(record.sentAtNs != 0, wentOut);
            QCOMPARE(record.reply.isEmpty(), record.outcome != BusTransaction::Outcome::Reply);
        }
        QCOMPARE(recorder.records.first().discardedBytes > 0,
                 recorder.records.first().outcome == BusTransaction::Outcome::Damaged);
    }

    // Replies carry no sequence number: what the line brings out of turn must not pass
    // for the answer to the next request, sent the moment the previous one has ended.
    void handsNoReplyToALaterRequest_data()
    {
        QTest::addColumn<QString>("fault");

        QTest::newRow("repeated reply") << "twice";
        QTest::newRow("reply after its timeout") << "late";
        QTest::newRow("noise behind a reply") << "noise";
        QTest::newRow("another servo's reply first") << "foreign";
    }

    void handsNoReplyToALaterRequest()
    {
        QFETCH(QString, fault);

        // Replies come 10 ms after their request; the timeout at this rate is 31 ms.
        QVERIFY(open(SilentPort, 9600));
        const auto deliverIn = [this](int ms, const QByteArray &bytes) {
            QTimer::singleShot(ms, Qt::PreciseTimer, port.data(),
                               [this, bytes] { port->deliver(bytes); });
        };
        bool spoiled = false;
        port->setResponder([&](const QByteArray &bytes) {
            QByteArray reply = servo->respond(bytes);
            if (!std::exchange(spoiled, true)) {
                if (fault == "twice") {
                    // The repeat follows the reply on the wire, one piece behind it.
                    port->chunkSize = reply.size();
                    reply += reply;
                } else if (fault == "late") {
                    deliverIn(38, reply);
                    return QByteArray();
                } else if (fault == "noise") {
                    reply += '\x55';
                } else {
                    reply.prepend(PacketCodec::status(6, 0, "\xAA\xBB"));
                }
            }
            deliverIn(10, reply);
            return QByteArray();
        });
        bool asked = false;
        const auto readNext = [&] {
            asked = true;
            QVERIFY(library->readData(5, 3, 2, onData()));
        };
        QVERIFY(library->readData(5, 0, 2, [&] {
            replies.append(library->readPendingSerialData());
            readNext();
        }));
        QVERIFY(runUntil([this] { return !recorder.records.isEmpty(); }));
        if (!asked)
            readNext();
        runUntil([this] { return recorder.records.size() >= 2; });
        runUntil([] { return false; }, 30);
        QCOMPARE(recorder.outcomes().size(), 2);
        QCOMPARE(recorder.outcomes().last(), QStringLiteral("Reply 0 handed"));
        QCOMPARE(replies.last().mid(9, 2), servo->registers.mid(3, 2));
    }

    void takesNoReplySoonerThanTheWireCouldBringIt()
    {
        // 27 bytes at 9,600 baud take 28 ms; this status of the right shape comes at once,
        // so it answers something sent before.
        QVERIFY(open(SilentPort, 9600));
        port->wireTimed = true;
        port->setResponder(
            [](const QByteArray &) { return PacketCodec::status(5, 0, "\x01\x02"); });
        QVERIFY(library->readData(5, 3, 2, onData()));
        QVERIFY(runUntil([this] { return !recorder.records.isEmpty(); }));
        QCOMPARE(recorder.outcomes(), QStringList{"Damaged"});
        QVERIFY(replies.isEmpty());
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
        QVERIFY(library->readData(5, 0, 118, onData()));
        QVERIFY(library->writeData(5, 20, "\x09", onData()));
        QCOMPARE(port->written.size(), 1);
        runUntil([this] { return !replies.isEmpty(); });
        QCOMPARE(replies, QByteArrayList{ShortStatus});
        QCOMPARE(recorder.records.first().outcome, BusTransaction::Outcome::Timeout);
        const double elapsedMs =
            (recorder.records.first().endedAtNs - recorder.records.first().sentAtNs) / 1e6;
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
        QCOMPARE(BridgeFolder::prepare(), QString());
        const QString folder = BridgeFolder::path();
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

    void trustsOnlyAPrivateFolderOfOurOwn_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("refusal");
        QTest::newRow("private folder") << "folder 0700"
                                        << "";
        QTest::newRow("readable by others") << "folder 0755"
                                            << "open to other users";
        QTest::newRow("writable by the group") << "folder 0720"
                                               << "open to other users";
        QTest::newRow("planted link to a folder") << "link"
                                                  << "is a link";
        QTest::newRow("file") << "file"
                              << "not a folder";
        QTest::newRow("absent") << "none"
                                << "No such file";
        QTest::newRow("someone else's") << "foreign"
                                        << "another user";
    }

    void trustsOnlyAPrivateFolderOfOurOwn()
    {
        QFETCH(QString, kind);
        QFETCH(QString, refusal);
        QTemporaryDir temporary;
        const QString folder = temporary.filePath("bridges");
        const QByteArray path = QFile::encodeName(folder);
        if (kind.startsWith("folder")) {
            QCOMPARE(::mkdir(path, 0700), 0);
            QCOMPARE(::chmod(path, mode_t(kind.mid(7).toInt(nullptr, 8))), 0);
        } else if (kind == "link") {
            QCOMPARE(::mkdir(QFile::encodeName(temporary.filePath("elsewhere")), 0700), 0);
            QVERIFY(QFile::link(temporary.filePath("elsewhere"), folder));
        } else if (kind == "file") {
            QFile file(folder);
            QVERIFY(file.open(QIODevice::WriteOnly));
        } else if (kind == "foreign") {
            if (::geteuid() != 0)
                QSKIP("only root can hand a folder to another user");
            QCOMPARE(::mkdir(path, 0700), 0);
            QCOMPARE(::chown(path, 65534, 65534), 0);
        }
        const QString reason = BridgeFolder::refusal(folder);
        QVERIFY2(refusal.isEmpty() ? reason.isEmpty() : reason.contains(refusal),
                 qPrintable(reason));
    }

    void followsLinksOnlyToLiveCharacterDevices_data()
    {
        QTest::addColumn<QString>("target");
        QTest::addColumn<QString>("pid");
        QTest::addColumn<bool>("live");
        QTest::newRow("device, no record") << "/dev/null"
                                           << "" << true;
        QTest::newRow("device, running bridge") << "/dev/null"
                                                << "self" << true;
        QTest::newRow("device, bridge gone") << "/dev/null"
                                             << "2147483647" << false;
        QTest::newRow("device, garbled record") << "/dev/null"
                                                << "x" << false;
        QTest::newRow("plain file") << "file"
                                    << "" << false;
        QTest::newRow("folder") << "/"
                                << "" << false;
        QTest::newRow("dangling") << "gone"
                                  << "" << false;
    }

    void followsLinksOnlyToLiveCharacterDevices()
    {
        QFETCH(QString, target);
        QFETCH(QString, pid);
        QFETCH(bool, live);
        QTemporaryDir temporary;
        if (!target.startsWith('/')) {
            target = temporary.filePath(target);
            if (target.endsWith("file")) {
                QFile file(target);
                QVERIFY(file.open(QIODevice::WriteOnly));
            }
        }
        const QString link = temporary.filePath("bridge");
        QVERIFY(QFile::link(target, link));
        if (!pid.isEmpty()) {
            QFile record(link + ".pid");
            QVERIFY(record.open(QIODevice::WriteOnly));
            record.write(pid == "self" ? QByteArray::number(QCoreApplication::applicationPid())
                                       : pid.toLatin1());
        }
        QCOMPARE(BridgeFolder::isLive(QFileInfo(link)), live);
    }

    // With no runtime folder set, bridges list themselves in the temporary folder, where
    // a planted link must not redirect them.
    void fallsBackToAPrivateFolderInTheTemporaryFolder()
    {
        QTemporaryDir temporary;
        const QByteArray runtime = qgetenv("XDG_RUNTIME_DIR"), tmp = qgetenv("TMPDIR");
        const auto restore = qScopeGuard([&] {
            qputenv("XDG_RUNTIME_DIR", runtime);
            tmp.isEmpty() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", tmp);
        });
        qunsetenv("XDG_RUNTIME_DIR");
        qputenv("TMPDIR", QFile::encodeName(temporary.path()));
        const QString folder = BridgeFolder::path();
        QVERIFY2(folder.startsWith(temporary.path() + "/zelvar-virtual-bus-"), qPrintable(folder));

        QVERIFY(QFile::link("/tmp", folder));
        QVERIFY(BridgeFolder::prepare().contains("is a link"));
        QCOMPARE(BridgeFolder::forListing(), QString());
        QVERIFY(QFile::remove(folder));

        QCOMPARE(BridgeFolder::prepare(), QString());
        struct stat info = {};
        QCOMPARE(::lstat(QFile::encodeName(folder), &info), 0);
        QCOMPARE(info.st_mode & 07777, mode_t(0700));
        QCOMPARE(BridgeFolder::forListing(), folder);
    }

private:
    // Not QTRY: its waits sleep 10 ms at a time, longer than the timeouts here.
    static bool runUntil(const std::function<bool()> &done, int ms = 1000)
    {
        QElapsedTimer clock;
        clock.start();
        while (!done() && clock.elapsed() < ms)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 5);
        return done();
    }

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
    Recorder recorder;
};

QTEST_GUILESS_MAIN(TestSerialPortLibrary)
#include "tst_serialportlibrary.moc"
