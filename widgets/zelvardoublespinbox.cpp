#include "widgets/zelvardoublespinbox.h"

#include "device/fieldhelper.h"

#include <QLineEdit>
#include <QScopedValueRollback>

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
    state.setEditable(this, enable);
}

void ZelvarDoubleSpinBox::restoreValue()
{
    QDoubleSpinBox::setValue(storedNumber);
    showOrBlank();
    setEditable(false);
}

void ZelvarDoubleSpinBox::setLocked(bool lock)
{
    if (state.withdrawsMarkOnLock(lock))
        emit setIsDirty(false);
    if (state.locked && !lock)
        QDoubleSpinBox::setValue(storedNumber);
    setDisabled(state.disabledFor(lock));
    state.locked = lock;
    showOrBlank();
}

void ZelvarDoubleSpinBox::setValue(int raw)
{
    if (!state.connected || !state.defined)
        return;
    // Most registers repeat from poll to poll; converting and formatting them again
    // would be most of a reply's cost.
    if (state.valueReceived && raw == state.storedValue && QDoubleSpinBox::value() == storedNumber)
        return;
    QDoubleSpinBox::setValue(state.rawToDisplay(raw, BoundFieldState::RawOrigin::RawMin));
    state.storedValue = raw;
    storedNumber = QDoubleSpinBox::value();
    state.valueReceived = true;
    showOrBlank();
}

int ZelvarDoubleSpinBox::value()
{
    // An unedited number gives back the servo's own value: the shown number is rounded
    // to the display's decimals, and converting it back would move the servo's setting
    // a little on every save of the group.
    if (state.valueReceived && QDoubleSpinBox::value() == storedNumber)
        return state.storedValue;
    return state.displayToRaw(QDoubleSpinBox::value(), BoundFieldState::RawOrigin::RawMin);
}

void ZelvarDoubleSpinBox::setObjectName(const QString &name)
{
    state.fieldId = FieldHelper::fieldId(name);
    QDoubleSpinBox::setObjectName(name);
}

void ZelvarDoubleSpinBox::connected()
{
    state.connect(this);
}

void ZelvarDoubleSpinBox::disconnected()
{
    state.disconnect();
    // The placeholder is the range's low end, shown blank.
    storedNumber = minimum();
    restoreValue();
}

void ZelvarDoubleSpinBox::on_deviceLoaded()
{
    if (!state.loadLimits(objectName()))
        return;
    // Decimals first: the range is rounded to them.
    setDecimals(state.decimals());
    setRange(state.toDisplay(state.limits.physicalMin), state.toDisplay(state.limits.physicalMax));
    setSingleStep(state.singleStep());
}

void ZelvarDoubleSpinBox::on_valueChanged(double value)
{
    if (!isEnabled())
        return;
    if (const auto mark = state.markChange(value != storedNumber))
        emit setIsDirty(*mark);
}

QString ZelvarDoubleSpinBox::textFromValue(double value) const
{
    return state.showsValue() || measuring ? QDoubleSpinBox::textFromValue(value) : QString();
}

// Sized for the numbers of its range even while it shows none.
QSize ZelvarDoubleSpinBox::sizeHint() const
{
    const QScopedValueRollback<bool> measure(measuring, true);
    return QDoubleSpinBox::sizeHint();
}

QSize ZelvarDoubleSpinBox::minimumSizeHint() const
{
    const QScopedValueRollback<bool> measure(measuring, true);
    return QDoubleSpinBox::minimumSizeHint();
}

// Turning blank or shown changes no number, so the text is redrawn here. Only then:
// rewriting it on every poll would also wipe out what the user is typing.
void ZelvarDoubleSpinBox::showOrBlank()
{
    if (textShown == state.showsValue())
        return;
    textShown = state.showsValue();
    lineEdit()->setText(textFromValue(QDoubleSpinBox::value()));
}
