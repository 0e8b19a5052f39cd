#include "simulator/steadybusclock.h"

qint64 SteadyBusClock::nanoseconds() const
{
    const auto elapsed = std::chrono::steady_clock::now() - start;
    return std::chrono::duration_cast<std::chrono::nanoseconds>(elapsed).count();
}
