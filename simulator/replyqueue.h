#pragma once

#include "simulator/virtualbus.h"

#include <QObject>
#include <QTimer>
#include <functional>

// Replies on their way to the host: each becomes readable at its due time, which a
// single-shot timer in the owner's thread announces, sleeping out at most the last
// 1.2 ms for precision. A reply's first byte comes ahead of the rest, when it has
// crossed the wire, so that a host can hear the line go busy as on a real bus.
class ReplyQueue : public QObject
{
    Q_OBJECT

public:
    explicit ReplyQueue(std::function<qint64()> clock, QObject *parent = nullptr);

    void schedule(const std::vector<BusReply> &replies);
    // Everything due by now, in order of arrival.
    QByteArray takeDue();
    // Nanoseconds until the next reply is due (0 if one is), or -1 when none is pending.
    qint64 nanosecondsToNext() const;
    void clear();

signals:
    void due();

private slots:
    void onTimeout();

private:
    void arm();

    std::function<qint64()> clock;
    std::vector<BusReply> pending;
    // A child, so that whoever watches the event loop can tell whose timer fires.
    QTimer timer{this};
};
