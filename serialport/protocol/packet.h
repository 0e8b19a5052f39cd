#pragma once

#include <QByteArray>
#include <QtGlobal>

// One unstuffed Protocol 2.0 packet. For a status packet `instruction` is
// Instruction::Status and the first parameter byte is the servo's error byte.
struct Packet
{
    quint8 id = 0;
    quint8 instruction = 0;
    QByteArray parameters;

    bool operator==(const Packet &other) const
    {
        return id == other.id && instruction == other.instruction && parameters == other.parameters;
    }
};

namespace Instruction {
constexpr quint8 Ping = 0x01;
constexpr quint8 Read = 0x02;
constexpr quint8 Write = 0x03;
constexpr quint8 FactoryReset = 0x06;
constexpr quint8 Reboot = 0x08;
constexpr quint8 Status = 0x55;
} // namespace Instruction

namespace FactoryResetMode {
constexpr quint8 All = 0xFF;
constexpr quint8 KeepId = 0x01;
constexpr quint8 KeepIdAndBaudRate = 0x02;
} // namespace FactoryResetMode

namespace ServoError {
constexpr quint8 None = 0;
constexpr quint8 ResultFail = 1;
constexpr quint8 Instruction = 2;
constexpr quint8 Crc = 3;
constexpr quint8 DataRange = 4;
constexpr quint8 DataLength = 5;
constexpr quint8 DataLimit = 6;
constexpr quint8 Access = 7;
constexpr quint8 AlertBit = 0x80;
} // namespace ServoError

constexpr quint8 BroadcastId = 0xFE;
