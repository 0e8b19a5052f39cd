#include "packetframer.h"

#include "packetcodec.h"

namespace {

bool isHeaderAt(const QByteArray &buffer, int index)
{
    return quint8(buffer[index]) == 0xFF && quint8(buffer[index + 1]) == 0xFF
           && quint8(buffer[index + 2]) == 0xFD && quint8(buffer[index + 3]) == 0x00;
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
        int start = 0;
        while (start + PacketCodec::HeaderSize <= buffer.size() && !isHeaderAt(buffer, start))
            ++start;
        if (start + PacketCodec::HeaderSize > buffer.size())
            start = buffer.size() - partialHeaderTail(buffer);
        discard(start);
        if (buffer.size() < PacketCodec::PrefixSize)
            return std::nullopt;

        const quint8 id = quint8(buffer[4]);
        const int length = le16At(buffer, 5);
        // 0xFF and 0xFD can never be ids: they would make the header ambiguous.
        if (id == 0xFF || id == 0xFD || length < 3 || length > MaxLengthField) {
            discard(1);
            continue;
        }
        const int total = PacketCodec::PrefixSize + length;
        if (buffer.size() < total)
            return std::nullopt;

        const quint16 expected = le16At(buffer, total - 2);
        if (PacketCodec::crc16(buffer.constData(), total - 2) != expected) {
            discard(1);
            continue;
        }
        const QByteArray body =
            PacketCodec::unstuff(buffer.mid(PacketCodec::PrefixSize, length - 2));
        buffer.remove(0, total);
        return Packet{id, quint8(body[0]), body.mid(1)};
    }
}

void PacketFramer::clear()
{
    discarded += buffer.size();
    buffer.clear();
}

void PacketFramer::discard(int count)
{
    if (count <= 0)
        return;
    discarded += count;
    buffer.remove(0, count);
}
