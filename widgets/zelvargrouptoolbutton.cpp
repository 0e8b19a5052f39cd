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
    setEnabled(enable && live);
}

void ZelvarGroupToolButton::connected()
{
    BoundFieldState::listenForDevice(this);
}

void ZelvarGroupToolButton::disconnected()
{
    BoundFieldState::stopListeningForDevice();
    live = false;
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
// rate among them, so such a model is not editable here.
void ZelvarGroupToolButton::on_deviceLoaded()
{
    const auto helper = DeviceHelper::instance();
    const auto device = helper ? helper->device() : nullptr;
    live = device && device->hasRegisterMap();
    setEnabled(live);
}
