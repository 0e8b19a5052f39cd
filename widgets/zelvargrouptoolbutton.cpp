#include "widgets/zelvargrouptoolbutton.h"

#include "device/devicehelper.h"
#include "device/idevice.h"
#include "widgets/boundfieldstate.h"

ZelvarGroupToolButton::ZelvarGroupToolButton(QWidget *parent)
    : QToolButton(parent)
{
    setEnabled(false);
}

void ZelvarGroupToolButton::enableIfLive(bool enable)
{
    wanted = enable;
    setEnabled(enable && live && valued);
}

void ZelvarGroupToolButton::markValued()
{
    if (!live || valued)
        return;
    valued = true;
    setEnabled(wanted);
}

void ZelvarGroupToolButton::connected()
{
    BoundFieldState::listenForDevice(this);
}

void ZelvarGroupToolButton::disconnected()
{
    BoundFieldState::stopListeningForDevice();
    live = false;
    valued = false;
    // An edit under way ends with the link: the group goes back to "Edit", unedited.
    if (isChecked())
        setChecked(false);
    setEnabled(false);
}

void ZelvarGroupToolButton::incrementReferenceCount(bool dirty)
{
    referenceCount = referenceCount - 1 + 2 * int32_t(dirty);
    setEnabled(referenceCount != 0);
}

void ZelvarGroupToolButton::clearReferenceCount()
{
    referenceCount = 0;
}

// The groups' blocks follow the own family's register layout. Written into a model
// without that table (the AX-12) they would land on other registers, its id and baud
// rate among them, so such a model is not editable here. Edit waits for the first values
// (rather than coming on here): a block applied before them would carry bytes nobody chose.
void ZelvarGroupToolButton::on_deviceLoaded()
{
    const auto helper = DeviceHelper::instance();
    const auto device = helper ? helper->device() : nullptr;
    live = device && device->hasRegisterMap();
    valued = false;
    wanted = true;
    setEnabled(false);
}
