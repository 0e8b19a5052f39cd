#include "widgets/boundfieldstate.h"

#include "device/devicehelper.h"
#include "device/fieldhelper.h"
#include "device/idevice.h"
#include "device/unitshelper.h"
#include "settings/settingsdialog.h"
#include "widgets/zelvarparametersgroupbox.h"

#include <QWidget>
#include <cmath>

namespace {

bool hasUnit(int32_t fieldId)
{
    return fieldId >= 0 && fieldId <= 7;
}

} // namespace

BoundFieldState::BoundFieldState(QWidget *parent)
    : parentGroup(qobject_cast<ZelvarParametersGroupBox *>(parent))
{}

bool BoundFieldState::disabledFor(bool lock) const
{
    return parentGroup && parentGroup->editMode ? lock : true;
}

bool BoundFieldState::loadLimits(const QString &objectName)
{
    const auto helper = DeviceHelper::instance();
    const auto device = helper ? helper->device() : nullptr;
    defined = device && device->definesField(objectName);
    if (defined)
        limits = *device->limits(objectName);
    return defined;
}

void BoundFieldState::loadUnits()
{
    const SettingsDialog *settings = SettingsDialog::instance();
    unitsHelper = std::make_shared<UnitsHelper>(
        std::make_shared<PhysicalQuantities>(settings ? settings->units() : PhysicalQuantities()));
}

double BoundFieldState::rawToPhysical(int raw, bool withRawOffset) const
{
    const int32_t rawSpan = limits.rawMax - limits.rawMin;
    if (rawSpan == 0)
        return limits.physicalMin;
    const int32_t offset = withRawOffset ? raw - limits.rawMin : raw;
    return (limits.physicalMax - limits.physicalMin) * double(offset) / double(rawSpan) +
           limits.physicalMin;
}

int BoundFieldState::physicalToRaw(double physical, bool withRawOffset) const
{
    const double physicalSpan = limits.physicalMax - limits.physicalMin;
    if (physicalSpan == 0.0)
        return limits.rawMin;
    const double raw =
        double(limits.rawMax - limits.rawMin) * (physical - limits.physicalMin) / physicalSpan;
    return int(std::trunc(withRawOffset ? raw + limits.rawMin : raw));
}

double BoundFieldState::toDisplay(double physical) const
{
    return unitsHelper ? unitsHelper->toDisplay(physical, fieldId) : physical;
}

double BoundFieldState::fromDisplay(double display) const
{
    return unitsHelper ? unitsHelper->fromDisplay(display, fieldId) : display;
}

double BoundFieldState::singleStep() const
{
    if (unitsHelper && hasUnit(fieldId))
        return unitsHelper->singleStep(fieldId);
    const int32_t rawSpan = limits.rawMax - limits.rawMin;
    return rawSpan == 0 ? 1.0 : std::abs(limits.physicalMax - limits.physicalMin) / rawSpan;
}

int BoundFieldState::decimals() const
{
    if (unitsHelper && hasUnit(fieldId))
        return int(unitsHelper->decimals(fieldId));
    const double step = singleStep();
    return step >= 1.0 || step <= 0.0 ? 0 : int(std::ceil(-std::log10(step) - 1e-9));
}

int32_t BoundFieldState::fieldIdOf(const QString &objectName)
{
    return FieldHelper::fieldId(objectName);
}

void BoundFieldState::listenForDevice(QObject *receiver)
{
    if (const auto helper = DeviceHelper::instance())
        QObject::connect(helper.get(), SIGNAL(loadDeviceMetadata()), receiver,
                         SLOT(on_deviceLoaded()), Qt::UniqueConnection);
}

void BoundFieldState::stopListeningForDevice()
{
    if (const auto helper = DeviceHelper::instance())
        QObject::disconnect(helper.get(), nullptr, nullptr, nullptr);
}
