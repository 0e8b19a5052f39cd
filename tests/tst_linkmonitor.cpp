#include "datacolumns.h"
#include "monitor/linkmonitor.h"
#include "monitor/transactionring.h"
#include "monitor/transactiontablemodel.h"
#include "monitor/transactiontext.h"

#include "serialportitem.h"

#include <QtTest>

namespace {

constexpr qint64 ms = 1000000;
constexpr qint64 t0 = 1000 * ms;
constexpr quint8 read = 0x02;
constexpr quint8 write = 0x03;
constexpr quint8 reboot = 0x08;

using Outcome = BusTransaction::Outcome;

// One thing that happens on the link, `atMs` after Connect.
struct Event
{
    qint64 atMs;
    Outcome outcome;
    quint8 instruction = read;
    quint16 address = 0;
    quint16 length = 118;
    quint8 error = 0;
};

BusTransaction transaction(const Event &event, quint8 id)
{
    BusTransaction t;
    t.instruction = event.instruction;
    t.id = id;
    t.address = event.address;
    t.length = event.length;
    t.outcome = event.outcome;
    t.error = event.error;
    t.handedOver = event.outcome == Outcome::Reply;
    t.sentAtNs = t0 + event.atMs * ms - 2 * ms;
    t.endedAtNs = t0 + event.atMs * ms;
    t.request = QByteArray::fromHex("fffffd00");
    // A status packet: 11 bytes around a read's data, or around nothing.
    if (event.outcome == Outcome::Reply)
        t.reply = QByteArray((event.instruction == read ? event.length : 0) + 11, '\0');
    return t;
}

LinkMonitor::Target target(quint8 id, int pollIntervalMs, bool simulated)
{
    LinkMonitor::Target target;
    target.portName = QStringLiteral("/dev/ttyUSB0");
    target.baudRate = 57600;
    target.servoId = id;
    target.pollIntervalMs = pollIntervalMs;
    target.simulated = simulated;
    return target;
}

const Event identified{50, Outcome::Reply, read, 0, 2};

} // namespace

Q_DECLARE_METATYPE(QVector<Event>)
Q_DECLARE_METATYPE(LinkMonitor::Health)

