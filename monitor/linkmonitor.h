#pragma once

#include "monitor/transactionring.h"
#include "transactionobserver.h"

#include <QObject>
#include <QString>
#include <QTimer>
#include <memory>
#include <vector>

class SerialPortItem;

// The one listener on the library for the window's link: counts replies, timeouts and
// errors, judges the link's health, keeps the recent traffic and passes every polled
// table on. Lives on the GUI thread; every feature that watches the link listens here.
class LinkMonitor : public QObject, public TransactionObserver
{
    Q_OBJECT

public:
    enum class Health {
        Idle,        // not connected
        Identifying, // connected, waiting for the servo's first answer
        Answering,
        NoAnswer,         // identification got no answer
        StoppedAnswering, // answered, then went quiet
        Lost,             // the port is gone
        Refused,          // the servo refused a request or raised its hardware alert
    };

    struct Target
    {
        QString portName;
        int baudRate = 0;
        quint8 servoId = 0;
        int pollIntervalMs = 500;
        // A simulated bus must never pass for a real servo.
        bool simulated = false;
    };

    static constexpr int ringCapacity = 10000;
    static constexpr qint64 identifyTimeoutMs = 1000;

    explicit LinkMonitor(QObject *parent = nullptr);

    // On Connect: counters, ring and clock start afresh. `nowNs` on the steady clock.
    void start(const Target &target, qint64 nowNs = steadyNowNs());
    void stop();

    void transactionEnded(const BusTransaction &transaction) override;
    void portLost(const QString &reason) override;
    // Re-judges what depends on time passing (no answer, stopped answering, replies/s).
    void evaluate(qint64 nowNs = steadyNowNs());

    bool isRunning() const { return running; }
    const Target &target() const { return current; }
    Health health() const { return state; }
    bool isFailure() const;
    // What the indicator says: the trouble, or how the link is doing.
    QString healthText() const { return stateText; }
    // Port, baud rate, servo, replies/s, timeouts and errors.
    QString summary() const;
    double repliesPerSecond() const { return replyRate; }
    int timeouts() const { return timeoutCount; }
    int errors() const { return errorCount; }
    const TransactionRing &ring() const { return transactions; }

    static qint64 steadyNowNs();
    // Whether `portName` is a simulated bus of the port list: by its name, or as the very
    // terminal a bridge serves when it is opened by path.
    static bool isSimulatedPort(const QString &portName,
                                const std::vector<std::shared_ptr<SerialPortItem>> &ports);

signals:
    void started();
    void stopped();
    void lost(const QString &reason);
    // Each whole-table read handed over to the program: microseconds since Connect and the
    // status packet (n + 11 bytes, register a at byte 9 + a, error byte at 8).
    void tableReplied(qint64 timeUs, const QByteArray &reply);
    void transactionAdded(const TransactionRecord &record);
    void healthChanged();
    void countersChanged();

private:
    void count(const TransactionRecord &record);
    void noteServoError(const BusTransaction &transaction);
    void judge(qint64 nowNs);
    QString failureText(qint64 nowNs) const;
    qint64 quietLimitNs() const;

    TransactionRing transactions{ringCapacity};
    QTimer clock;
    Target current;
    bool running = false;
    qint64 startNs = 0;
    bool answered = false;
    qint64 lastReplyNs = 0;
    QString lostReason;
    QString refusal;
    bool hardwareAlert = false;
    int replyCount = 0;
    int timeoutCount = 0;
    int errorCount = 0;
    double replyRate = 0;
    int rateReplies = 0;
    qint64 rateSinceNs = 0;
    Health state = Health::Idle;
    QString stateText;
};
