#pragma once

#include <cstdint>

// The user's unit choices, one index per quantity (see UnitsHelper for their meaning),
// and whether raw register values are shown in decimal (1) or hexadecimal (0).
struct PhysicalQuantities
{
    int32_t angularVelocity = 0;
    int32_t angle = 0;
    int32_t angularAcceleration = 0;
    int32_t torque = 0;
    int32_t voltage = 0;
    int32_t current = 0;
    int32_t temperature = 0;
    int32_t returnDelay = 0;
    int32_t servoData = 0;
};