class TestLinkMonitor : public QObject
{
    Q_OBJECT

private slots:
    void healthFollowsTheLink_data()
    {
        addColumns<quint8, int, bool, QVector<Event>, bool, qint64, LinkMonitor::Health, QString>(
            {"id", "pollMs", "simulated", "events", "lose", "judgedAtMs", "health", "text"});
        using H = LinkMonitor::Health;
        const Event poll{100, Outcome::Reply};
        // clang-format off
        QTest::newRow("identifying") << quint8(42) << 10 << false << QVector<Event>{} << false << qint64(900) << H::Identifying
            << "Identifying servo 42 at 57,600 baud on /dev/ttyUSB0";
        QTest::newRow("no answer to identification") << quint8(42) << 10 << false << QVector<Event>{{5, Outcome::Timeout, read, 0, 2}} << false << qint64(1000) << H::NoAnswer
            << "No answer from servo 42 at 57,600 baud on /dev/ttyUSB0. Check the servo address and baud rate, or search the bus.";
        QTest::newRow("answering") << quint8(3) << 10 << false << QVector<Event>{identified, poll} << false << qint64(1000) << H::Answering
            << "/dev/ttyUSB0 · 57,600 baud · servo 3 · 2 replies/s · 0 timeouts · 0 errors";
        QTest::newRow("silent for a second") << quint8(3) << 10 << false << QVector<Event>{identified, poll, {150, Outcome::Timeout}} << false << qint64(2200) << H::StoppedAnswering
            << "Servo 3 stopped answering (last reply 2.1 s ago)";
        QTest::newRow("five slow polls are not yet silence") << quint8(3) << 500 << false << QVector<Event>{identified, poll} << false << qint64(2500) << H::Answering
            << "/dev/ttyUSB0 · 57,600 baud · servo 3 · 1 replies/s · 0 timeouts · 0 errors";
        QTest::newRow("silent for five slow polls") << quint8(3) << 500 << false << QVector<Event>{identified, poll} << false << qint64(2600) << H::StoppedAnswering
            << "Servo 3 stopped answering (last reply 2.5 s ago)";
        QTest::newRow("port lost") << quint8(3) << 10 << false << QVector<Event>{identified, poll} << true << qint64(200) << H::Lost
            << "Link lost: the adapter was unplugged";
        QTest::newRow("write refused, motor on") << quint8(3) << 10 << false << QVector<Event>{identified, {120, Outcome::Reply, write, 3, 38, 7}, {130, Outcome::Reply}} << false << qint64(200) << H::Refused
            << "Servo 3 refused the write: access error: the motor is enabled";
        QTest::newRow("a later write clears the refusal") << quint8(3) << 10 << false << QVector<Event>{identified, {120, Outcome::Reply, write, 3, 38, 7}, {140, Outcome::Reply, write, 48, 60}} << false << qint64(200) << H::Answering
            << "/dev/ttyUSB0 · 57,600 baud · servo 3 · 0 replies/s · 0 timeouts · 1 errors";
        QTest::newRow("reboot refused, alert") << quint8(3) << 10 << false << QVector<Event>{identified, {120, Outcome::Reply, reboot, 0, 0, 0x82}} << false << qint64(200) << H::Refused
            << "Servo 3 refused the reboot: instruction error, hardware alert";
        QTest::newRow("hardware alert") << quint8(3) << 10 << false << QVector<Event>{identified, {120, Outcome::Reply, read, 0, 118, 0x80}} << false << qint64(200) << H::Refused
            << "Servo 3 reports a hardware alert";
        QTest::newRow("simulated") << quint8(1) << 10 << true << QVector<Event>{identified} << false << qint64(200) << H::Answering
            << "Simulated servos · /dev/ttyUSB0 · 57,600 baud · servo 1 · 0 replies/s · 0 timeouts · 0 errors";
        QTest::newRow("simulated, no answer") << quint8(1) << 10 << true << QVector<Event>{} << false << qint64(1200) << H::NoAnswer
            << "Simulated servos: No answer from servo 1 at 57,600 baud on /dev/ttyUSB0. Check the servo address and baud rate, or search the bus.";
        // clang-format on
    }
    void healthFollowsTheLink()
    {
        QFETCH(quint8, id);
        QFETCH(int, pollMs);
        QFETCH(bool, simulated);
        QFETCH(QVector<Event>, events);
        QFETCH(bool, lose);
        QFETCH(qint64, judgedAtMs);
        QFETCH(LinkMonitor::Health, health);
        QFETCH(QString, text);

        LinkMonitor monitor;
        QSignalSpy lost(&monitor, SIGNAL(lost(QString)));
        monitor.start(target(id, pollMs, simulated), t0);
        for (const Event &event : events)
            monitor.transactionEnded(transaction(event, id));
        if (lose)
            monitor.portLost(QStringLiteral("the adapter was unplugged"));
        monitor.evaluate(t0 + judgedAtMs * ms);
        QCOMPARE(monitor.health(), health);
        QCOMPARE(monitor.healthText(), text);
        QCOMPARE(lost.count(), lose ? 1 : 0);

        monitor.stop();
        QCOMPARE(monitor.health(), LinkMonitor::Health::Idle);
    }

