#pragma once

#include "packet.h"

#include <QByteArray>
#include <optional>
#include <utility>

// Cuts a byte stream into whole, CRC-checked, unstuffed packets. It owns no port:
// feed it whatever arrived and take packets out until it has none.
class PacketFramer
{
public:
    // Largest length field accepted: a status packet for a 255-byte read, fully stuffed.
    static constexpr int MaxLengthField = 512;
    // Anything beyond this is stale; the oldest bytes go first.
    static constexpr int BufferCap = 4096;

    void append(const QByteArray &bytes);
    std::optional<Packet> next();
    void clear();

    int bufferedSize() const { return buffer.size(); }
    // Bytes dropped as no part of a packet since the last call.
    int takeDiscarded() { return std::exchange(discarded, 0); }

private:
    enum class Check { Valid, Invalid, Incomplete };

    Check checkPacketAt(int index) const;
    int nextHeaderFrom(int index) const;
    bool completePacketAfterStart() const;
    bool hasUnstuffedHeader(int from, int to) const;
    void discard(int count);

    QByteArray buffer;
    int discarded = 0;
};
