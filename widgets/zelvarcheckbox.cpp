#include "widgets/zelvarcheckbox.h"

#include "device/fieldhelper.h"
#include "widgets/ifielddependency.h"
#include "widgets/zelvarparametersgroupbox.h"

#include <QRegularExpression>

namespace {

const char checkedStyle[] =
    "QCheckBox{spacing:%1px;} QAbstractButton{ color:#4d4c4c; padding-right:2px; } "
    "QCheckBox::indicator { width: 12px; height: 12px; background:#ff461d; border-style: "
    "solid; border: 1px solid #b8a692; border-radius: 3px; } QCheckBox::indicator:enabled { "
    "border: 1px solid rgb(122,122,122); background: white; }";
const char uncheckedStyle[] =
    "QCheckBox{spacing:%1px;} QAbstractButton{ color:#4d4c4c; padding-right:2px; } "
    "QCheckBox::indicator { width: 12px; height: 12px; background:#eceae9; border-style: "
    "solid; border: 1px solid #b8a692; border-radius: 3px; } QCheckBox::indicator:checked { "
    "image: url(:/images/checkbox_checked.png); } QCheckBox::indicator:enabled { border: 1px "
    "solid rgb(122,122,122); background: white; }";

const char paleCaption[] = "#9F9E9E";
const char darkCaption[] = "#51514F";

// Group 2 is the caption colour's six hex digits; the '#' before them goes with them.
const QRegularExpression textColour(QStringLiteral("(color: ?#)(......);"));

QString withColour(QString style, const QString &colour)
{
    const QRegularExpressionMatch match = textColour.match(style);
    if (match.hasMatch())
        style.replace(match.capturedStart(2) - 1, 7, colour);
    return style;
}

} // namespace

ZelvarCheckBox::ZelvarCheckBox(QWidget *parent)
    : QCheckBox(parent)
    , state(parent)
{
    setEnabled(false);
    connect(this, SIGNAL(toggled(bool)), this, SLOT(on_toggled(bool)));
}

void ZelvarCheckBox::setEditable(bool enable)
{
    state.setEditable(this, enable);
}

void ZelvarCheckBox::restoreValue()
{
    setChecked(state.storedValue != 0);
    setEditable(false);
}

void ZelvarCheckBox::setLocked(bool lock)
{
    if (state.withdrawsMarkOnLock(lock))
        emit setIsDirty(false);
    if (state.locked && !lock)
        setChecked(state.storedValue != 0);
    disableRecoloured(state.disabledFor(lock));
    state.locked = lock;
}

void ZelvarCheckBox::setValue(int raw)
{
    if (!state.connected || !state.defined)
        return;
    setChecked(raw != 0);
    state.storedValue = isChecked() ? 1 : 0;
    state.valueReceived = true;
}

void ZelvarCheckBox::setObjectName(const QString &name)
{
    state.fieldId = FieldHelper::fieldId(name);
    QCheckBox::setObjectName(name);
}

void ZelvarCheckBox::applyDependency()
{
    if (state.limits.controller)
        state.limits.controller->apply();
}

// The style is chosen here only, by the state at the time. The form sets every caption
// while disconnected and unchecked, so the boxes keep the style that shows a checked
// state with its image; values and the link do not restyle them.
void ZelvarCheckBox::setText(const QString &text)
{
    int spacing = 0;
    if (auto *group = qobject_cast<ZelvarParametersGroupBox *>(parentWidget()))
        spacing = group->width() - fontMetrics().horizontalAdvance(text) - 40;
    const char *style = isChecked() && state.connected ? checkedStyle : uncheckedStyle;
    setStyleSheet(QString::fromLatin1(style).arg(spacing));
    captionColour = nullptr;
    QCheckBox::setText(text);
}

void ZelvarCheckBox::connected()
{
    state.connect(this);
}

void ZelvarCheckBox::disconnected()
{
    state.disconnect();
    // The placeholder of a check box is unchecked.
    state.storedValue = 0;
    restoreValue();
    setChecked(false);
}

void ZelvarCheckBox::on_deviceLoaded()
{
    state.loadLimits(objectName());
}

void ZelvarCheckBox::on_toggled(bool value)
{
    if (!isEnabled())
        return;
    if (const auto mark = state.markChange(int(value) != state.storedValue))
        emit setIsDirty(*mark);
}

// The mode controllers run on every poll, so the style sheet is edited only when the
// colour really changes: setting one restyles the whole box.
void ZelvarCheckBox::disableRecoloured(bool disable)
{
    const char *colour = state.locked && disable ? paleCaption : darkCaption;
    if (colour != captionColour) {
        setStyleSheet(withColour(styleSheet(), QLatin1String(colour)));
        captionColour = colour;
    }
    setDisabled(disable);
}
