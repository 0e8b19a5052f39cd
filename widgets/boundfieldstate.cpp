#include "widgets/boundfieldstate.h"

#include "device/devicehelper.h"
#include "device/idevice.h"
#include "device/unitshelper.h"
#include "settings/settingsdialog.h"
#include "widgets/zelvarparametersgroupbox.h"

#include <QWidget>
#include <cmath>

namespace {

bool hasUnit(int32_t fieldId)
{
    return fieldId >= 0 && fieldId < UnitsHelper::quantityCount;
}

} // namespace

BoundFieldState::BoundFieldState(QWidget *parent)
    : parentGroup(qobject_cast<ZelvarParametersGroupBox *>(parent))
    , unitsHelper(currentUnits())
{}

bool BoundFieldState::disabledFor(bool lock) const
{
    return parentGroup && parentGroup->editMode ? lock : true;
}

void BoundFieldState::setEditable(QWidget *widget, bool enable)
{
    if (locked)
        return;
    widget->setEnabled(enable);
    dirty = false;
}

std::optional<bool> BoundFieldState::markChange(bool changed)
{
    if (changed && dirty)
        return std::nullopt;
    dirty = changed;
    return changed;
}

bool BoundFieldState::withdrawsMarkOnLock(bool lock)
{
    if (locked || !lock || !dirty)
        return false;
    dirty = false;
    return true;
}

bool BoundFieldState::connect(QObject *receiver)
{
    // A connect that the port refused leaves the controls connected; the next one must
    // still bring the units chosen since.
    unitsHelper = currentUnits();
    if (connected)
        return false;
    listenForDevice(receiver);
    connected = true;
    return true;
}

void BoundFieldState::disconnect()
{
    stopListeningForDevice();
    connected = false;
    valueReceived = false;
    // The next servo may be a model without modes (the AX-12), whose fields nothing would
    // unlock again. The own family's first value sets every lock anew.
    locked = false;
}

bool BoundFieldState::loadLimits(const QString &objectName)
{
    const auto helper = DeviceHelper::instance();
    const auto device = helper ? helper->device() : nullptr;
    defined = device && device->definesField(objectName);
    // Nothing of an earlier device may stay, least of all its mode controller.
    limits = defined ? *device->limits(objectName) : FieldLimits();
    return defined;
}

std::shared_ptr<UnitsHelper> BoundFieldState::currentUnits()
{
    const SettingsDialog *settings = SettingsDialog::instance();
    return std::make_shared<UnitsHelper>(
        std::make_shared<PhysicalQuantities>(settings ? settings->units() : PhysicalQuantities()));
}

double BoundFieldState::rawToDisplay(int32_t raw, RawOrigin origin) const
{
    return unitsHelper->rawToDisplay(raw, limits, fieldId, origin);
}

int32_t BoundFieldState::displayToRaw(double shown, RawOrigin origin) const
{
    return unitsHelper->displayToRaw(shown, limits, fieldId, origin);
}

double BoundFieldState::toDisplay(double physical) const
{
    return unitsHelper->toDisplay(physical, fieldId);
}

double BoundFieldState::singleStep() const
{
    if (hasUnit(fieldId))
        return unitsHelper->singleStep(fieldId);
    const int32_t rawSpan = limits.rawMax - limits.rawMin;
    return rawSpan == 0 ? 1.0 : std::abs(limits.physicalMax - limits.physicalMin) / rawSpan;
}

int BoundFieldState::decimals() const
{
    if (hasUnit(fieldId))
        return int(unitsHelper->decimals(fieldId));
    const double step = singleStep();
    return step >= 1.0 || step <= 0.0 ? 0 : int(std::ceil(-std::log10(step) - 1e-9));
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
