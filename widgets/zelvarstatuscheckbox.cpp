#include "widgets/zelvarstatuscheckbox.h"

#include "widgets/zelvarparametersgroupbox.h"

namespace {

const char statusStyle[] =
    "QCheckBox{spacing:%1px;} QAbstractButton{ color:#4d4c4c; padding-right:2px; } "
    "QCheckBox::indicator { width: 12px; height: 12px; background:%2; border-style: solid; "
    "border: 1px solid #b8a692; border-radius: 3px; }";
const char setBackground[] = "#ff461d";
const char clearBackground[] = "#eceae9";

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

// Called after every reply, so the caption is measured and the box restyled only when
// the caption, the group's width or the colour has changed.
void ZelvarStatusCheckBox::setStatus(bool on)
{
    setChecked(on);
    auto *group = qobject_cast<ZelvarParametersGroupBox *>(parentWidget());
    const int groupWidth = group ? group->width() : -1;
    const char *background = on && isConnected ? setBackground : clearBackground;
    if (groupWidth == styledGroupWidth && background == styledBackground && text() == styledText)
        return;
    styledGroupWidth = groupWidth;
    styledBackground = background;
    styledText = text();
    const int spacing = group ? groupWidth - fontMetrics().horizontalAdvance(styledText) - 40 : 0;
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
