#include "monitor/linkmonitor.h"

#include "monitor/transactiontext.h"

#include "serialportitem.h"

#include <QFileInfo>
#include <QLocale>
#include <algorithm>
#include <chrono>

namespace {

constexpr int evaluateIntervalMs = 250;
constexpr qint64 nsPerMs = 1000000;
constexpr qint64 rateWindowNs = 1000 * nsPerMs;
// Silence for this long, or for this many polls if that is longer, is a servo gone quiet.
constexpr qint64 quietMs = 1000;
constexpr int quietPolls = 5;
constexpr quint8 readInstruction = 0x02;
constexpr quint8 alertBit = 0x80;
// The identification reads the two bytes of the model number; anything longer from
// address 0 is the poll of the whole table.
constexpr quint16 modelNumberLength = 2;

// The user reads "57,600 baud" whatever the desktop's language.
QString baudText(int baudRate)
{
    return QLocale(QLocale::English, QLocale::UnitedStates).toString(baudRate);
}

bool isTablePoll(const BusTransaction &transaction)
{
    return transaction.instruction == readInstruction && transaction.address == 0 &&
           transaction.length > modelNumberLength;
}

} // namespace

LinkMonitor::LinkMonitor(QObject *parent)
    : QObject(parent)
{
    clock.setInterval(evaluateIntervalMs);
    connect(&clock, &QTimer::timeout, this, [this] { evaluate(); });
    stateText = tr("No link");
}

