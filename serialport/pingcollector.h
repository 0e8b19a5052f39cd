#pragma once

#include "packetframer.h"
#include "pingreply.h"

#include <QByteArray>
#include <vector>

// Cuts the answers to a ping out of what arrives, and marks where bytes arrived that made
// no answer, so that a caller can tell which ids to ask again one by one.
class PingCollector
{
public:
    void append(const QByteArray &bytes);
    // Whatever is left over once the wait is over cannot become an answer any more.
    void finish();

    bool hasAnswerFrom(quint8 id) const;
    const std::vector<PingReply> &replies() const { return collected; }

private:
    void markDamage();

    PacketFramer framer;
    std::vector<PingReply> collected;
};
