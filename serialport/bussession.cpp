#include "bussession.h"

#include "linktiming.h"
#include "packetcodec.h"
#include "portcatalog.h"
#include "serialportbackend.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace {

constexpr unsigned char SupportedProtocol = 2;

qint64 steadyNowNs()
{
    return std::chrono::duration_cast<std::chrono::nanoseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

void appendLe16(QByteArray &bytes, int value)
{
    bytes.append(char(value & 0xFF));
    bytes.append(char((value >> 8) & 0xFF));
}

} // namespace

BusSession::BusSession(unsigned char protocolVersion)
    : protocolVersion(protocolVersion)
{
    timeoutTimer.setSingleShot(true);
    timeoutTimer.setTimerType(Qt::PreciseTimer);
    connect(&timeoutTimer, &QTimer::timeout, this, &BusSession::onTimeout);
    guardTimer.setSingleShot(true);
    guardTimer.setTimerType(Qt::PreciseTimer);
    connect(&guardTimer, &QTimer::timeout, this, &BusSession::sendNext);
}

BusSession::~BusSession()
{
    close();
}

QString BusSession::open(const QString &portName, int baudRate)
{
    close();
    const QString error = openBackend(portName, baudRate);
    // The backend that saw the port go is gone; a reopen that fails usually fails for
    // the same cause (the adapter is still unplugged), so the user hears of it here.
    const QString loss = portName == lost.portName ? lost.reason : QString();
    lost = {};
    return error.isEmpty() || loss.isEmpty() ? error : error + ' ' + loss;
}

QString BusSession::openBackend(const QString &portName, int baudRate)
{
    if (protocolVersion != SupportedProtocol)
        return tr("Cannot open %1: protocol version %2 is not supported.")
            .arg(portName)
            .arg(protocolVersion);
    if (portName.isEmpty())
        return tr("Cannot open the port: no port is chosen.");
    if (baudRate <= 0)
        return tr("Cannot open %1: the baud rate %2 is not supported.").arg(portName).arg(baudRate);

    auto candidate = PortCatalog::createBackend(portName);
    const QString error = candidate->open(baudRate);
    if (!error.isEmpty())
        return error;
    backend = std::move(candidate);
    this->portName = portName;
    this->baudRate = baudRate;
    connect(backend.get(), &SerialPortBackend::readyRead, this, &BusSession::processIncoming);
    connect(backend.get(), &SerialPortBackend::failed, this, &BusSession::onBackendFailed);
    return {};
}

void BusSession::close()
{
    timeoutTimer.stop();
    guardTimer.stop();
    quietNeededNs = 0;
    waiting.clear();
    inFlight.reset();
    framer.clear();
    handedOver.clear();
    if (backend) {
        backend->disconnect(this);
        backend->close();
        backend.reset();
    }
}

bool BusSession::submit(BusRequest request)
{
    if (!isOpen())
        return false;
    const quint64 sequence = request.sequence = ++lastSequence;
    request.submittedAtNs = steadyNowNs();
    if (joinInFlight(request))
        return true;
    enqueue(std::move(request));
    if (!inFlight)
        sendNext();
    // A request whose instruction could not be written has been dropped.
    return isOpen() && isPending(sequence);
}

bool BusSession::submitAndWait(BusRequest request)
{
    if (!submit(std::move(request)))
        return false;
    const quint64 sequence = lastSequence;
    // No event loop runs here, so the waiting does by hand what the timers and the
    // readyRead signal do otherwise. Every request ahead is bounded by its own timeout,
    // and a request held for a quiet line by how long it may be held.
    while (isPending(sequence) && isOpen()) {
        processIncoming();
        if (!isPending(sequence))
            break;
        if (!inFlight) {
            const qint64 guardNs = guardLeftNs();
            if (guardNs > 0)
                backend->waitForReadyRead(int((guardNs + 999999) / 1000000));
            sendNext();
            continue;
        }
        const qint64 leftNs = inFlightTimeoutNs - inFlightClock.nsecsElapsed();
        if (leftNs <= 0) {
            abandonInFlight();
            continue;
        }
        backend->waitForReadyRead(int(std::max<qint64>(1, (leftNs + 999999) / 1000000)));
    }
    return true;
}

