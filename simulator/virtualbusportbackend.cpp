#include "simulator/virtualbusportbackend.h"

#include "packetcodec.h"
#include "simulator/virtualbus.h"

#include <thread>

VirtualBusPortBackend::VirtualBusPortBackend(std::shared_ptr<VirtualBus> bus, QObject *parent)
    : SerialPortBackend(parent)
    , bus(bus)
    , replies([bus] { return bus->now(); })
{
    connect(&replies, SIGNAL(due()), this, SLOT(onRepliesDue()));
}

// Any rate opens, as with a real adapter; only servos at that rate will answer.
QString VirtualBusPortBackend::open(int baudRate)
{
    this->baudRate = baudRate;
    opened = true;
    return {};
}

void VirtualBusPortBackend::close()
{
    opened = false;
    replies.clear();
    requests.clear();
    received.clear();
}

bool VirtualBusPortBackend::isOpen() const
{
    return opened;
}

bool VirtualBusPortBackend::write(const QByteArray &bytes)
{
    if (!opened)
        return false;
    requests.append(bytes);
    while (const auto request = requests.next())
        replies.schedule(bus->transfer(*request, PacketCodec::encode(*request).size(), baudRate));
    return true;
}

QByteArray VirtualBusPortBackend::readAll()
{
    received += replies.takeDue();
    QByteArray bytes;
    bytes.swap(received);
    return bytes;
}

// Sleeps like a blocking read on a real port would; the signal is left to the timer
// so that a caller that waits is not also called back in the middle of its wait.
bool VirtualBusPortBackend::waitForReadyRead(int msecs)
{
    received += replies.takeDue();
    if (!received.isEmpty())
        return true;
    const qint64 budget = qint64(std::max(0, msecs)) * 1'000'000;
    const qint64 next = replies.nanosecondsToNext();
    const bool arrives = opened && next >= 0 && next <= budget;
    std::this_thread::sleep_for(std::chrono::nanoseconds(arrives ? next : budget));
    received += replies.takeDue();
    return !received.isEmpty();
}

void VirtualBusPortBackend::onRepliesDue()
{
    received += replies.takeDue();
    if (!received.isEmpty())
        emit readyRead();
}
