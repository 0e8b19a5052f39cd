#pragma once

#include "zelvarserialport_global.h"

#include <QtGlobal>

// One answer to a ping, in the order the answers arrived.
struct ZELVAR_SERIALPORT_EXPORT PingReply
{
    quint8 id = 0;
    quint8 error = 0;
    quint16 modelNumber = 0;
    quint8 firmwareVersion = 0;
    // Bytes arrived here that made no valid answer: two servos answered at once, or an
    // answer was damaged on the wire. `id` and the values mean nothing then.
    bool damaged = false;
};