qint64 LinkMonitor::steadyNowNs()
{
    return std::chrono::duration_cast<std::chrono::nanoseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

bool LinkMonitor::isSimulatedPort(const QString &portName,
                                  const std::vector<std::shared_ptr<SerialPortItem>> &ports)
{
    const QString terminal = QFileInfo(portName).canonicalFilePath();
    for (const auto &port : ports) {
        const QString description = port->getDescription();
        const bool simulated = description.contains(QLatin1String("Simulated")) ||
                               description.contains(QLatin1String("Virtual bus"));
        if (!simulated)
            continue;
        if (port->getPortName() == portName ||
            (!terminal.isEmpty() &&
             QFileInfo(port->getSystemLocation()).canonicalFilePath() == terminal))
            return true;
    }
    return false;
}

void LinkMonitor::start(const Target &target, qint64 nowNs)
{
    current = target;
    running = true;
    startNs = nowNs;
    answered = false;
    lastReplyNs = 0;
    lostReason.clear();
    refusal.clear();
    hardwareAlert = false;
    replyCount = timeoutCount = errorCount = 0;
    replyRate = 0;
    rateReplies = 0;
    rateSinceNs = nowNs;
    transactions.clear();
    clock.start();
    emit started();
    judge(nowNs);
    emit countersChanged();
}

void LinkMonitor::stop()
{
    if (!running)
        return;
    running = false;
    clock.stop();
    emit stopped();
    judge(steadyNowNs());
}

void LinkMonitor::transactionEnded(const BusTransaction &transaction)
{
    const qint64 nowNs = transaction.endedAtNs ? transaction.endedAtNs : steadyNowNs();
    TransactionRecord record;
    record.timeUs = (nowNs - startNs) / 1000;
    record.routinePoll = isTablePoll(transaction);
    record.transaction = transaction;

    if (running) {
        count(record);
        if (record.routinePoll && transaction.handedOver &&
            transaction.outcome == BusTransaction::Outcome::Reply)
            emit tableReplied(record.timeUs, transaction.reply);
    }
    transactions.append(record);
    emit transactionAdded(record);
    if (running)
        judge(nowNs);
}

void LinkMonitor::count(const TransactionRecord &record)
{
    const BusTransaction &transaction = record.transaction;
    switch (transaction.outcome) {
    case BusTransaction::Outcome::Reply:
        ++replyCount;
        answered = true;
        lastReplyNs =
            std::max(lastReplyNs, transaction.endedAtNs ? transaction.endedAtNs : steadyNowNs());
        noteServoError(transaction);
        break;
    case BusTransaction::Outcome::Timeout:
        ++timeoutCount;
        break;
    case BusTransaction::Outcome::Damaged:
    case BusTransaction::Outcome::NotSent:
    case BusTransaction::Outcome::PortLost:
        ++errorCount;
        break;
    case BusTransaction::Outcome::Superseded:
        break;
    }
}

void LinkMonitor::noteServoError(const BusTransaction &transaction)
{
    hardwareAlert = transaction.error & alertBit;
    const quint8 number = transaction.error & ~alertBit;
    if (number != 0) {
        ++errorCount;
        const QString words =
            TransactionText::servoError(number, transaction.instruction, transaction.address);
        refusal = transaction.instruction == readInstruction
                      ? tr("Servo %1 reported: %2").arg(transaction.id).arg(words)
                      : tr("Servo %1 refused the %2: %3")
                            .arg(transaction.id)
                            .arg(TransactionText::instruction(transaction.instruction), words);
    } else if (transaction.instruction != readInstruction) {
        // A refusal stays in view until a later command goes through; polls answering
        // in between would otherwise wipe it before anyone could read it.
        refusal.clear();
    }
}

void LinkMonitor::portLost(const QString &reason)
{
    if (!running)
        return;
    lostReason = reason;
    emit lost(reason);
    judge(steadyNowNs());
}

void LinkMonitor::evaluate(qint64 nowNs)
{
    if (!running)
        return;
    if (nowNs - rateSinceNs >= rateWindowNs) {
        replyRate = double(replyCount - rateReplies) * 1e9 / double(nowNs - rateSinceNs);
        rateReplies = replyCount;
        rateSinceNs = nowNs;
    }
    judge(nowNs);
    emit countersChanged();
}

qint64 LinkMonitor::quietLimitNs() const
{
    return std::max<qint64>(quietMs, qint64(quietPolls) * current.pollIntervalMs) * nsPerMs;
}

void LinkMonitor::judge(qint64 nowNs)
{
    Health health = Health::Answering;
    if (!running)
        health = Health::Idle;
    else if (!lostReason.isEmpty())
        health = Health::Lost;
    else if (!answered)
        health =
            nowNs - startNs >= identifyTimeoutMs * nsPerMs ? Health::NoAnswer : Health::Identifying;
    else if (nowNs - lastReplyNs >= quietLimitNs())
        health = Health::StoppedAnswering;
    else if (!refusal.isEmpty() || hardwareAlert)
        health = Health::Refused;

    QString text;
    switch (health) {
    case Health::Idle:
        text = tr("No link");
        break;
    case Health::Identifying:
        text = tr("Identifying servo %1 at %2 baud on %3")
                   .arg(current.servoId)
                   .arg(baudText(current.baudRate), current.portName);
        break;
    case Health::Answering:
        text = summary();
        break;
    default:
        text = failureText(nowNs);
        break;
    }
    if (current.simulated && health != Health::Idle && health != Health::Answering)
        text = tr("Simulated servos: %1").arg(text);

    // The summary's counters change with every reply; the indicator hears of those
    // through countersChanged() a few times a second instead.
    const bool changed = health != state || (health != Health::Answering && text != stateText);
    state = health;
    stateText = text;
    if (changed)
        emit healthChanged();
}

QString LinkMonitor::failureText(qint64 nowNs) const
{
    if (!lostReason.isEmpty())
        return tr("Link lost: %1").arg(lostReason);
    if (!answered)
        return tr("No answer from servo %1 at %2 baud on %3. Check the servo address and baud "
                  "rate, or search the bus.")
            .arg(current.servoId)
            .arg(baudText(current.baudRate), current.portName);
    if (nowNs - lastReplyNs >= quietLimitNs())
        return tr("Servo %1 stopped answering (last reply %2 s ago)")
            .arg(current.servoId)
            .arg(double(nowNs - lastReplyNs) / 1e9, 0, 'f', 1);
    if (!refusal.isEmpty())
        return hardwareAlert ? tr("%1, hardware alert").arg(refusal) : refusal;
    return tr("Servo %1 reports a hardware alert").arg(current.servoId);
}

bool LinkMonitor::isFailure() const
{
    return state == Health::NoAnswer || state == Health::StoppedAnswering ||
           state == Health::Lost || state == Health::Refused;
}

QString LinkMonitor::summary() const
{
    QString text = tr("%1 · %2 baud · servo %3 · %4 replies/s · %5 timeouts · %6 errors")
                       .arg(current.portName, baudText(current.baudRate))
                       .arg(current.servoId)
                       .arg(qRound(replyRate))
                       .arg(timeoutCount)
                       .arg(errorCount);
    return current.simulated ? tr("Simulated servos · %1").arg(text) : text;
}
