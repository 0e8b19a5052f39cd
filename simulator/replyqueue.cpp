#include "simulator/replyqueue.h"

#include <algorithm>
#include <thread>

namespace {

// Timers count whole milliseconds and fire a little late, so the last stretch before a
// reply is due is slept instead. It blocks the owner's thread, so it is kept to what a
// timer rounded up to the millisecond leaves, plus its usual lateness.
constexpr qint64 SleepWindowNs = 1'200'000;
constexpr qint64 MillisecondNs = 1'000'000;

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
    for (const BusReply &reply : replies) {
        const bool early = reply.bytes.size() > 1 && reply.firstByteNanoseconds > 0 &&
                           reply.firstByteNanoseconds < reply.dueNanoseconds;
        if (early) {
            pending.push_back({reply.bytes.left(1), reply.firstByteNanoseconds});
            pending.push_back({reply.bytes.mid(1), reply.dueNanoseconds});
        } else {
            pending.push_back(reply);
        }
    }
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
    // Rounded up: a timer that fired before the window would only be armed again.
    const qint64 untilWindow = std::max<qint64>(0, wait - SleepWindowNs);
    timer.start(int((untilWindow + MillisecondNs - 1) / MillisecondNs));
}
