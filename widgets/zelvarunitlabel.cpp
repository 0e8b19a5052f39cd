#include "widgets/zelvarunitlabel.h"

#include "device/fieldhelper.h"
#include "device/unitshelper.h"
#include "widgets/boundfieldstate.h"

namespace {

constexpr int32_t idLabelFieldId = 23;

} // namespace

ZelvarUnitLabel::ZelvarUnitLabel(QWidget *parent)
    : QLabel(parent)
{}

void ZelvarUnitLabel::setLocked(bool lock)
{
    if (isConnected)
        setDisabled(lock);
}

void ZelvarUnitLabel::setObjectName(const QString &name)
{
    id = FieldHelper::fieldId(name);
    QLabel::setObjectName(name);
}

void ZelvarUnitLabel::setText(const QString &caption)
{
    if (baseCaption.isEmpty())
        baseCaption = caption;
    showCaption();
}

void ZelvarUnitLabel::connected()
{
    isConnected = true;
    // The user may have chosen other units since the caption was set.
    showCaption();
}

void ZelvarUnitLabel::disconnected()
{
    isConnected = false;
    setEnabled(true);
    repaint();
}

void ZelvarUnitLabel::showCaption()
{
    if (id < 0 || id > 7) {
        QLabel::setText(baseCaption + QLatin1Char(':'));
        return;
    }
    QLabel::setText(
        QStringLiteral("%1 (%2):").arg(baseCaption, BoundFieldState::currentUnits()->unitName(id)));
}
