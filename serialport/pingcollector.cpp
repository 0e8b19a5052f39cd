#include "pingcollector.h"

#include "packetcodec.h"

#include <algorithm>

void PingCollector::append(const QByteArray &bytes)
{
    // Byte by byte, so that bytes the framer throws away are placed between the answers
    // they arrived between.
    for (const char byte : bytes) {
        int expected = framer.bufferedSize() + 1;
        framer.append(QByteArray(1, byte));
        while (const auto packet = framer.next()) {
            expected -= PacketCodec::encode(*packet).size();
            if (framer.bufferedSize() < expected)
                markDamage();
            expected = framer.bufferedSize();
            // The ping itself, echoed by a half-duplex adapter, is no answer.
            if (packet->instruction != Instruction::Status)
                continue;
            PingReply reply;
            reply.id = packet->id;
            const QByteArray &parameters = packet->parameters;
            reply.error = parameters.isEmpty() ? 0 : quint8(parameters.at(0));
            if (parameters.size() >= 4) {
                reply.modelNumber =
                    quint16(quint8(parameters.at(1)) | quint8(parameters.at(2)) << 8);
                reply.firmwareVersion = quint8(parameters.at(3));
            }
            collected.push_back(reply);
        }
        if (framer.bufferedSize() < expected)
            markDamage();
    }
}

void PingCollector::finish()
{
    if (framer.bufferedSize() > 0)
        markDamage();
    framer.clear();
}

bool PingCollector::hasAnswerFrom(quint8 id) const
{
    return std::any_of(collected.begin(), collected.end(),
                       [id](const PingReply &reply) { return !reply.damaged && reply.id == id; });
}

void PingCollector::markDamage()
{
    // One mark for a run of bad bytes.
    if (!collected.empty() && collected.back().damaged)
        return;
    PingReply mark;
    mark.damaged = true;
    collected.push_back(mark);
}