QByteArray BusSession::takeHandedOver()
{
    QByteArray bytes;
    bytes.swap(handedOver);
    return bytes;
}

void BusSession::discardHandedOver()
{
    handedOver.clear();
}

bool BusSession::isOpen() const
{
    return backend && backend->isOpen();
}

bool BusSession::joinInFlight(BusRequest &request)
{
    // The scheduler repeats the same read on every tick without waiting for its reply. Were
    // the repeat queued, a wire slower than the ticks would make every reply stale before
    // it arrived, and none would ever be handed over. The read on the wire answers the
    // repeat just as well. Not past a waiting write, whose effect the repeat must see.
    if (!inFlight || !waiting.empty() || !request.supersedes(*inFlight))
        return false;
    report(*inFlight, BusTransaction::Outcome::Superseded);
    inFlight->sequence = request.sequence;
    inFlight->onData = std::move(request.onData);
    return true;
}

void BusSession::enqueue(BusRequest request)
{
    const auto superseded =
        std::remove_if(waiting.begin(), waiting.end(),
                       [&request](const BusRequest &older) { return request.supersedes(older); });
    for (auto it = superseded; it != waiting.end(); ++it)
        report(*it, BusTransaction::Outcome::Superseded);
    waiting.erase(superseded, waiting.end());
    waiting.push_back(std::move(request));
}

void BusSession::sendNext()
{
    while (!inFlight && !waiting.empty() && isOpen()) {
        if (!lineIsQuiet()) {
            expireHeldRequests();
            if (!waiting.empty() && !guardTimer.isActive())
                guardTimer.start(int((guardLeftNs() + 999999) / 1000000));
            return;
        }
        guardTimer.stop();
        BusRequest request = std::move(waiting.front());
        waiting.pop_front();
        framer.clear();
        inFlightSentAtNs = steadyNowNs();
        if (!backend->write(request.packet)) {
            report(request, BusTransaction::Outcome::NotSent);
            continue;
        }
        const int replyBytes = PacketCodec::statusPacketSize(request.replyParameters() - 1);
        const int timeoutUs = LinkTiming::transactionTimeoutUs(
            request.packet.size(), replyBytes, baudRate, backend->adapterMarginUs());
        lastReplyBytes = replyBytes;
        inFlight = std::move(request);
        inFlightTimeoutNs = qint64(timeoutUs) * 1000;
        inFlightClock.start();
        inFlightBytes = 0;
        inFlightEchoBytes = 0;
        timeoutTimer.start((timeoutUs + 999) / 1000);
    }
}

// A guard shorter than a timer can time is waited out here, so that back-to-back
// requests are not held a whole millisecond for a few byte times. The shortest are
// spun out: a sleep that short overshoots by more than it lasts.
bool BusSession::lineIsQuiet()
{
    constexpr qint64 SpinLimitNs = 200'000;
    constexpr qint64 SleepLimitNs = 1'000'000;
    for (;;) {
        // Bytes still unread count as bytes heard now.
        backend->waitForReadyRead(0);
        processIncoming();
        if (!isOpen())
            return false;
        const qint64 leftNs = guardLeftNs();
        if (leftNs <= 0)
            return true;
        if (leftNs > SleepLimitNs)
            return false;
        if (leftNs > SpinLimitNs)
            std::this_thread::sleep_for(std::chrono::nanoseconds(leftNs));
        else
            std::this_thread::yield();
    }
}

qint64 BusSession::guardLeftNs() const
{
    return lineActiveAtNs + quietNeededNs - steadyNowNs();
}