    void countsAndHandsOverPolledTables()
    {
        LinkMonitor monitor;
        QSignalSpy tables(&monitor, SIGNAL(tableReplied(qint64, QByteArray)));
        QSignalSpy started(&monitor, SIGNAL(started()));
        monitor.start(target(3, 10, false), t0);
        QCOMPARE(started.count(), 1);
        const Event events[] = {
            identified,
            {100, Outcome::Reply},
            {110, Outcome::Timeout},
            {120, Outcome::Damaged},
            {125, Outcome::Superseded},
            {130, Outcome::Reply, write, 3, 38, 4},
            {1050, Outcome::Reply},
        };
        for (const Event &event : events)
            monitor.transactionEnded(transaction(event, 3));
        BusTransaction stale = transaction({1060, Outcome::Reply}, 3);
        stale.handedOver = false;
        monitor.transactionEnded(stale);

        // Only the polls the program was handed, with their time since Connect.
        QCOMPARE(tables.count(), 2);
        QCOMPARE(tables.at(0).at(0).toLongLong(), 100000);
        QCOMPARE(tables.at(1).at(0).toLongLong(), 1050000);
        QCOMPARE(tables.at(0).at(1).toByteArray().size(), 118 + 11);
        QCOMPARE(monitor.timeouts(), 1);
        QCOMPARE(monitor.errors(), 2);
        monitor.evaluate(t0 + 1100 * ms);
        QCOMPARE(qRound(monitor.repliesPerSecond()), 5);

        // A new connection starts from nothing.
        monitor.start(target(3, 10, false), t0 + 5000 * ms);
        QCOMPARE(monitor.ring().size(), 0);
        QCOMPARE(monitor.timeouts() + monitor.errors(), 0);
    }

    void servoErrorsInWords_data()
    {
        addColumns<quint8, quint8, quint16, QString>({"error", "instruction", "address", "words"});
        // clang-format off
        QTest::newRow("none") << quint8(0) << write << quint16(3) << "";
        QTest::newRow("non-volatile write, motor on") << quint8(7) << write << quint16(3) << "access error: the motor is enabled";
        QTest::newRow("read-only register") << quint8(7) << write << quint16(70) << "access error: the register cannot be written";
        QTest::newRow("read past the table") << quint8(7) << read << quint16(100) << "access error: the register cannot be read";
        QTest::newRow("range, with alert") << quint8(0x84) << write << quint16(4) << "data range error, hardware alert";
        QTest::newRow("checksum") << quint8(3) << read << quint16(0) << "checksum error";
        QTest::newRow("unknown number") << quint8(9) << read << quint16(0) << "error 9";
        // clang-format on
    }
    void servoErrorsInWords()
    {
        QFETCH(quint8, error);
        QFETCH(quint8, instruction);
        QFETCH(quint16, address);
        QFETCH(QString, words);
        QCOMPARE(TransactionText::servoError(error, instruction, address), words);
    }

    void simulatedPortsAreKnown_data()
    {
        addColumns<QString, bool>({"port", "simulated"});
        QTest::newRow("in-process bus") << "Virtual bus" << true;
        QTest::newRow("bridge by name") << "zelvar-virtual-bus-7" << true;
        QTest::newRow("bridge's terminal by another path") << "link" << true;
        QTest::newRow("adapter") << "ttyUSB0" << false;
    }
    void simulatedPortsAreKnown()
    {
        QFETCH(QString, port);
        QFETCH(bool, simulated);
        QTemporaryDir folder;
        const QString terminal = folder.filePath("pts-4");
        QFile(terminal).open(QIODevice::WriteOnly);
        QFile::link(terminal, folder.filePath("link"));
        const std::vector<std::shared_ptr<SerialPortItem>> ports{
            std::make_shared<SerialPortItem>("ttyUSB0", "FT232R USB UART", "FTDI", "/dev/ttyUSB0",
                                             0x403, 0x6001),
            std::make_shared<SerialPortItem>("Virtual bus", "Simulated Zelvar servos", "", "", 0,
                                             0),
            std::make_shared<SerialPortItem>("zelvar-virtual-bus-7", "Virtual bus bridge", "",
                                             terminal, 0, 0),
        };
        const QString name = port == "link" ? folder.filePath(port) : port;
        QCOMPARE(LinkMonitor::isSimulatedPort(name, ports), simulated);
    }

