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

// The look of an unset bit from the start, not only from the first status on: the
// spacing needs the caption, which the form sets here.
void ZelvarStatusCheckBox::setText(const QString &text)
{
    QCheckBox::setText(text);
    setStatus(isChecked());
}

// Called after every reply, so it measures the caption only when the caption or the
// group's width has changed, and restyles only when the style changes.
void ZelvarStatusCheckBox::setStatus(bool on)
{
    setChecked(on);
    auto *group = qobject_cast<ZelvarParametersGroupBox *>(parentWidget());
    const int groupWidth = group ? group->width() : -1;
    if (groupWidth != measuredGroupWidth || text() != measuredText) {
        measuredGroupWidth = groupWidth;
        measuredText = text();
        spacing = group ? groupWidth - fontMetrics().horizontalAdvance(measuredText) - 40 : 0;
    }
    const char *background = on && isConnected ? "#ff461d" : "#eceae9";
    const QString style =
        QString::fromLatin1(statusStyle).arg(spacing).arg(QLatin1String(background));
    if (style != styleSheet())
        setStyleSheet(style);
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
