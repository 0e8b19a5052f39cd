#include "widgets/zelvarlineedit.h"

#include "device/fieldhelper.h"

#include <QLocale>

namespace {

enum FieldKind { PlainValue, PhysicalValue, ModelNumber };

FieldKind kindOf(int32_t fieldId)
{
    constexpr int32_t unusedId = 12;
    constexpr int32_t modelNumberId = 17;
    if (fieldId == modelNumberId)
        return ModelNumber;
    if (fieldId >= 0 && fieldId < modelNumberId && fieldId != unusedId)
        return PhysicalValue;
    return PlainValue;
}

} // namespace

ZelvarLineEdit::ZelvarLineEdit(QWidget *parent)
    : QLineEdit(parent)
    , state(parent)
{
    connect(this, SIGNAL(textChanged(QString)), this, SLOT(on_textChanged(QString)));
    setStyleSheet(QStringLiteral("QLineEdit:enabled { background-color:white; } "
                                 "QLineEdit:disabled { background-color:#ECEAE9; color: "
                                 "#5C5C61; }"));
    setEnabled(false);
}

void ZelvarLineEdit::setEditable(bool enable)
{
    if (state.locked)
        return;
    if (enable)
        storedText = text();
    state.setEditable(this, enable);
}

void ZelvarLineEdit::restoreValue()
{
    setText(storedText);
    setEditable(false);
}

void ZelvarLineEdit::setLocked(bool lock)
{
    if (state.withdrawsMarkOnLock(lock))
        emit setIsDirty(false);
    if (state.locked && !lock)
        setText(storedText);
    setDisabled(state.disabledFor(lock));
    state.locked = lock;
}

void ZelvarLineEdit::setValue(int raw)
{
    if (!state.connected || !state.defined)
        return;
    // Most registers repeat from poll to poll; formatting them again would be most of a
    // reply's cost.
    if (state.valueReceived && raw == state.storedValue && text() == storedText)
        return;
    storedText = format(raw);
    state.storedValue = raw;
    if (text() != storedText)
        setText(storedText);
    state.valueReceived = true;
}

QString ZelvarLineEdit::format(int raw) const
{
    switch (kindOf(state.fieldId)) {
    case PhysicalValue:
        return QStringLiteral("%L1").arg(
            state.rawToDisplay(raw, BoundFieldState::RawOrigin::RawMin), 1, 'f', state.decimals());
    case ModelNumber:
        return QStringLiteral("%1%2%3").arg(raw / 256).arg(QLocale().decimalPoint()).arg(raw % 256);
    case PlainValue:
        break;
    }
    return QString::number(raw);
}

void ZelvarLineEdit::setObjectName(const QString &name)
{
    state.fieldId = FieldHelper::fieldId(name);
    QLineEdit::setObjectName(name);
}

void ZelvarLineEdit::connected()
{
    state.connect(this);
}

void ZelvarLineEdit::disconnected()
{
    state.disconnect();
    // The placeholder of a line edit is an empty text.
    storedText.clear();
    restoreValue();
}

void ZelvarLineEdit::on_deviceLoaded()
{
    state.loadLimits(objectName());
}

void ZelvarLineEdit::on_textChanged(const QString &value)
{
    if (!isEnabled())
        return;
    if (const auto mark = state.markChange(value != storedText))
        emit setIsDirty(*mark);
}
