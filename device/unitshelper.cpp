#include "device/unitshelper.h"

#include "device/conversionhelper.h"
#include "device/physicalquantities.h"

#include <QCoreApplication>
#include <array>

namespace {

using UnitChoice = std::array<UnitDescription, 2>;

constexpr UnitDescription noUnit{"", 0, 0.0, 0};

// Indexed by field id, then by the unit index the user chose.
const std::array<UnitChoice, UnitsHelper::quantityCount> unitTable{{
    {{{"rad/s", 2, 0.1, 1}, {"rpm", 1, 1.0, 0}}},
    {{{QT_TRANSLATE_NOOP("UnitsHelper", "radians"), 3, 0.001533980787885254, 1},
      {QT_TRANSLATE_NOOP("UnitsHelper", "degrees"), 2, 0.0, 0}}},
    {{{u8"rad/s²", 2, 0.01, 0}, noUnit}},
    {{{"Nm", 2, 0.1, 1}, {"kg-cm", 2, 0.1, 0}}},
    {{{"V", 1, 0.5, 0}, noUnit}},
    {{{"A", 3, 0.1, 1}, {"mA", 0, 1.0, 0}}},
    {{{u8"°C", 0, 1.0, 1}, {u8"°F", 1, 1.0, 0}}},
    {{{u8"μs", 0, 1.0, 0}, noUnit}},
}};

constexpr std::array<int32_t PhysicalQuantities::*, UnitsHelper::quantityCount> chosenUnit{
    &PhysicalQuantities::angularVelocity,
    &PhysicalQuantities::angle,
    &PhysicalQuantities::angularAcceleration,
    &PhysicalQuantities::torque,
    &PhysicalQuantities::voltage,
    &PhysicalQuantities::current,
    &PhysicalQuantities::temperature,
    &PhysicalQuantities::returnDelay,
};

bool isQuantity(int32_t id)
{
    return id >= 0 && id < UnitsHelper::quantityCount;
}

} // namespace

UnitsHelper::UnitsHelper(std::shared_ptr<PhysicalQuantities> quantities)
    : quantities(quantities ? std::move(quantities) : std::make_shared<PhysicalQuantities>())
    , conversion(std::make_shared<ConversionHelper>())
{}

double UnitsHelper::toDisplay(double value, int32_t id) const
{
    return conversion->toDisplay(value, id, unitIndex(id));
}

double UnitsHelper::fromDisplay(double value, int32_t id) const
{
    return conversion->fromDisplay(value, id, unitIndex(id));
}

int32_t UnitsHelper::unitIndex(int32_t id) const
{
    if (!isQuantity(id))
        return 0;
    // A settings file edited by hand may hold any number; it falls back to the first unit.
    const int32_t index = (*quantities).*chosenUnit[size_t(id)];
    return index == 1 ? 1 : 0;
}

QString UnitsHelper::unitName(int32_t id) const
{
    // Symbols have no translation and come back as they are.
    return QCoreApplication::translate("UnitsHelper", unit(id, unitIndex(id)).text);
}

int UnitsHelper::decimals(int32_t id) const
{
    return unit(id, unitIndex(id)).decimals;
}

double UnitsHelper::singleStep(int32_t id) const
{
    return unit(id, unitIndex(id)).singleStep;
}

double UnitsHelper::rawToDisplay(int32_t raw, const FieldLimits &limits, int32_t id,
                                 RawOrigin origin) const
{
    return toDisplay(conversion->rawToPhysical(raw, limits, origin), id);
}

int32_t UnitsHelper::displayToRaw(double shown, const FieldLimits &limits, int32_t id,
                                  RawOrigin origin) const
{
    return conversion->physicalToRaw(fromDisplay(shown, id), limits, origin);
}

const UnitDescription &UnitsHelper::unit(int32_t id, int32_t unitIndex)
{
    if (!isQuantity(id))
        return noUnit;
    return unitTable[size_t(id)][unitIndex == 1 ? 1 : 0];
}
