#pragma once

#include "packetframer.h"
#include "simulator/replyqueue.h"

#include <QObject>
#include <memory>

class PseudoTerminal;
class QSocketNotifier;
class QTimer;
class VirtualBus;

// Serves a virtual bus on a pseudo-terminal: requests written by the program are
// answered by the servos at the rate set on the terminal, paced like a real wire.
class PtyBridge : public QObject
{
    Q_OBJECT

public:
    PtyBridge(PseudoTerminal &terminal, std::shared_ptr<VirtualBus> bus, QObject *parent = nullptr);

private slots:
    void onReadable();
    void onRepliesDue();
    void resume();

private:
    PseudoTerminal &terminal;
    std::shared_ptr<VirtualBus> bus;
    PacketFramer requests;
    ReplyQueue replies;
    QSocketNotifier *notifier;
    QTimer *retry;
};
