#pragma once

#include "busrequest.h"
#include "packetframer.h"
#include "pingreply.h"
#include "transactionobserver.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <deque>
#include <memory>
#include <optional>
#include <vector>

class SerialPortBackend;
struct Packet;

// One port and the transactions on it. The bus is half duplex, so one request is on the
// wire at a time; later ones wait their turn, or ride on the read on the wire when they
// repeat it, and only the reply to the most recent request is handed over, so that a
// caller counting reply bytes stays in step.
// Replies carry no sequence number, so the session keeps the line in step by time: a
// request goes out only once the line has been quiet for a guard, and a reply counts
// only if nothing else arrived with it. Whatever breaks the rule (a timeout, a bad
// frame, stray bytes) lengthens the next guard until any late or repeated reply is over.
class BusSession : public QObject
{
    Q_OBJECT

public:
    explicit BusSession(unsigned char protocolVersion);
    ~BusSession() override;

    QString open(const QString &portName, int baudRate);
    void close();

    // False when no port is open or the instruction could not be sent.
    bool submit(BusRequest request);
    // Like submit(), but returns only once the reply has been handed over or the request
    // has been given up.
    bool submitAndWait(BusRequest request);

    // Pings `id` and returns once its answer is in, or with the broadcast id once servos
    // up to `highestId` have had their time to answer; defined in busping.cpp. False when
    // no port is open, a request is under way or the ping could not be sent.
    bool ping(quint8 id, quint8 highestId, std::vector<PingReply> &replies);

    QByteArray takeHandedOver();
    void discardHandedOver();

    // Not owned; null for none.
    void setObserver(TransactionObserver *observer);

private:
    QString openBackend(const QString &portName, int baudRate);
    bool isOpen() const;
    bool joinInFlight(BusRequest &request);
    void enqueue(BusRequest request);
    void sendNext();
    bool lineIsQuiet();
    qint64 guardLeftNs() const;
    void expireHeldRequests();
    void processIncoming();
    void frameInFlight();
    bool isEcho(const Packet &packet) const;
    bool cameTooSoon() const;
    void accept(const Packet &packet);
    void spoilInFlight();
    void disturbLine(qint64 nowNs);
    void onTimeout();
    void abandonInFlight();
    void onBackendFailed(const QString &reason);
    bool isPending(quint64 sequence) const;
    void report(const BusRequest &request, BusTransaction::Outcome outcome,
                const Packet *reply = nullptr, bool handedOver = false,
                int discardedBytes = 0) const;
    static QByteArray statusPacket(const Packet &packet);
    static QByteArray handoverForm(const BusRequest &request, const Packet &packet);

    const unsigned char protocolVersion;
    std::unique_ptr<SerialPortBackend> backend;
    QString portName;
    int baudRate = 0;
    PacketFramer framer;
    std::deque<BusRequest> waiting;
    std::optional<BusRequest> inFlight;
    QElapsedTimer inFlightClock;
    qint64 inFlightSentAtNs = 0;
    int inFlightBytes = 0;
    int inFlightEchoBytes = 0;
    TransactionObserver *observer = nullptr;
    qint64 inFlightTimeoutNs = 0;
    QTimer timeoutTimer;
    // The line must have been quiet for quietNeededNs since lineActiveAtNs (steady clock)
    // before a request goes out.
    qint64 lineActiveAtNs = 0;
    qint64 quietNeededNs = 0;
    // Expected reply size of the request sent last: what a stray reply most likely is.
    int lastReplyBytes = 0;
    QTimer guardTimer;
    quint64 lastSequence = 0;
    QByteArray handedOver;
    // Why the port was last lost, kept for the next open of that port.
    struct Loss
    {
        QString portName;
        QString reason;
    } lost;
};
