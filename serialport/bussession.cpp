#include "bussession.h"

#include "linktiming.h"
#include "packetcodec.h"
#include "portcatalog.h"
#include "serialportbackend.h"

#include <algorithm>

namespace {

constexpr unsigned char SupportedProtocol = 2;

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
    // No event loop runs here, so the waiting does by hand what the timer and the
    // readyRead signal do otherwise. Every request ahead is bounded by its own timeout.
    while (isPending(sequence) && isOpen()) {
        processIncoming();
        if (!isPending(sequence) || !inFlight)
            break;
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
    inFlight->sequence = request.sequence;
    inFlight->onData = std::move(request.onData);
    return true;
}

void BusSession::enqueue(BusRequest request)
{
    waiting.erase(
        std::remove_if(waiting.begin(), waiting.end(),
                       [&request](const BusRequest &older) { return request.supersedes(older); }),
        waiting.end());
    waiting.push_back(std::move(request));
}

void BusSession::sendNext()
{
    while (!inFlight && !waiting.empty() && isOpen()) {
        BusRequest request = std::move(waiting.front());
        waiting.pop_front();
        // Whatever arrived before this request went out cannot be its reply.
        backend->readAll();
        framer.clear();
        if (!backend->write(request.packet))
            continue;
        const int replyBytes = PacketCodec::statusPacketSize(request.replyParameters() - 1);
        const int timeoutUs = LinkTiming::transactionTimeoutUs(
            request.packet.size(), replyBytes, baudRate, backend->adapterMarginUs());
        inFlight = std::move(request);
        inFlightTimeoutNs = qint64(timeoutUs) * 1000;
        inFlightClock.start();
        timeoutTimer.start((timeoutUs + 999) / 1000);
    }
}

void BusSession::processIncoming()
{
    if (!backend)
        return;
    const QByteArray bytes = backend->readAll();
    if (!inFlight)
        return;
    framer.append(bytes);
    while (inFlight) {
        const auto packet = framer.next();
        if (!packet)
            break;
        accept(*packet);
    }
}

void BusSession::accept(const Packet &packet)
{
    const BusRequest &request = *inFlight;
    // Anything else is an echo, another servo's answer or a stale reply: consumed, dropped.
    if (packet.instruction != Instruction::Status || packet.id != request.id ||
        packet.parameters.size() != request.replyParameters())
        return;

    timeoutTimer.stop();
    BusRequest done = std::move(*inFlight);
    inFlight.reset();
    framer.clear();
    if (done.sequence == lastSequence) {
        handedOver.append(handoverForm(done, packet));
        if (done.onData)
            done.onData();
    }
    if (!inFlight)
        sendNext();
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
    inFlight.reset();
    framer.clear();
    sendNext();
}

void BusSession::onBackendFailed(const QString &reason)
{
    // The backend has closed itself; later requests fail until the port is opened again.
    lost = {portName, reason};
    timeoutTimer.stop();
    waiting.clear();
    inFlight.reset();
    framer.clear();
}

bool BusSession::isPending(quint64 sequence) const
{
    if (inFlight && inFlight->sequence == sequence)
        return true;
    return std::any_of(waiting.begin(), waiting.end(),
                       [sequence](const BusRequest &r) { return r.sequence == sequence; });
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
    QByteArray reply("\xFF\xFF\xFD\x00", PacketCodec::HeaderSize);
    reply.append(char(packet.id));
    appendLe16(reply, packet.parameters.size() + 3);
    reply.append(char(Instruction::Status));
    reply.append(packet.parameters);
    appendLe16(reply, PacketCodec::crc16(reply));
    return reply;
}
