#include "packetcodec.h"

#include <array>

namespace {

constexpr std::array<quint16, 256> makeCrcTable()
{
    std::array<quint16, 256> table{};
    for (int i = 0; i < 256; ++i) {
        quint16 crc = quint16(i << 8);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 0x8000) ? quint16((crc << 1) ^ 0x8005) : quint16(crc << 1);
        table[std::size_t(i)] = crc;
    }
    return table;
}

constexpr std::array<quint16, 256> crcTable = makeCrcTable();

void appendLe16(QByteArray &bytes, quint16 value)
{
    bytes.append(char(value & 0xFF));
    bytes.append(char(value >> 8));
}

} // namespace

quint16 PacketCodec::crc16(const char *data, int size, quint16 crc)
{
    for (int i = 0; i < size; ++i) {
        const auto index = quint8((crc >> 8) ^ quint8(data[i]));
        crc = quint16((crc << 8) ^ crcTable[index]);
    }
    return crc;
}

QByteArray PacketCodec::stuff(const QByteArray &bytes)
{
    QByteArray out;
    out.reserve(bytes.size() + bytes.size() / 3);
    for (int i = 0; i < bytes.size(); ++i) {
        out.append(bytes[i]);
        const int n = out.size();
        if (n >= 3 && quint8(out[n - 3]) == 0xFF && quint8(out[n - 2]) == 0xFF &&
            quint8(out[n - 1]) == 0xFD)
            out.append(char(0xFD));
    }
    return out;
}

QByteArray PacketCodec::unstuff(const QByteArray &bytes)
{
    QByteArray out;
    out.reserve(bytes.size());
    for (int i = 0; i < bytes.size(); ++i) {
        out.append(bytes[i]);
        const int n = out.size();
        // Mirror of stuff(): after FF FF FD in the plain stream the next byte is padding.
        if (n >= 3 && quint8(out[n - 3]) == 0xFF && quint8(out[n - 2]) == 0xFF &&
            quint8(out[n - 1]) == 0xFD && i + 1 < bytes.size() && quint8(bytes[i + 1]) == 0xFD)
            ++i;
    }
    return out;
}

QByteArray PacketCodec::encode(const Packet &packet)
{
    QByteArray body;
    body.reserve(packet.parameters.size() + 1);
    body.append(char(packet.instruction));
    body.append(packet.parameters);
    body = stuff(body);

    QByteArray out;
    out.reserve(PrefixSize + body.size() + 2);
    out.append("\xFF\xFF\xFD\x00", HeaderSize);
    out.append(char(packet.id));
    appendLe16(out, quint16(body.size() + 2));
    out.append(body);
    appendLe16(out, crc16(out));
    return out;
}

QByteArray PacketCodec::ping(quint8 id)
{
    return encode({id, Instruction::Ping, {}});
}

QByteArray PacketCodec::read(quint8 id, quint16 address, quint16 length)
{
    QByteArray parameters;
    appendLe16(parameters, address);
    appendLe16(parameters, length);
    return encode({id, Instruction::Read, parameters});
}

QByteArray PacketCodec::write(quint8 id, quint16 address, const QByteArray &data)
{
    QByteArray parameters;
    appendLe16(parameters, address);
    parameters.append(data);
    return encode({id, Instruction::Write, parameters});
}

QByteArray PacketCodec::reboot(quint8 id)
{
    return encode({id, Instruction::Reboot, {}});
}

QByteArray PacketCodec::factoryReset(quint8 id, quint8 mode)
{
    return encode({id, Instruction::FactoryReset, QByteArray(1, char(mode))});
}

QByteArray PacketCodec::status(quint8 id, quint8 error, const QByteArray &parameters)
{
    return encode({id, Instruction::Status, QByteArray(1, char(error)) + parameters});
}
