#pragma once

#include "zelvarserialport_global.h"

#include <QByteArray>
#include <QString>

// What became of one request on the bus, as the library saw it.
struct ZELVAR_SERIALPORT_EXPORT BusTransaction
{
    enum class Outcome {
        Reply,   // a status packet answered it; `error` may still be non-zero
        Timeout, // nothing arrived within its time
        // Bytes arrived within its time that were not its reply alone: a frame that failed
        // its CRC or framing, another frame, or bytes before, inside or right after the
        // reply. Nothing is handed over, since the line was out of step.
        Damaged,
        Superseded, // a newer identical read took its place before its reply came
        NotSent,    // the port did not take the bytes, or the line never went quiet
        PortLost,   // the port went while it was waiting or on the wire
    };

    quint8 instruction = 0;
    quint8 id = 0;
    quint16 address = 0;
    quint16 length = 0; // bytes read, or bytes written
    Outcome outcome = Outcome::Timeout;
    quint8 error = 0; // the status packet's error byte
    // Only the reply to the newest request reaches the caller.
    bool handedOver = false;
    // std::chrono::steady_clock, in nanoseconds; 0 when it never went out.
    qint64 sentAtNs = 0;
    qint64 endedAtNs = 0;
    QByteArray request;
    QByteArray reply; // the status packet, unstuffed; empty when none came
    // Bytes that arrived within it and were neither its reply nor an echo of it.
    int discardedBytes = 0;
};

// Told of every transaction once it has ended, on the thread that drives the port, after
// its reply (if any) has been handed over. It must not call back into the library.
class ZELVAR_SERIALPORT_EXPORT TransactionObserver
{
public:
    virtual ~TransactionObserver();

    virtual void transactionEnded(const BusTransaction &transaction) = 0;
    // The port is gone (adapter unplugged, bridge ended); `reason` is for the user.
    virtual void portLost(const QString &reason) = 0;
};
