#include "device/conversionhelper.h"

#include "device/fieldlimits.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

enum Quantity : int32_t {
    AngularVelocity = 0,
    Angle = 1,
    Torque = 3,
    Current = 5,
    Temperature = 6,
};

constexpr double kgCmPerNewtonMetre = 10.19716;

} // namespace

double ConversionHelper::toDisplay(double value, int32_t id, int32_t unitIndex) const
{
    // Multiply before dividing: the other order rounds differently in the last digits,
    // and a value must read the same in every release.
    switch (id) {
    case AngularVelocity:
        return unitIndex == 1 ? value * 60.0 / twoPi : value;
    case Angle:
        return unitIndex == 1 ? value * 360.0 / twoPi : value;
    case Torque:
        return unitIndex == 1 ? value * kgCmPerNewtonMetre : value;
    case Current:
        // The base unit is the milliampere, so the first choice ("A") is the converted one.
        return unitIndex == 0 ? value / 1000.0 : value;
    case Temperature:
        return unitIndex == 1 ? value * 1.8 + 32.0 : value;
    default:
        return value;
    }
}

double ConversionHelper::fromDisplay(double value, int32_t id, int32_t unitIndex) const
{
    switch (id) {
    case AngularVelocity:
        return unitIndex == 1 ? value * twoPi / 60.0 : value;
    case Angle:
        return unitIndex == 1 ? value * twoPi / 360.0 : value;
    case Torque:
        return unitIndex == 1 ? value / kgCmPerNewtonMetre : value;
    case Current:
        return unitIndex == 0 ? value * 1000.0 : value;
    case Temperature:
        return unitIndex == 1 ? (value - 32.0) / 1.8 : value;
    default:
        return value;
    }
}

double ConversionHelper::rawToPhysical(int32_t raw, const FieldLimits &limits,
                                       RawOrigin origin) const
{
    // The differences are taken as 32-bit integers, as the servo does; computed wider
    // first, so that a raw value far from rawMin wraps instead of overflowing.
    const int64_t start = origin == RawOrigin::RawMin ? limits.rawMin : 0;
    const auto offset = static_cast<int32_t>(int64_t(raw) - start);
    const auto span = static_cast<int32_t>(int64_t(limits.rawMax) - limits.rawMin);
    // Records of the combo boxes have an empty range; they show their raw value as index.
    if (span == 0)
        return limits.physicalMin;
    return (limits.physicalMax - limits.physicalMin) * double(offset) / double(span) +
           limits.physicalMin;
}

int32_t ConversionHelper::physicalToRaw(double physical, const FieldLimits &limits,
                                        RawOrigin origin) const
{
    const double start = origin == RawOrigin::RawMin ? limits.rawMin : 0;
    const double span = limits.physicalMax - limits.physicalMin;
    if (span == 0.0)
        return int32_t(start);
    const double raw =
        start + (double(limits.rawMax) - limits.rawMin) * (physical - limits.physicalMin) / span;
    // A value typed past the range must not turn into undefined behaviour on the cast.
    if (std::isnan(raw))
        return int32_t(start);
    constexpr double lowest = std::numeric_limits<int32_t>::min();
    constexpr double highest = std::numeric_limits<int32_t>::max();
    return static_cast<int32_t>(std::trunc(std::clamp(raw, lowest, highest)));
}
