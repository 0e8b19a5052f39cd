#pragma once

#include "device/conversionhelper.h"
#include "device/fieldlimits.h"

#include <QString>
#include <cstdint>
#include <memory>
#include <optional>

class QObject;
class QWidget;
class UnitsHelper;
class ZelvarParametersGroupBox;

// What every bound control knows about its field and the link: the group it sits in,
// its field id and limits, the last value from the servo and its flags. It also keeps
// what the controls share of the link, the dirty marks and the conversions, so each
// control only adds how it shows a value.
struct BoundFieldState
{
    using RawOrigin = ConversionHelper::RawOrigin;

    explicit BoundFieldState(QWidget *parent);

    ZelvarParametersGroupBox *parentGroup = nullptr;
    int32_t fieldId = -1;
    FieldLimits limits;
    // False until the loaded device describes this field. An AX-12 lacks most of our
    // fields; those keep their placeholder and ignore values instead of failing.
    bool defined = false;
    int32_t storedValue = 0;
    bool connected = false;
    bool valueReceived = false;
    bool dirty = false;
    bool locked = false;
    std::shared_ptr<UnitsHelper> unitsHelper;

    // Only a connected, valued and unlocked control shows its value; otherwise it is blank.
    bool showsValue() const { return connected && valueReceived && !locked; }
    bool holdsServoValue() const { return connected && valueReceived; }
    // The disabled state that a lock gives: editable only while the group is edited.
    bool disabledFor(bool lock) const;

    // setEditable of the input widgets: a locked control ignores it.
    void setEditable(QWidget *widget, bool enable);
    // The dirty mark a change of value calls for: true when the control turns dirty,
    // false when it is clean again, nothing while it stays dirty.
    std::optional<bool> markChange(bool changed);
    // Whether locking withdraws the control's dirty mark, so that the save button's
    // count stays right; the control then emits setIsDirty(false).
    bool withdrawsMarkOnLock(bool lock);

    // The start of connected(): takes the user's units, then false when already connected;
    // otherwise listens for the device on receiver's on_deviceLoaded().
    bool connect(QObject *receiver);
    // The start of disconnected(): stops listening, forgets the servo's value and the
    // mode's lock.
    void disconnect();

    // Fetches the limits for objectName from the current device; false when the device
    // does not define the field (or no device is loaded), which leaves empty limits.
    bool loadLimits(const QString &objectName);
    // The user's current unit choices.
    static std::shared_ptr<UnitsHelper> currentUnits();

    double rawToDisplay(int32_t raw, RawOrigin origin) const;
    int32_t displayToRaw(double shown, RawOrigin origin) const;
    double toDisplay(double physical) const;
    // Ids 0 to 7 take these from the unit table. The other ids carry no unit; they get
    // one raw count as step and just enough decimals to show it.
    double singleStep() const;
    int decimals() const;

    // Cuts every receiver of every device helper signal, not only the caller's: each
    // control reconnects on its next connected().
    static void stopListeningForDevice();
    // Connects the device helper's loadDeviceMetadata() to receiver's on_deviceLoaded().
    static void listenForDevice(QObject *receiver);
};
