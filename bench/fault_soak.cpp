// Polls servo 1 of zelvar-virtual-bus through the library while the bridge spoils a share
// of its replies, one fault kind at a time, and counts what reaches the caller that does
// not answer its request. The servo turns, so its position grows with every fresh reply;
// reads rotate over four addresses of the same length, and every tenth request writes a
// counter to the target position.
// Usage: bench_fault_soak [--polls N] [--percent P] [--faults drop,twice,...]
//                         [--pacing 10,0] [--bridge PATH]
// Pacing 0 sends the next request as soon as the previous one has ended.
// Columns: replies handed over; wrong (content of another request); stale (older than
// the reply before); timeouts (nothing within the request's time); writes whose value
// no later read showed; the median time from a request left without a good reply to
// the next good one; requests a second.
#include "simulator/servoregisters.h"
#include "transactionobserver.h"
#include "zelvarserialportinterface.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <optional>
#include <vector>

namespace {

constexpr quint8 ServoId = 1;
constexpr int BaudRate = 1000000;
// Every window holds the target and the actual position, so each read shows its age.
constexpr int ReadLength = 40;
const int readAddresses[] = {50, 56, 62, 68};
constexpr int WriteEvery = 10;
constexpr int SetupAttempts = 50;

quint32 le32(const QByteArray &bytes, int index)
{
    quint32 value = 0;
    for (int i = 3; i >= 0; --i)
        value = (value << 8) | quint8(bytes.at(index + i));
    return value;
}

bool isDynamic(int address)
{
    return address >= ServoRegister::TargetPosition;
}

struct Counts
{
    int polls = 0;
    int replies = 0;
    int wrong = 0;
    int stale = 0;
    int timeouts = 0;
    int writes = 0;
    int unconfirmed = 0;
    std::vector<double> recoveryMs;
};

// Outcomes of the transactions, so that a request that got nothing can be told apart.
class OutcomeCounter : public TransactionObserver
{
public:
    std::function<void(const BusTransaction &)> onEnded;
    void transactionEnded(const BusTransaction &transaction) override { onEnded(transaction); }
    void portLost(const QString &reason) override
    {
        fprintf(stderr, "port lost: %s\n", qPrintable(reason));
    }
};

class Soak
{
public:
    Soak(ZelvarSerialPortInterface &port, const QByteArray &table, int polls, int pacingMs)
        : port(port)
        , reference(table)
        , total(polls)
        , pacingMs(pacingMs)
    {}

    Counts run()
    {
        OutcomeCounter observer;
        observer.onEnded = [this](const BusTransaction &t) { onEnded(t); };
        port.setTransactionObserver(&observer);
        QTimer ticker;
        ticker.setTimerType(Qt::PreciseTimer);
        QObject::connect(&ticker, &QTimer::timeout, [this] { sendNext(); });
        clock.start();
        if (pacingMs > 0)
            ticker.start(pacingMs);
        else
            sendNext();
        QElapsedTimer idle;
        idle.start();
        while (counts.polls < total || pending) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 5);
            if (counts.polls >= total)
                ticker.stop();
            // A request whose end nobody reported (it was never sent) ends the run.
            if (idle.elapsed() > 5000)
                break;
            if (pending)
                idle.restart();
        }
        ticker.stop();
        port.setTransactionObserver(nullptr);
        for (const auto &[value, seen] : written)
            counts.unconfirmed += seen ? 0 : 1;
        return counts;
    }

