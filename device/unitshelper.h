#pragma once

#include "device/conversionhelper.h"

#include <QString>
#include <cstdint>
#include <memory>

struct FieldLimits;
struct PhysicalQuantities;

// One display unit of a quantity.
struct UnitDescription
{
    const char *text; // UTF-8
    int decimals;
    double singleStep;
    // Set on the unit a quantity starts with when the user has two to choose from.
    uint64_t defaultChoice;
};

// Converts the values of one widget between base units and the units the user chose.
// Field ids 0 to 7 are physical quantities; every other id passes through unchanged.
class UnitsHelper
{
public:
    static constexpr int32_t quantityCount = 8;

    explicit UnitsHelper(std::shared_ptr<PhysicalQuantities> quantities);

    double toDisplay(double value, int32_t id) const;
    double fromDisplay(double value, int32_t id) const;

    int32_t unitIndex(int32_t id) const;
    QString unitName(int32_t id) const;
    int decimals(int32_t id) const;
    double singleStep(int32_t id) const;

    using RawOrigin = ConversionHelper::RawOrigin;
    // Raw register value to the shown value and back, through the field's limits record.
    double rawToDisplay(int32_t raw, const FieldLimits &limits, int32_t id,
                        RawOrigin origin = RawOrigin::RawMin) const;
    int32_t displayToRaw(double shown, const FieldLimits &limits, int32_t id,
                         RawOrigin origin = RawOrigin::RawMin) const;

private:
    // The unit table row; ids without a unit get an empty row.
    static const UnitDescription &unit(int32_t id, int32_t unitIndex);

    std::shared_ptr<PhysicalQuantities> quantities;
    std::shared_ptr<ConversionHelper> conversion;
};