// A line that never goes quiet must not hold requests for ever: each ends with a record.
void BusSession::expireHeldRequests()
{
    constexpr qint64 HoldLimitNs = 1'000'000'000;
    const qint64 now = steadyNowNs();
    while (!waiting.empty() && now - waiting.front().submittedAtNs > HoldLimitNs) {
        report(waiting.front(), BusTransaction::Outcome::NotSent);
        waiting.pop_front();
    }
}

void BusSession::processIncoming()
{
    if (!backend)
        return;
    const QByteArray bytes = backend->readAll();
    if (bytes.isEmpty())
        return;
    const qint64 now = steadyNowNs();
    lineActiveAtNs = now;
    if (!inFlight) {
        // Nobody asked: a late or repeated reply, or noise. Whatever follows it is suspect.
        disturbLine(now);
        return;
    }
    inFlightBytes += bytes.size();
    framer.append(bytes);
    frameInFlight();
}

void BusSession::frameInFlight()
{
    while (inFlight) {
        const auto packet = framer.next();
        if (framer.takeDiscarded() > 0) {
            spoilInFlight();
            return;
        }
        if (!packet)
            return;
        if (isEcho(*packet)) {
            inFlightEchoBytes += inFlight->packet.size();
            continue;
        }
        const BusRequest &request = *inFlight;
        // Another servo's answer, a reply of another shape, bytes right behind the reply
        // or a reply sooner than the wire could bring it: the line is not in step, and
        // this reply may be a stale one.
        if (packet->instruction != Instruction::Status || packet->id != request.id ||
            packet->parameters.size() != request.replyParameters() || framer.bufferedSize() > 0 ||
            cameTooSoon()) {
            spoilInFlight();
            return;
        }
        accept(*packet);
    }
}

// The request and its reply both take their time on the wire; a twentieth of it is left
// for a servo whose baud rate is a little off.
bool BusSession::cameTooSoon() const
{
    if (!backend->keepsWireTime())
        return false;
    const int replyBytes = PacketCodec::statusPacketSize(inFlight->replyParameters() - 1);
    const qint64 wireNs =
        qint64(LinkTiming::wireUs(inFlight->packet.size() + replyBytes, baudRate)) * 1000;
    return steadyNowNs() - inFlightSentAtNs < wireNs * 19 / 20;
}

// Adapters that echo what they send put the request itself before its reply.
bool BusSession::isEcho(const Packet &packet) const
{
    return packet.instruction != Instruction::Status &&
           PacketCodec::encode(packet) == inFlight->packet;
}

void BusSession::accept(const Packet &packet)
{
    timeoutTimer.stop();
    BusRequest done = std::move(*inFlight);
    inFlight.reset();
    framer.clear();
    // Anything heard within the settle guard is a repeat or an echo, and restarts it.
    lineActiveAtNs = steadyNowNs();
    quietNeededNs = qint64(LinkTiming::settleGuardUs(baudRate, backend->adapterLatencyUs())) * 1000;
    const bool current = done.sequence == lastSequence;
    if (current) {
        handedOver.append(handoverForm(done, packet));
        if (done.onData)
            done.onData();
    }
    report(done, BusTransaction::Outcome::Reply, &packet, current);
    if (!inFlight)
        sendNext();
}

void BusSession::spoilInFlight()
{
    timeoutTimer.stop();
    const BusRequest done = std::move(*inFlight);
    inFlight.reset();
    report(done, BusTransaction::Outcome::Damaged, nullptr, false,
           inFlightBytes - inFlightEchoBytes);
    disturbLine(steadyNowNs());
    sendNext();
}

void BusSession::disturbLine(qint64 nowNs)
{
    framer.clear();
    lineActiveAtNs = std::max(lineActiveAtNs, nowNs);
    const int guardUs =
        LinkTiming::recoveryGuardUs(lastReplyBytes, baudRate, backend->adapterMarginUs());
    quietNeededNs = std::max(quietNeededNs, qint64(guardUs) * 1000);
}

