#include "bussession.h"

#include "broadcastpingtiming.h"
#include "linktiming.h"
#include "packetcodec.h"
#include "pingcollector.h"
#include "serialportbackend.h"

#include <QElapsedTimer>
#include <QSignalBlocker>

bool BusSession::ping(quint8 id, quint8 highestId, std::vector<PingReply> &replies)
{
    replies.clear();
    if (!isOpen() || inFlight || !waiting.empty())
        return false;
    // The answers are collected here; the session's own reading would throw them away.
    const QSignalBlocker quiet(backend.get());
    const QByteArray packet = PacketCodec::ping(id);
    backend->readAll();
    if (!backend->write(packet))
        return false;

    const bool broadcast = id == BroadcastId;
    qint64 waitNs =
        qint64(LinkTiming::transactionTimeoutUs(packet.size(), BroadcastPingTiming::StatusBytes,
                                                baudRate, backend->adapterMarginUs())) *
        1000;
    if (broadcast)
        waitNs += BroadcastPingTiming::answerStartNs(highestId, baudRate);

    PingCollector collector;
    QElapsedTimer clock;
    clock.start();
    for (;;) {
        collector.append(backend->readAll());
        if (!backend->isOpen() || (!broadcast && collector.hasAnswerFrom(id)))
            break;
        const qint64 leftNs = waitNs - clock.nsecsElapsed();
        if (leftNs <= 0)
            break;
        backend->waitForReadyRead(int((leftNs + 999'999) / 1'000'000));
    }
    collector.finish();
    replies = collector.replies();
    return true;
}
