#pragma once

#include "packetcodec.h"
#include "packetframer.h"

#include <QByteArrayList>

// A servo for scripted ports: it answers Protocol 2.0 reads, writes, reboots and
// factory resets addressed to its id from a register table of its own.
class ScriptedServo
{
public:
    explicit ScriptedServo(quint8 id)
        : registers(256, '\0')
        , id(id)
    {}

    // Answer to the bytes just written, for ScriptedPortBackend::setResponder().
    QByteArray respond(const QByteArray &written)
    {
        QByteArray answer;
        framer.append(written);
        while (const auto packet = framer.next()) {
            if (packet->id != id)
                continue;
            const QByteArray &p = packet->parameters;
            instructions.append(char(packet->instruction) + p);
            const int address = p.size() >= 2 ? quint8(p[0]) | (quint8(p[1]) << 8) : 0;
            QByteArray data;
            if (packet->instruction == Instruction::Read)
                data =
                    registers.mid(address, p.size() >= 4 ? quint8(p[2]) | (quint8(p[3]) << 8) : 0);
            else if (packet->instruction == Instruction::Write)
                registers.replace(address, p.size() - 2, p.mid(2));
            answer += PacketCodec::status(id, errorByte, data);
        }
        return answer;
    }

    QByteArray registers;
    quint8 errorByte = 0;
    // Instructions that arrived for this servo, in order.
    QByteArrayList instructions;

private:
    quint8 id;
    PacketFramer framer;
};
