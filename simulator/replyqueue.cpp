#include "simulator/replyqueue.h"

#include <algorithm>

ReplyQueue::ReplyQueue(std::function<qint64()> clock, QObject *parent)
    : QObject(parent)
    , clock(std::move(clock))
{
    timer.setSingleShot(true);
    timer.setTimerType(Qt::PreciseTimer);
    connect(&timer, SIGNAL(timeout()), this, SLOT(onTimeout()));
}

void ReplyQueue::schedule(const std::vector<BusReply> &replies)
{
    pending.insert(pending.end(), replies.begin(), replies.end());
    std::stable_sort(pending.begin(), pending.end(), [](const BusReply &a, const BusReply &b) {
        return a.dueNanoseconds < b.dueNanoseconds;
    });
    arm();
}

QByteArray ReplyQueue::takeDue()
{
    const qint64 now = clock();
    QByteArray bytes;
    auto firstLater = pending.begin();
    while (firstLater != pending.end() && firstLater->dueNanoseconds <= now) {
        bytes += firstLater->bytes;
        ++firstLater;
    }
    pending.erase(pending.begin(), firstLater);
    arm();
    return bytes;
}

qint64 ReplyQueue::nanosecondsToNext() const
{
    if (pending.empty())
        return -1;
    return std::max<qint64>(0, pending.front().dueNanoseconds - clock());
}

void ReplyQueue::clear()
{
    pending.clear();
    timer.stop();
}

void ReplyQueue::onTimeout()
{
    // Timers may wake a little early; wait for what is not due yet.
    if (nanosecondsToNext() == 0)
        emit due();
    else
        arm();
}

void ReplyQueue::arm()
{
    const qint64 wait = nanosecondsToNext();
    if (wait < 0) {
        timer.stop();
        return;
    }
    // Rounded up: a reply must never be readable before its last byte has arrived.
    timer.start(int((wait + 999'999) / 1'000'000));
}
