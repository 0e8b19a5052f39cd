#include "simulator/manualbusclock.h"

qint64 ManualBusClock::nanoseconds() const
{
    return now;
}

void ManualBusClock::advance(qint64 nanoseconds)
{
    now += nanoseconds;
}
