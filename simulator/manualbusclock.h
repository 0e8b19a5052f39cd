#pragma once

#include "simulator/busclock.h"

// A clock that moves only when told to, so that tests see exact times.
class ManualBusClock : public BusClock
{
public:
    qint64 nanoseconds() const override { return now; }
    void advance(qint64 nanoseconds) { now += nanoseconds; }

private:
    qint64 now = 0;
};
