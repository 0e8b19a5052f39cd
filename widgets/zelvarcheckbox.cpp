#include "widgets/zelvarcheckbox.h"

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

// Group 2 is the caption colour's six hex digits; the '#' before them goes with them.
const QRegularExpression textColour(QStringLiteral("(color: ?#)(......);"));

QString withColour(QString style, const QString &colour)
{
    const QRegularExpressionMatch match = textColour.match(style);
    if (match.hasMatch())
        style.replace(match.capturedStart(2) - 1, 7, colour);
    return style;
}

QString colourOf(const QString &style)
{
    const QRegularExpressionMatch match = textColour.match(style);
    return match.hasMatch() ? QLatin1Char('#') + match.captured(2) : QString();
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
    if (state.locked)
        return;
    setEnabled(enable);
    state.dirty = false;
}

void ZelvarCheckBox::restoreValue()
{
    setChecked(state.storedValue != 0);
    setEditable(false);
}

void ZelvarCheckBox::setLocked(bool lock)
{
    if (!state.locked && lock && state.dirty) {
        emit setIsDirty(false);
        state.dirty = false;
    }
    if (state.locked && !lock)
        setChecked(state.storedValue != 0);
    disableRecoloured(state.disabledFor(lock));
    state.locked = lock;
    update();
}

void ZelvarCheckBox::setValue(int raw)
{
    if (!state.connected || !state.defined)
        return;
    setChecked(raw != 0);
    state.storedValue = isChecked() ? 1 : 0;
    state.valueReceived = true;
    applyStyle();
}

void ZelvarCheckBox::setObjectName(const QString &name)
{
    state.fieldId = BoundFieldState::fieldIdOf(name);
    QCheckBox::setObjectName(name);
}

void ZelvarCheckBox::applyDependency()
{
    if (state.limits.controller)
        state.limits.controller->apply();
}

void ZelvarCheckBox::setText(const QString &text)
{
    QCheckBox::setText(text);
    applyStyle();
}

void ZelvarCheckBox::connected()
{
    if (state.connected)
        return;
    BoundFieldState::listenForDevice(this);
    state.connected = true;
    applyStyle();
}

void ZelvarCheckBox::disconnected()
{
    BoundFieldState::stopListeningForDevice();
    // The placeholder of a check box is unchecked.
    state.storedValue = 0;
    state.connected = false;
    state.valueReceived = false;
    restoreValue();
    setChecked(false);
    applyStyle();
}

void ZelvarCheckBox::on_deviceLoaded()
{
    state.loadLimits(objectName());
}

void ZelvarCheckBox::on_toggled(bool value)
{
    if (!isEnabled())
        return;
    if (int(value) == state.storedValue) {
        emit setIsDirty(false);
        state.dirty = false;
    } else if (!state.dirty) {
        emit setIsDirty(true);
        state.dirty = true;
    }
}

void ZelvarCheckBox::applyStyle()
{
    int spacing = 0;
    if (auto *group = qobject_cast<ZelvarParametersGroupBox *>(parentWidget()))
        spacing = group->width() - fontMetrics().horizontalAdvance(text()) - 40;
    const QString style =
        QString::fromLatin1(isChecked() && state.connected ? checkedStyle : uncheckedStyle)
            .arg(spacing);
    const QString colour = colourOf(styleSheet());
    setStyleSheet(colour.isEmpty() ? style : withColour(style, colour));
}

void ZelvarCheckBox::disableRecoloured(bool disable)
{
    const char *colour = state.locked && disable ? "#9F9E9E" : "#51514F";
    setStyleSheet(withColour(styleSheet(), QLatin1String(colour)));
    setDisabled(disable);
}
