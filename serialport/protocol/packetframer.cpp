#include "packetframer.h"

#include "packetcodec.h"

namespace {

bool isHeaderAt(const QByteArray &buffer, int index)
{
    return quint8(buffer[index]) == 0xFF && quint8(buffer[index + 1]) == 0xFF &&
           quint8(buffer[index + 2]) == 0xFD && quint8(buffer[index + 3]) == 0x00;
}

quint16 le16At(const QByteArray &buffer, int index)
{
    return quint16(quint8(buffer[index]) | (quint8(buffer[index + 1]) << 8));
}

// Length of the longest tail of `buffer` that could still grow into a header.
int partialHeaderTail(const QByteArray &buffer)
{
    static const QByteArray header("\xFF\xFF\xFD\x00", PacketCodec::HeaderSize);
    for (int keep = qMin(PacketCodec::HeaderSize - 1, buffer.size()); keep > 0; --keep) {
        if (buffer.endsWith(header.left(keep)))
            return keep;
    }
    return 0;
}

} // namespace

void PacketFramer::append(const QByteArray &bytes)
{
    buffer.append(bytes);
    if (buffer.size() > BufferCap)
        discard(buffer.size() - BufferCap);
}

std::optional<Packet> PacketFramer::next()
{
    for (;;) {
        // Drop everything before the first possible header start.
        const int start = nextHeaderFrom(0);
        discard(start);
        if (buffer.size() < PacketCodec::PrefixSize)
            return std::nullopt;

        switch (checkPacketAt(0)) {
        case Check::Invalid:
            discard(1);
            continue;
        case Check::Incomplete:
            // A corrupt length can make a header claim more than will ever come; a whole
            // packet behind it shows that the claim was false.
            if (!completePacketAfterStart())
                return std::nullopt;
            discard(1);
            continue;
        case Check::Valid:
            break;
        }
        const int total = PacketCodec::PrefixSize + le16At(buffer, 5);
        const QByteArray body =
            PacketCodec::unstuff(buffer.mid(PacketCodec::PrefixSize, total - 9));
        const quint8 id = quint8(buffer[4]);
        buffer.remove(0, total);
        return Packet{id, quint8(body[0]), body.mid(1)};
    }
}

PacketFramer::Check PacketFramer::checkPacketAt(int index) const
{
    if (buffer.size() - index < PacketCodec::PrefixSize)
        return Check::Incomplete;
    const quint8 id = quint8(buffer[index + 4]);
    const int length = le16At(buffer, index + 5);
    // No servo has the id 0xFF; ours take ids up to 253 (0xFD), which must be heard.
    if (id == 0xFF || length < 3 || length > MaxLengthField)
        return Check::Invalid;
    const int total = PacketCodec::PrefixSize + length;
    if (buffer.size() - index < total)
        return Check::Incomplete;
    const quint16 expected = le16At(buffer, index + total - 2);
    if (PacketCodec::crc16(buffer.constData() + index, total - 2) != expected)
        return Check::Invalid;
    // The CRC covers such a body, but no sender that stuffs would produce it.
    if (hasUnstuffedHeader(index + PacketCodec::PrefixSize, index + total - 2))
        return Check::Invalid;
    return Check::Valid;
}

int PacketFramer::nextHeaderFrom(int index) const
{
    while (index + PacketCodec::HeaderSize <= buffer.size() && !isHeaderAt(buffer, index))
        ++index;
    if (index + PacketCodec::HeaderSize > buffer.size())
        index = qMax(index, buffer.size() - partialHeaderTail(buffer));
    return index;
}

bool PacketFramer::completePacketAfterStart() const
{
    for (int index = nextHeaderFrom(1); index + PacketCodec::PrefixSize <= buffer.size();
         index = nextHeaderFrom(index + 1)) {
        if (checkPacketAt(index) == Check::Valid)
            return true;
    }
    return false;
}

// FF FF FD in [from, to) not followed by the stuffing FD.
bool PacketFramer::hasUnstuffedHeader(int from, int to) const
{
    for (int i = from; i + 2 < to; ++i) {
        if (quint8(buffer[i]) == 0xFF && quint8(buffer[i + 1]) == 0xFF &&
            quint8(buffer[i + 2]) == 0xFD) {
            if (i + 3 >= to || quint8(buffer[i + 3]) != 0xFD)
                return true;
            i += 3;
        }
    }
    return false;
}

void PacketFramer::clear()
{
    buffer.clear();
}

void PacketFramer::discard(int count)
{
    if (count > 0) {
        buffer.remove(0, count);
        discarded += count;
    }
}
