#include "simulator/replyqueue.h"

#include <algorithm>
#include <thread>

namespace {

// Timers are good to a millisecond at best; the last stretch before a reply is due is
// slept precisely instead, so a reply is neither early nor late by a timer tick.
constexpr qint64 SleepWindowNs = 2'000'000;

} // namespace

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
    const qint64 wait = nanosecondsToNext();
    if (wait < 0)
        return;
    if (wait > SleepWindowNs) {
        arm();
        return;
    }
    std::this_thread::sleep_for(std::chrono::nanoseconds(wait));
    emit due();
}

void ReplyQueue::arm()
{
    const qint64 wait = nanosecondsToNext();
    if (wait < 0) {
        timer.stop();
        return;
    }
    timer.start(int(std::max<qint64>(0, wait - SleepWindowNs) / 1'000'000));
}
