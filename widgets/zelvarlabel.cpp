#include "widgets/zelvarlabel.h"

ZelvarLabel::ZelvarLabel(QWidget *parent)
    : QLabel(parent)
{}

void ZelvarLabel::setLocked(bool lock)
{
    if (isConnected)
        setDisabled(lock);
}

void ZelvarLabel::connected()
{
    isConnected = true;
}

void ZelvarLabel::disconnected()
{
    isConnected = false;
    setEnabled(true);
}
