#pragma once

#include "packetframer.h"

#include <QByteArray>
#include <QByteArrayList>

// A servo for scripted ports: it answers Protocol 2.0 reads, writes, reboots and
// factory resets addressed to its id from a register table of its own.
class ScriptedServo
{
public:
    explicit ScriptedServo(quint8 id, int registerCount = 256);

    // Answer to the bytes just written, for ScriptedPortBackend::setResponder().
    QByteArray respond(const QByteArray &written);

    QByteArray registers;
    quint8 errorByte = 0;
    // Instructions that arrived for this servo, in order.
    QByteArrayList instructions;

private:
    quint8 id;
    PacketFramer framer;
};
