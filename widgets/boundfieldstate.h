#pragma once

#include "device/fieldlimits.h"

#include <QString>
#include <cstdint>
#include <memory>

class QObject;
class QWidget;
class UnitsHelper;
class ZelvarParametersGroupBox;

// What every bound control knows about its field and the link: the group it sits in,
// its field id and limits, the last value from the servo and its flags. It also keeps
// the conversions the controls share, so each control only adds how it shows a value.
struct BoundFieldState
{
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
    // The disabled state that a lock gives: editable only while the group is edited.
    bool disabledFor(bool lock) const;

    // Fetches the limits for objectName from the current device; false when the device
    // does not define the field (or no device is loaded).
    bool loadLimits(const QString &objectName);
    // Builds unitsHelper from the user's current unit choices.
    void loadUnits();

    double rawToPhysical(int raw, bool withRawOffset) const;
    int physicalToRaw(double physical, bool withRawOffset) const;
    double toDisplay(double physical) const;
    double fromDisplay(double display) const;
    // Ids 0 to 7 take these from the unit table. The other ids carry no unit; they get
    // one raw count as step and just enough decimals to show it.
    double singleStep() const;
    int decimals() const;

    static int32_t fieldIdOf(const QString &objectName);
    // Connects the device helper's loadDeviceMetadata() to receiver's on_deviceLoaded().
    static void listenForDevice(QObject *receiver);
    // Cuts every receiver of every device helper signal, not only the caller's: each
    // control reconnects on its next connected().
    static void stopListeningForDevice();
};
