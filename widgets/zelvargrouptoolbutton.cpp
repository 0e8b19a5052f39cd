#include "widgets/zelvargrouptoolbutton.h"

#include "widgets/boundfieldstate.h"

ZelvarGroupToolButton::ZelvarGroupToolButton(QWidget *parent)
    : QToolButton(parent)
{
    setEnabled(false);
}

void ZelvarGroupToolButton::connected()
{
    BoundFieldState::listenForDevice(this);
}

void ZelvarGroupToolButton::disconnected()
{
    BoundFieldState::stopListeningForDevice();
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

void ZelvarGroupToolButton::on_deviceLoaded()
{
    setEnabled(true);
}
