#include "widgets/zelvarspinbox.h"

#include <QLineEdit>

ZelvarSpinBox::ZelvarSpinBox(QWidget *parent)
    : QSpinBox(parent)
    , state(parent)
{
    connect(this, SIGNAL(valueChanged(int)), this, SLOT(on_valueChanged(int)));
    setStyleSheet(QStringLiteral("QSpinBox:enabled { background-color:white; } QSpinBox:disabled "
                                 "{ background-color:#ECEAE9; color: #5C5C61; }"));
    setEnabled(false);
}

void ZelvarSpinBox::setEditable(bool enable)
{
    if (state.locked)
        return;
    setEnabled(enable);
    state.dirty = false;
}

void ZelvarSpinBox::restoreValue()
{
    showNumber(state.storedValue);
    setEditable(false);
}

void ZelvarSpinBox::setLocked(bool lock)
{
    if (!state.locked && lock && state.dirty) {
        emit setIsDirty(false);
        state.dirty = false;
    }
    if (state.locked && !lock)
        QSpinBox::setValue(state.storedValue);
    setDisabled(state.disabledFor(lock));
    state.locked = lock;
    showNumber(QSpinBox::value());
}

void ZelvarSpinBox::setValue(int raw)
{
    if (!state.connected || !state.defined)
        return;
    const double shown = state.toDisplay(state.rawToPhysical(raw, false));
    QSpinBox::setValue(int(shown));
    state.storedValue = QSpinBox::value();
    state.valueReceived = true;
    showNumber(state.storedValue);
}

int ZelvarSpinBox::value()
{
    return state.physicalToRaw(state.fromDisplay(QSpinBox::value()), false);
}

void ZelvarSpinBox::setObjectName(const QString &name)
{
    state.fieldId = BoundFieldState::fieldIdOf(name);
    QSpinBox::setObjectName(name);
}

void ZelvarSpinBox::connected()
{
    if (state.connected)
        return;
    state.loadUnits();
    BoundFieldState::listenForDevice(this);
    state.connected = true;
}

void ZelvarSpinBox::disconnected()
{
    BoundFieldState::stopListeningForDevice();
    // The placeholder is the range's low end, shown blank.
    state.storedValue = minimum();
    state.connected = false;
    state.valueReceived = false;
    restoreValue();
}

void ZelvarSpinBox::on_deviceLoaded()
{
    if (!state.loadLimits(objectName()))
        return;
    if (!state.unitsHelper)
        state.loadUnits();
    setRange(int(state.toDisplay(state.limits.physicalMin)),
             int(state.toDisplay(state.limits.physicalMax)));
    setSingleStep(int(state.singleStep()));
}

void ZelvarSpinBox::on_valueChanged(int value)
{
    if (!isEnabled())
        return;
    if (value == state.storedValue) {
        emit setIsDirty(false);
        state.dirty = false;
    } else if (!state.dirty) {
        emit setIsDirty(true);
        state.dirty = true;
    }
}

QString ZelvarSpinBox::textFromValue(int value) const
{
    return state.showsValue() ? QSpinBox::textFromValue(value) : QString();
}

// Sets the number and redraws its text, which a change of state alone does not do.
void ZelvarSpinBox::showNumber(int number)
{
    QSpinBox::setValue(number);
    lineEdit()->setText(textFromValue(QSpinBox::value()));
}
