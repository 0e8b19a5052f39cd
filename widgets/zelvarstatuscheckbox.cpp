#include "widgets/zelvarstatuscheckbox.h"

#include "widgets/zelvarparametersgroupbox.h"

namespace {

const char statusStyle[] =
    "QCheckBox{spacing:%1px;} QAbstractButton{ color:#4d4c4c; padding-right:2px; } "
    "QCheckBox::indicator { width: 12px; height: 12px; background:%2; border-style: solid; "
    "border: 1px solid #b8a692; border-radius: 3px; }";

} // namespace

ZelvarStatusCheckBox::ZelvarStatusCheckBox(QWidget *parent)
    : QCheckBox(parent)
{}

void ZelvarStatusCheckBox::setStatus(bool on)
{
    setChecked(on);
    int spacing = 0;
    if (auto *group = qobject_cast<ZelvarParametersGroupBox *>(parentWidget()))
        spacing = group->width() - fontMetrics().horizontalAdvance(text()) - 40;
    const char *background = on && isConnected ? "#ff461d" : "#eceae9";
    setStyleSheet(QString::fromLatin1(statusStyle).arg(spacing).arg(QLatin1String(background)));
}

void ZelvarStatusCheckBox::connected()
{
    isConnected = true;
}

void ZelvarStatusCheckBox::disconnected()
{
    isConnected = false;
    setStatus(false);
}
