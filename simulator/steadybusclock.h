#pragma once

#include "simulator/busclock.h"

#include <chrono>

// The wall clock, monotonic.
class SteadyBusClock : public BusClock
{
public:
    qint64 nanoseconds() const override
    {
        const auto elapsed = std::chrono::steady_clock::now() - start;
        return std::chrono::duration_cast<std::chrono::nanoseconds>(elapsed).count();
    }

private:
    std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();
};
