#include "widgets/zelvarspinbox.h"

#include "device/fieldhelper.h"

#include <QLineEdit>
#include <QScopedValueRollback>

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
    state.setEditable(this, enable);
}

void ZelvarSpinBox::restoreValue()
{
    QSpinBox::setValue(state.storedValue);
    showOrBlank();
    setEditable(false);
}

void ZelvarSpinBox::setLocked(bool lock)
{
    if (state.withdrawsMarkOnLock(lock))
        emit setIsDirty(false);
    if (state.locked && !lock)
        QSpinBox::setValue(state.storedValue);
    setDisabled(state.disabledFor(lock));
    state.locked = lock;
    showOrBlank();
}

void ZelvarSpinBox::setValue(int raw)
{
    if (!state.connected || !state.defined)
        return;
    // No rawMin offset here, unlike the double spin box; that difference is kept.
    QSpinBox::setValue(int(state.rawToDisplay(raw, BoundFieldState::RawOrigin::Zero)));
    state.storedValue = QSpinBox::value();
    state.valueReceived = true;
    showOrBlank();
}

int ZelvarSpinBox::value()
{
    return state.displayToRaw(QSpinBox::value(), BoundFieldState::RawOrigin::Zero);
}

void ZelvarSpinBox::setObjectName(const QString &name)
{
    state.fieldId = FieldHelper::fieldId(name);
    QSpinBox::setObjectName(name);
}

void ZelvarSpinBox::connected()
{
    state.connect(this);
}

void ZelvarSpinBox::disconnected()
{
    state.disconnect();
    // The placeholder is the range's low end, shown blank.
    state.storedValue = minimum();
    restoreValue();
}

void ZelvarSpinBox::on_deviceLoaded()
{
    if (!state.loadLimits(objectName()))
        return;
    setRange(int(state.toDisplay(state.limits.physicalMin)),
             int(state.toDisplay(state.limits.physicalMax)));
    setSingleStep(int(state.singleStep()));
}

void ZelvarSpinBox::on_valueChanged(int value)
{
    if (!isEnabled())
        return;
    if (const auto mark = state.markChange(value != state.storedValue))
        emit setIsDirty(*mark);
}

QString ZelvarSpinBox::textFromValue(int value) const
{
    return state.showsValue() || measuring ? QSpinBox::textFromValue(value) : QString();
}

// Sized for the numbers of its range even while it shows none.
QSize ZelvarSpinBox::sizeHint() const
{
    const QScopedValueRollback<bool> measure(measuring, true);
    return QSpinBox::sizeHint();
}

QSize ZelvarSpinBox::minimumSizeHint() const
{
    const QScopedValueRollback<bool> measure(measuring, true);
    return QSpinBox::minimumSizeHint();
}

// Turning blank or shown changes no number, so the text is redrawn here. Only then:
// rewriting it on every poll would also wipe out what the user is typing.
void ZelvarSpinBox::showOrBlank()
{
    if (textShown == state.showsValue())
        return;
    textShown = state.showsValue();
    lineEdit()->setText(textFromValue(QSpinBox::value()));
}
