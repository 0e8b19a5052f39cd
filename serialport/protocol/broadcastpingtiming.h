#pragma once

#include <QtGlobal>

// How servos share the line when one ping goes to every id: they answer in order of id,
// each in a slot of its own, so that no two answers overlap. A servo waits 3 ms for every
// id below its own, and for the answers of those ids to pass on the wire.
class BroadcastPingTiming
{
public:
    static constexpr qint64 GapPerIdNs = 3'000'000;
    // The ping's status packet: frame, error byte, model number and firmware version.
    static constexpr int StatusBytes = 14;

    static constexpr qint64 slotNs(int baudRate)
    {
        return GapPerIdNs + (baudRate > 0 ? StatusBytes * 10LL * 1'000'000'000 / baudRate : 0);
    }
    // When servo `id` starts answering (its return delay apart), from the end of the ping.
    static constexpr qint64 answerStartNs(int id, int baudRate) { return id * slotNs(baudRate); }
};
