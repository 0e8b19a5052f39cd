#include "widgets/zelvardoublespinbox.h"

#include <QLineEdit>

ZelvarDoubleSpinBox::ZelvarDoubleSpinBox(QWidget *parent)
    : QDoubleSpinBox(parent)
    , state(parent)
{
    connect(this, SIGNAL(valueChanged(double)), this, SLOT(on_valueChanged(double)));
    setStyleSheet(QStringLiteral("QDoubleSpinBox:enabled { background-color:white; } "
                                 "QDoubleSpinBox:disabled { background-color:#ECEAE9; color: "
                                 "#5C5C61; }"));
    setEnabled(false);
}

void ZelvarDoubleSpinBox::setEditable(bool enable)
{
    if (state.locked)
        return;
    setEnabled(enable);
    state.dirty = false;
}

void ZelvarDoubleSpinBox::restoreValue()
{
    showNumber(storedNumber);
    setEditable(false);
}

void ZelvarDoubleSpinBox::setLocked(bool lock)
{
    if (!state.locked && lock && state.dirty) {
        emit setIsDirty(false);
        state.dirty = false;
    }
    if (state.locked && !lock)
        QDoubleSpinBox::setValue(storedNumber);
    setDisabled(state.disabledFor(lock));
    state.locked = lock;
    showNumber(QDoubleSpinBox::value());
}

void ZelvarDoubleSpinBox::setValue(int raw)
{
    if (!state.connected || !state.defined)
        return;
    QDoubleSpinBox::setValue(state.toDisplay(state.rawToPhysical(raw, true)));
    state.storedValue = raw;
    storedNumber = QDoubleSpinBox::value();
    state.valueReceived = true;
    showNumber(storedNumber);
}

int ZelvarDoubleSpinBox::value()
{
    // An unedited number gives back the servo's own value: the shown number is rounded
    // to the display's decimals, and converting it back would move the servo's setting
    // a little on every save of the group.
    if (state.valueReceived && QDoubleSpinBox::value() == storedNumber)
        return state.storedValue;
    return state.physicalToRaw(state.fromDisplay(QDoubleSpinBox::value()), true);
}

void ZelvarDoubleSpinBox::setObjectName(const QString &name)
{
    state.fieldId = BoundFieldState::fieldIdOf(name);
    QDoubleSpinBox::setObjectName(name);
}

void ZelvarDoubleSpinBox::connected()
{
    if (state.connected)
        return;
    state.loadUnits();
    BoundFieldState::listenForDevice(this);
    state.connected = true;
}

void ZelvarDoubleSpinBox::disconnected()
{
    BoundFieldState::stopListeningForDevice();
    // The placeholder is the range's low end, shown blank.
    storedNumber = minimum();
    state.connected = false;
    state.valueReceived = false;
    restoreValue();
}

void ZelvarDoubleSpinBox::on_deviceLoaded()
{
    if (!state.loadLimits(objectName()))
        return;
    if (!state.unitsHelper)
        state.loadUnits();
    // Decimals first: the range is rounded to them.
    setDecimals(state.decimals());
    setRange(state.toDisplay(state.limits.physicalMin), state.toDisplay(state.limits.physicalMax));
    setSingleStep(state.singleStep());
}

void ZelvarDoubleSpinBox::on_valueChanged(double value)
{
    if (!isEnabled())
        return;
    if (value == storedNumber) {
        emit setIsDirty(false);
        state.dirty = false;
    } else if (!state.dirty) {
        emit setIsDirty(true);
        state.dirty = true;
    }
}

QString ZelvarDoubleSpinBox::textFromValue(double value) const
{
    return state.showsValue() ? QDoubleSpinBox::textFromValue(value) : QString();
}

// Sets the number and redraws its text, which a change of state alone does not do.
void ZelvarDoubleSpinBox::showNumber(double number)
{
    QDoubleSpinBox::setValue(number);
    lineEdit()->setText(textFromValue(QDoubleSpinBox::value()));
}
