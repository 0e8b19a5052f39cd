#pragma once

#include "packet.h"

#include <QByteArray>

// Byte-exact Protocol 2.0 encoding: header FF FF FD 00, id, LE16 length,
// instruction, stuffed parameters, CRC-16 low byte first.
class PacketCodec
{
public:
    static constexpr int HeaderSize = 4;
    // Header, id and the two length bytes.
    static constexpr int PrefixSize = 7;
    // Bytes outside the parameters: prefix, instruction and CRC.
    static constexpr int Overhead = PrefixSize + 1 + 2;

    // CRC-16, polynomial 0x8005, MSB first, no final XOR.
    static quint16 crc16(const char *data, int size, quint16 crc = 0);
    static quint16 crc16(const QByteArray &bytes) { return crc16(bytes.constData(), bytes.size()); }

    // FF FF FD becomes FF FF FD FD, and back.
    static QByteArray stuff(const QByteArray &bytes);
    static QByteArray unstuff(const QByteArray &bytes);

    static QByteArray encode(const Packet &packet);

    static QByteArray ping(quint8 id);
    static QByteArray read(quint8 id, quint16 address, quint16 length);
    static QByteArray write(quint8 id, quint16 address, const QByteArray &data);
    static QByteArray reboot(quint8 id);
    static QByteArray factoryReset(quint8 id, quint8 mode);
    static QByteArray status(quint8 id, quint8 error, const QByteArray &parameters = {});

    // Length on the wire of a status packet with `parameterCount` bytes after the
    // error byte, assuming no stuffing is needed (the usual case, and a lower bound).
    static int statusPacketSize(int parameterCount) { return Overhead + 1 + parameterCount; }
};
