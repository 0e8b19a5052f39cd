#pragma once

#include "link/queuerequest.h"

#include <QByteArray>
#include <QObject>
#include <cstdint>
#include <memory>
#include <vector>

class SerialHelper;

// The clock of a live connection: every tick sends one request, the oldest queued write
// or else a read of the whole register table, whose reply feeds every bound display, the
// register view and the status boxes.
class UiScheduler : public QObject
{
    Q_OBJECT

public:
    // Marks the walk's end: the cursor wraps here.
    static constexpr uint8_t pollCursorEnd = 120;

    UiScheduler(uint8_t servoId, std::shared_ptr<SerialHelper> serialHelper);

    // The polling timer; the main window starts and kills it on this object itself.
    int timerId = 0;

    uint8_t currentPollCursor() const { return pollCursor; }
    size_t queuedRequests() const { return queue.size(); }

    // Cuts one read reply into registers and hands each value on.
    void groupCallback(const QByteArray &reply);

    // The servo to poll and write to from now on.
    void setServoId(uint8_t id) { servoId = id; }

signals:
    // A write just sent gives the servo another id or (when baudRate is not 0) another
    // baud rate, which it takes once it has answered.
    void servoMoving(int id, int baudRate);
    // Each read reply of the whole table, after the bound displays have taken it.
    void tableRead(const QByteArray &reply);

public slots:
    void addQueueRequest(uint8_t address, const QByteArray &data);
    void startScheduler(int pollingInterval);
    void stopScheduler();

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    void sendFirstQueued();
    void poll();
    void followMove(const QueueRequest &write);
    QByteArray lastRegisters(uint8_t address, int length) const;

    uint8_t servoId;
    uint8_t pollCursor = 0;
    std::shared_ptr<SerialHelper> serialHelper;
    std::vector<std::shared_ptr<QueueRequest>> queue;
    // The last poll reply: a volatile save rewrites the registers it does not edit with these.
    QByteArray lastReply;
};