    // The log's rows follow the ring, which never holds more than its cap.
    void logRowsFollowTheRing()
    {
        LinkMonitor monitor;
        TransactionTableModel model(&monitor);
        monitor.start(target(3, 10, false), t0);
        const Event events[] = {
            {10, Outcome::Reply},
            {20, Outcome::Reply, write, 3, 38, 7},
            {30, Outcome::Timeout},
        };
        for (const Event &event : events)
            monitor.transactionEnded(transaction(event, 3));
        monitor.portLost(QStringLiteral("gone"));
        monitor.transactionEnded(transaction({40, Outcome::PortLost}, 3));
        model.refresh();

        const auto cell = [&model](int row, int column) {
            return model.index(row, column).data().toString();
        };
        const QStringList expected[] = {
            {"10.0", "read", "3", "0", "118", "reply", "2.00"},
            {"20.0", "write", "3", "3", "38", "refused: access error: the motor is enabled",
             "2.00"},
            {"30.0", "read", "3", "0", "118", "timeout", "2.00"},
            {"40.0", "read", "3", "0", "118", "port lost", "2.00"},
        };
        QCOMPARE(model.rowCount(), 4);
        for (int row = 0; row < 4; ++row) {
            QStringList cells;
            for (int column = 0; column < TransactionTableModel::ColumnCount; ++column)
                cells << cell(row, column);
            QCOMPARE(cells, expected[row]);
        }
        QCOMPARE(model.index(0, 0).data(TransactionTableModel::RoutineRole).toString(),
                 QStringLiteral("routine"));
        QVERIFY(model.index(1, 0).data(TransactionTableModel::RoutineRole).toString().isEmpty());

        // Past the cap the oldest rows leave, in the model as in the ring.
        for (int i = 0; i < LinkMonitor::ringCapacity; ++i)
            monitor.transactionEnded(transaction({100 + i, Outcome::Reply}, 3));
        model.refresh();
        QCOMPARE(monitor.ring().size(), LinkMonitor::ringCapacity);
        QCOMPARE(model.rowCount(), LinkMonitor::ringCapacity);
        QCOMPARE(cell(0, 0), QStringLiteral("100.0"));
        QCOMPARE(cell(LinkMonitor::ringCapacity - 1, 0),
                 QString::number(100 + LinkMonitor::ringCapacity - 1) + ".0");
    }

    // A slot keeps every byte whether they fit its own room or not, and a reused slot keeps
    // nothing of what it held before.
    void ringKeepsEveryByte_data()
    {
        addColumns<int, int>({"requestBytes", "replyBytes"});
        QTest::newRow("table poll") << 14 << 129;
        QTest::newRow("no reply") << 14 << 0;
        QTest::newRow("bulk write") << 400 << 11;
        QTest::newRow("long reply") << 14 << 600;
    }

    void ringKeepsEveryByte()
    {
        QFETCH(int, requestBytes);
        QFETCH(int, replyBytes);
        const auto record = [](qint64 timeUs, int requestSize, int replySize, char fill) {
            TransactionRecord r;
            r.timeUs = timeUs;
            r.routinePoll = replySize > 100;
            r.transaction = transaction({timeUs, Outcome::Reply}, quint8(fill));
            r.transaction.request = QByteArray(requestSize, fill);
            r.transaction.reply = QByteArray(replySize, char(fill + 1));
            return r;
        };
        TransactionRing ring(2);
        ring.append(record(1, 500, 0, 'a'));
        ring.append(record(2, 8, 20, 'c'));
        const TransactionRecord expected[] = {record(3, requestBytes, replyBytes, 'e'),
                                              record(4, requestBytes, replyBytes, 'g')};
        for (const TransactionRecord &r : expected)
            ring.append(r);
        QCOMPARE(ring.size(), 2);
        QCOMPARE(ring.appended(), qint64(4));
        for (int i = 0; i < 2; ++i) {
            const TransactionRecord kept = ring.at(i);
            QCOMPARE(kept.timeUs, expected[i].timeUs);
            QCOMPARE(kept.routinePoll, expected[i].routinePoll);
            QCOMPARE(kept.transaction.id, expected[i].transaction.id);
            QCOMPARE(kept.transaction.endedAtNs, expected[i].transaction.endedAtNs);
            QCOMPARE(kept.transaction.request, expected[i].transaction.request);
            QCOMPARE(kept.transaction.reply, expected[i].transaction.reply);
        }
    }
};

QTEST_GUILESS_MAIN(TestLinkMonitor)
#include "tst_linkmonitor.moc"