private:
    struct Request
    {
        int index = 0;
        bool write = false;
        int address = 0;
    };

    void sendNext()
    {
        if (counts.polls >= total)
            return;
        Request request{counts.polls++, false, 0};
        // Mid-cycle, so that the last write is read back too.
        request.write = request.index % WriteEvery == WriteEvery / 2;
        ++pending;
        bool sent = false;
        if (request.write) {
            ++counts.writes;
            const quint32 value = ++counter;
            written.push_back({value, false});
            QByteArray data;
            for (int i = 0; i < 4; ++i)
                data.append(char((value >> (8 * i)) & 0xFF));
            request.address = ServoRegister::TargetPosition;
            sent = port.writeData(ServoId, quint8(request.address), data,
                                  [this, request] { onReply(request); });
        } else {
            request.address = readAddresses[(request.index / WriteEvery + request.index) % 4];
            sent = port.readData(ServoId, quint8(request.address), ReadLength,
                                 [this, request] { onReply(request); });
        }
        if (!sent) {
            --pending;
            failed();
        }
    }

    void onReply(const Request &request)
    {
        const QByteArray reply = port.readPendingSerialData();
        port.cleanUp();
        ++counts.replies;
        handed = true;
        if (request.write || judge(request, reply))
            recovered();
        else
            failed();
    }

    // False for content that is not the answer to `request`, or older than the last.
    bool judge(const Request &request, const QByteArray &reply)
    {
        if (reply.size() != ReadLength + 11) {
            ++counts.wrong;
            return false;
        }
        const QByteArray data = reply.mid(9, ReadLength);
        for (int i = 0; i < ReadLength; ++i) {
            const int address = request.address + i;
            if (!isDynamic(address) && data.at(i) != reference.at(address)) {
                ++counts.wrong;
                return false;
            }
        }
        const quint32 target = le32(data, ServoRegister::TargetPosition - request.address);
        const qint32 position = qint32(le32(data, ServoRegister::ActualPosition - request.address));
        const bool known =
            target == 0 || std::any_of(written.begin(), written.end(),
                                       [target](const auto &w) { return w.first == target; });
        if (!known) {
            ++counts.wrong;
            return false;
        }
        if ((lastPosition && position < *lastPosition) || target < lastTarget) {
            ++counts.stale;
            return false;
        }
        lastPosition = position;
        lastTarget = target;
        for (auto &w : written)
            w.second = w.second || w.first == target;
        return true;
    }

    void onEnded(const BusTransaction &transaction)
    {
        // Told after the handover, if there was one.
        const bool answered = handed;
        handed = false;
        pending = std::max(0, pending - 1);
        if (transaction.outcome == BusTransaction::Outcome::Timeout)
            ++counts.timeouts;
        if (!answered)
            failed();
        if (pacingMs == 0)
            QTimer::singleShot(0, [this] { sendNext(); });
    }

    void failed()
    {
        if (!failingSinceNs)
            failingSinceNs = clock.nsecsElapsed();
    }

    void recovered()
    {
        if (failingSinceNs)
            counts.recoveryMs.push_back((clock.nsecsElapsed() - *failingSinceNs) / 1e6);
        failingSinceNs.reset();
    }

    ZelvarSerialPortInterface &port;
    const QByteArray reference;
    const int total;
    const int pacingMs;
    Counts counts;
    QElapsedTimer clock;
    int pending = 0;
    bool handed = false;
    quint32 counter = 0;
    std::vector<std::pair<quint32, bool>> written;
    std::optional<qint32> lastPosition;
    quint32 lastTarget = 0;
    std::optional<qint64> failingSinceNs;
};

// One request, retried until it is answered: the set-up runs on the spoiled line too.
QByteArray settle(ZelvarSerialPortInterface &port, bool write, quint8 address,
                  const QByteArray &data)
{
    for (int attempt = 0; attempt < SetupAttempts; ++attempt) {
        QByteArray reply;
        const auto collect = [&] { reply += port.readPendingSerialData(); };
        const bool sent = write ? port.writeData(ServoId, address, data, collect)
                                : port.readData(ServoId, address, quint8(data.size()), collect);
        QElapsedTimer clock;
        clock.start();
        while (sent && reply.isEmpty() && clock.elapsed() < 100)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 5);
        port.cleanUp();
        if (!reply.isEmpty())
            return reply;
    }
    return {};
}

