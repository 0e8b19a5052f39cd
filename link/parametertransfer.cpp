#include "link/parametertransfer.h"

#include "link/uischeduler.h"
#include "telemetry/telemetrydecoder.h"

#include <QTimer>
#include <QTimerEvent>

namespace {

// Room for a slow reply on top of the ticks a transfer needs.
constexpr int answerSlackMs = 2000;

} // namespace

ParameterTransfer::ParameterTransfer(std::shared_ptr<UiScheduler> scheduler, int pollingIntervalMs,
                                     QObject *parent)
    : QObject(parent)
    , scheduler(std::move(scheduler))
    , pollingIntervalMs(pollingIntervalMs)
{
    connect(this->scheduler.get(), SIGNAL(tableRead(QByteArray)), this,
            SLOT(on_tableRead(QByteArray)));
}

void ParameterTransfer::readTable(TableCallback done)
{
    wait(2, 0, std::move(done));
}

void ParameterTransfer::write(const std::vector<WriteBlock> &blocks, TableCallback done)
{
    for (const WriteBlock &block : blocks)
        scheduler->addQueueRequest(block.address, block.data);
    wait(int(blocks.size()) + 3, 1, std::move(done));
}

void ParameterTransfer::cancel()
{
    cancelled = true;
    killTimer(timeoutId);
    timeoutId = 0;
    waiting = nullptr;
    disconnect(scheduler.get(), nullptr, this, nullptr);
}

void ParameterTransfer::wait(int ticks, int tablesAfterQueue, TableCallback done)
{
    waiting = std::move(done);
    tablesToSkip = tablesAfterQueue;
    timeoutId = startTimer(ticks * pollingIntervalMs + answerSlackMs);
}

void ParameterTransfer::on_tableRead(const QByteArray &reply)
{
    if (!waiting || scheduler->queuedRequests() != 0)
        return;
    if (tablesToSkip > 0) {
        --tablesToSkip;
        return;
    }
    finish(TelemetryDecoder::tableOfReply(reply));
}

void ParameterTransfer::timerEvent(QTimerEvent *event)
{
    if (event->timerId() == timeoutId)
        finish(QByteArray());
}

void ParameterTransfer::finish(const QByteArray &table)
{
    killTimer(timeoutId);
    timeoutId = 0;
    const TableCallback done = std::move(waiting);
    waiting = nullptr;
    // Out of the scheduler's signal: the callback may open a dialog while polling goes on.
    // A transfer cancelled meanwhile calls nothing.
    if (done) {
        QTimer::singleShot(0, this, [this, done, table] {
            if (!cancelled)
                done(table);
        });
    }
}
