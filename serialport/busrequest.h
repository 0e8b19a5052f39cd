#pragma once

#include <QByteArray>
#include <QtGlobal>
#include <functional>

// One instruction waiting for, or on, the wire, with what its reply must look like.
struct BusRequest
{
    enum class Kind { Read, Write, Reboot, Reset };

    Kind kind = Kind::Read;
    quint8 id = 0;
    quint16 address = 0;
    quint16 length = 0;
    QByteArray packet;
    std::function<void()> onData;
    quint64 sequence = 0;
    // std::chrono::steady_clock, when it was submitted.
    qint64 submittedAtNs = 0;

    // Parameters of the expected status packet, the error byte included.
    int replyParameters() const { return kind == Kind::Read ? 1 + length : 1; }

    // A newer identical read makes an older one pointless: reads change nothing.
    bool supersedes(const BusRequest &older) const
    {
        return kind == Kind::Read && older.kind == Kind::Read && id == older.id &&
               address == older.address && length == older.length;
    }
};
