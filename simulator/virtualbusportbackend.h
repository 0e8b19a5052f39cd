#pragma once

#include "packetframer.h"
#include "serialportbackend.h"
#include "simulator/replyqueue.h"

#include <memory>

class VirtualBus;

// The in-process virtual bus as a byte pipe: requests go to the shared bus at once,
// replies become readable when their last byte would have arrived on a real wire.
class VirtualBusPortBackend : public SerialPortBackend
{
    Q_OBJECT

public:
    explicit VirtualBusPortBackend(std::shared_ptr<VirtualBus> bus, QObject *parent = nullptr);

    QString open(int baudRate) override;
    void close() override;
    bool isOpen() const override;
    bool write(const QByteArray &bytes) override;
    QByteArray readAll() override;
    bool waitForReadyRead(int msecs) override;

private slots:
    void onRepliesDue();

private:
    std::shared_ptr<VirtualBus> bus;
    ReplyQueue replies;
    PacketFramer requests;
    QByteArray received;
    int baudRate = 0;
    bool opened = false;
};
