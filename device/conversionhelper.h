#pragma once

#include <cstdint>

struct FieldLimits;

// The arithmetic between raw register values, physical values in base units and the
// display units. The constants keep the precision the servos were calibrated with.
class ConversionHelper
{
public:
    static constexpr double twoPi = 6.283185307178;

    // Whether a field's raw range starts at rawMin (the double spin boxes and the line
    // edits) or at 0 (the integer spin boxes, which map raw 0 to physicalMin).
    enum class RawOrigin { RawMin, Zero };

    // Base unit to the display unit with index unitIndex of quantity id.
    double toDisplay(double value, int32_t id, int32_t unitIndex) const;
    double fromDisplay(double value, int32_t id, int32_t unitIndex) const;

    // Linear map of the limits record, raw range onto physical range.
    double rawToPhysical(int32_t raw, const FieldLimits &limits,
                         RawOrigin origin = RawOrigin::RawMin) const;
    // The inverse, truncated toward zero.
    int32_t physicalToRaw(double physical, const FieldLimits &limits,
                          RawOrigin origin = RawOrigin::RawMin) const;
};
