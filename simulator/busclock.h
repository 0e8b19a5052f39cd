#pragma once

#include <QtGlobal>

// Time as the virtual bus sees it: servos move and replies fall due by it.
class BusClock
{
public:
    virtual ~BusClock() = default;
    virtual qint64 nanoseconds() const = 0;
};
