#include "scriptedservo.h"

#include "packetcodec.h"

ScriptedServo::ScriptedServo(quint8 id, int registerCount)
    : registers(registerCount, '\0')
    , id(id)
{}

QByteArray ScriptedServo::respond(const QByteArray &written)
{
    QByteArray answer;
    framer.append(written);
    while (const auto packet = framer.next()) {
        if (packet->id != id)
            continue;
        instructions.append(QByteArray(1, char(packet->instruction)) + packet->parameters);
        const QByteArray &p = packet->parameters;
        const int address = p.size() >= 2 ? quint8(p[0]) | (quint8(p[1]) << 8) : 0;
        switch (packet->instruction) {
        case Instruction::Read: {
            const int length = p.size() >= 4 ? quint8(p[2]) | (quint8(p[3]) << 8) : 0;
            answer += PacketCodec::status(id, errorByte, registers.mid(address, length));
            break;
        }
        case Instruction::Write:
            registers.replace(address, p.size() - 2, p.mid(2));
            answer += PacketCodec::status(id, errorByte);
            break;
        default:
            answer += PacketCodec::status(id, errorByte);
            break;
        }
    }
    return answer;
}