// The servo turns in wheel mode; returns its table, or empty when it did not answer.
QByteArray prepare(ZelvarSerialPortInterface &port)
{
    settle(port, true, ServoRegister::TargetPosition, QByteArray(4, '\0'));
    settle(port, true, ServoRegister::TargetVelocity, QByteArray("\xD0\x07", 2));
    settle(port, true, ServoRegister::ControlEnable, QByteArray("\x01", 1));
    const QByteArray reply = settle(port, false, 0, QByteArray(ServoRegister::TableSize, '\0'));
    return reply.size() == ServoRegister::TableSize + 11 ? reply.mid(9, ServoRegister::TableSize)
                                                         : QByteArray();
}

double median(std::vector<double> values)
{
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

void runRow(const QString &bridgePath, const QString &fault, double percent, int pacingMs,
            int polls)
{
    const QString name = QString("soak-%1").arg(QCoreApplication::applicationPid());
    QStringList arguments{"--name", name};
    if (fault != "none")
        arguments << "--fault" << QString("%1:%2:%3%").arg(ServoId).arg(fault).arg(percent);
    QProcess bridge;
    bridge.setStandardErrorFile(QProcess::nullDevice());
    bridge.start(bridgePath, arguments);
    if (!bridge.waitForReadyRead(10000)) {
        printf("zelvar-virtual-bus did not start: %s\n", qPrintable(bridgePath));
        return;
    }
    const QString label = QString("%1 %2").arg(fault, pacingMs ? QString("%1 ms").arg(pacingMs)
                                                               : QString("back-to-back"));
    ZelvarSerialPortInterface port(nullptr, 2);
    if (const QString error = port.openSerialPort(name, BaudRate); !error.isEmpty()) {
        printf("%-20s %s\n", qPrintable(label), qPrintable(error));
    } else if (const QByteArray table = prepare(port); table.isEmpty()) {
        printf("%-20s servo 1 did not answer\n", qPrintable(label));
    } else {
        QElapsedTimer clock;
        clock.start();
        const Counts c = Soak(port, table, polls, pacingMs).run();
        const double seconds = clock.nsecsElapsed() / 1e9;
        printf("%-20s %6d %7d %5d %5d %8d %6d/%-6d %9.1f %8.0f\n", qPrintable(label), c.polls,
               c.replies, c.wrong, c.stale, c.timeouts, c.unconfirmed, c.writes,
               median(c.recoveryMs), c.polls / seconds);
        fflush(stdout);
    }
    port.closeSerialPort();
    bridge.terminate();
    bridge.waitForFinished(10000);
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    const QCommandLineOption polls("polls", "Requests per row.", "N", "10000");
    const QCommandLineOption percent("percent", "Share of replies spoiled.", "P", "5");
    const QCommandLineOption faults("faults", "Fault kinds, one row each.", "LIST",
                                    "none,drop,corrupt,truncate,garbage,late,twice");
    const QCommandLineOption pacing("pacing", "Milliseconds between requests; 0 back-to-back.",
                                    "LIST", "10,0");
    const QCommandLineOption bridge("bridge", "The bridge program.", "PATH",
                                    QCoreApplication::applicationDirPath() +
                                        "/../simulator/zelvar-virtual-bus");
    parser.addOptions({polls, percent, faults, pacing, bridge});
    parser.process(application);

    // The bridge lists itself in a private runtime folder, which the library here scans too.
    const QTemporaryDir runtime;
    if (!runtime.isValid())
        return 1;
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtime.path()));

    printf("%-20s %6s %7s %5s %5s %8s %13s %9s %8s\n", "fault, pacing", "polls", "replies", "wrong",
           "stale", "timeouts", "unconfirmed", "recovery", "polls/s");
    printf("%-20s %6s %7s %5s %5s %8s %13s %9s %8s\n", "", "", "", "", "", "", "writes",
           "median ms", "");
    for (const QString &ms : parser.value(pacing).split(',')) {
        for (const QString &fault : parser.value(faults).split(','))
            runRow(parser.value(bridge), fault, parser.value(percent).toDouble(), ms.toInt(),
                   parser.value(polls).toInt());
    }
    return 0;
}