void BusSession::onTimeout()
{
    if (!inFlight)
        return;
    // The reply may be waiting unread behind this timer event.
    processIncoming();
    if (!inFlight)
        return;
    const qint64 leftNs = inFlightTimeoutNs - inFlightClock.nsecsElapsed();
    if (leftNs > 0) {
        timeoutTimer.start(int((leftNs + 999999) / 1000000));
        return;
    }
    abandonInFlight();
}

void BusSession::abandonInFlight()
{
    timeoutTimer.stop();
    if (inFlight) {
        const int stray = inFlightBytes - inFlightEchoBytes;
        report(*inFlight,
               stray > 0 ? BusTransaction::Outcome::Damaged : BusTransaction::Outcome::Timeout,
               nullptr, false, stray);
    }
    inFlight.reset();
    // Its reply may still come, late.
    disturbLine(steadyNowNs());
    sendNext();
}

void BusSession::onBackendFailed(const QString &reason)
{
    // The backend has closed itself; later requests fail until the port is opened again.
    lost = {portName, reason};
    timeoutTimer.stop();
    guardTimer.stop();
    if (inFlight)
        report(*inFlight, BusTransaction::Outcome::PortLost);
    for (const BusRequest &request : waiting)
        report(request, BusTransaction::Outcome::PortLost);
    waiting.clear();
    inFlight.reset();
    framer.clear();
    if (observer)
        observer->portLost(reason);
}

bool BusSession::isPending(quint64 sequence) const
{
    if (inFlight && inFlight->sequence == sequence)
        return true;
    return std::any_of(waiting.begin(), waiting.end(),
                       [sequence](const BusRequest &r) { return r.sequence == sequence; });
}

void BusSession::setObserver(TransactionObserver *observer)
{
    this->observer = observer;
}

void BusSession::report(const BusRequest &request, BusTransaction::Outcome outcome,
                        const Packet *reply, bool handedOver, int discardedBytes) const
{
    if (!observer)
        return;
    BusTransaction transaction;
    transaction.instruction = request.packet.size() > PacketCodec::PrefixSize
                                  ? quint8(request.packet.at(PacketCodec::PrefixSize))
                                  : 0;
    transaction.id = request.id;
    transaction.address = request.address;
    transaction.length = request.length;
    transaction.outcome = outcome;
    transaction.handedOver = handedOver;
    transaction.request = request.packet;
    transaction.discardedBytes = discardedBytes;
    const bool onTheWire = inFlight && inFlight->sequence == request.sequence;
    const bool wentOut = outcome != BusTransaction::Outcome::Superseded &&
                         outcome != BusTransaction::Outcome::NotSent &&
                         (outcome != BusTransaction::Outcome::PortLost || onTheWire);
    if (wentOut) {
        transaction.sentAtNs = inFlightSentAtNs;
        transaction.endedAtNs = steadyNowNs();
    }
    if (reply) {
        transaction.error = reply->parameters.isEmpty() ? 0 : quint8(reply->parameters.at(0));
        transaction.reply = statusPacket(*reply);
    }
    observer->transactionEnded(transaction);
}

QByteArray BusSession::statusPacket(const Packet &packet)
{
    QByteArray bytes("\xFF\xFF\xFD\x00", PacketCodec::HeaderSize);
    bytes.append(char(packet.id));
    appendLe16(bytes, packet.parameters.size() + 3);
    bytes.append(char(Instruction::Status));
    bytes.append(packet.parameters);
    appendLe16(bytes, PacketCodec::crc16(bytes));
    return bytes;
}

QByteArray BusSession::handoverForm(const BusRequest &request, const Packet &packet)
{
    const quint8 error = quint8(packet.parameters.at(0));
    if (request.kind != BusRequest::Kind::Read) {
        // The short acknowledgement: FF FF id 02 error checksum.
        QByteArray ack("\xFF\xFF", 2);
        ack.append(char(packet.id));
        ack.append(char(2));
        ack.append(char(error));
        ack.append(char(~(packet.id + 2 + error) & 0xFF));
        return ack;
    }
    // The status packet as the servo meant it, without stuffing: n + 11 bytes.
    return statusPacket(packet);
}
