#pragma once

#include "params/writeplanner.h"

#include <QByteArray>
#include <QObject>
#include <QPointer>
#include <functional>
#include <memory>
#include <vector>

class UiScheduler;

// Moves whole control tables over the live connection through the scheduler: the next
// table it reads, and write blocks followed by a table read after the last of them went
// out. A callback gets an empty table when the servo did not answer in time.
class ParameterTransfer : public QObject
{
    Q_OBJECT

public:
    using TableCallback = std::function<void(const QByteArray &table)>;

    ParameterTransfer(std::shared_ptr<UiScheduler> scheduler, int pollingIntervalMs,
                      QObject *parent = nullptr);

    bool busy() const { return bool(waiting); }
    void readTable(TableCallback done);
    void write(const std::vector<WriteBlock> &blocks, TableCallback done);
    // Forgets what it waits for: no callback comes after this.
    void cancel();

private slots:
    void on_tableRead(const QByteArray &reply);

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    void wait(int ticks, int tablesAfterQueue, TableCallback done);
    void finish(const QByteArray &table);

    std::shared_ptr<UiScheduler> scheduler;
    int pollingIntervalMs;
    TableCallback waiting;
    // Table replies still to skip once the queue is empty: a read already on the wire
    // when the writes were queued tells nothing about them.
    int tablesToSkip = 0;
    int timeoutId = 0;
    bool cancelled = false;
};
