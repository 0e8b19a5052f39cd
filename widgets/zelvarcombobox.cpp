#include "widgets/zelvarcombobox.h"

#include "device/fieldhelper.h"
#include "widgets/ifielddependency.h"

#include <QListView>
#include <QStyleOptionComboBox>
#include <QStylePainter>

namespace {

const char disconnectedStyle[] =
    "QComboBox:enabled { background-color:white; } QComboBox:disabled { border: 1px solid "
    "#D6D3D1; background-color:#ECEAE9; color: #B3B3B3; padding: 1px 0px 1px 3px; "
    "selection-color: #5C5C61; }";
const char connectedStyle[] =
    "QComboBox:enabled { background-color:white; } QComboBox:disabled { border: 1px solid "
    "#D6D3D1; background-color:#ECEAE9; color: #5C5C61; padding: 1px 0px 1px 3px; "
    "selection-color: #5C5C61; }";

// The servo's index 10 never marks a combo box dirty; kept on purpose.
constexpr int alwaysCleanIndex = 10;

} // namespace

ZelvarComboBox::ZelvarComboBox(QWidget *parent)
    : QComboBox(parent)
    , state(parent)
{
    setView(new QListView(this));
    setStyleSheet(disconnectedStyle);
    setEnabled(false);
    connect(this, SIGNAL(currentIndexChanged(int)), this, SLOT(on_currentIndexChanged(int)));
}

void ZelvarComboBox::setEditable(bool enable)
{
    state.setEditable(this, enable);
}

void ZelvarComboBox::restoreValue()
{
    setCurrentIndex(state.storedValue);
    setEditable(false);
}

void ZelvarComboBox::setLocked(bool lock)
{
    if (state.withdrawsMarkOnLock(lock))
        emit setIsDirty(false);
    // Unlocking brings back the servo's value, not an edit made before the lock.
    if (state.locked && !lock)
        setCurrentIndex(state.storedValue);
    setDisabled(state.disabledFor(lock));
    // The mode controllers set every lock on every poll; only a change needs painting.
    if (state.locked != lock) {
        state.locked = lock;
        update();
    }
}

void ZelvarComboBox::setValue(int raw)
{
    if (!state.connected || !state.defined)
        return;
    // An index the list does not have leaves the box on its own choice.
    if (raw >= 0 && raw < count())
        setCurrentIndex(raw);
    state.storedValue = currentIndex();
    // A new index repaints by itself; only the first value turns the text on.
    if (!state.valueReceived) {
        state.valueReceived = true;
        update();
    }
}

void ZelvarComboBox::setObjectName(const QString &name)
{
    state.fieldId = FieldHelper::fieldId(name);
    QComboBox::setObjectName(name);
}

void ZelvarComboBox::applyDependency()
{
    if (state.limits.controller)
        state.limits.controller->apply();
}

QString ZelvarComboBox::displayedText() const
{
    return state.showsValue() ? currentText() : QString();
}

void ZelvarComboBox::connected()
{
    if (!state.connect(this))
        return;
    setStyleSheet(connectedStyle);
    if (auto *list = qobject_cast<QListView *>(view()))
        list->setRowHidden(placeholderIndex(), true);
}

void ZelvarComboBox::disconnected()
{
    if (state.connected)
        setStyleSheet(disconnectedStyle);
    state.disconnect();
    state.storedValue = placeholderIndex();
    restoreValue();
    setCurrentIndex(placeholderIndex());
    if (auto *list = qobject_cast<QListView *>(view()))
        list->setRowHidden(placeholderIndex(), false);
}

void ZelvarComboBox::on_deviceLoaded()
{
    state.loadLimits(objectName());
    update();
}

void ZelvarComboBox::on_currentIndexChanged(int value)
{
    if (!isEnabled())
        return;
    if (const auto mark = state.markChange(isChangedIndex(value)))
        emit setIsDirty(*mark);
}

bool ZelvarComboBox::isChangedIndex(int index) const
{
    return index != state.storedValue && index != alwaysCleanIndex;
}

void ZelvarComboBox::paintEvent(QPaintEvent *)
{
    QStylePainter painter(this);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    option.currentText = displayedText();
    if (option.currentText.isEmpty())
        option.currentIcon = QIcon();
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}
