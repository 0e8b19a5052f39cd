#include "widgets/zelvarbaudratecombobox.h"

#include "link/serialhelper.h"

ZelvarBaudRateComboBox::ZelvarBaudRateComboBox(QWidget *parent)
    : ZelvarComboBox(parent)
{}

void ZelvarBaudRateComboBox::setEditable(bool enable)
{
    if (state.locked)
        return;
    if (enable)
        state.storedValue = currentIndex();
    state.setEditable(this, enable);
}

void ZelvarBaudRateComboBox::setValue(int raw)
{
    if (!state.connected)
        return;
    // A code the list does not know shows the placeholder rather than an empty box.
    const int index = SerialHelper::baudRateIndex(raw);
    setCurrentIndex(index >= 0 && index < count() ? index : placeholderIndex());
    state.storedValue = currentIndex();
    if (!state.valueReceived) {
        state.valueReceived = true;
        update();
    }
}

void ZelvarBaudRateComboBox::on_deviceLoaded()
{
    // Every model has a baud rate, but none maps it through a limits record.
    state.defined = true;
    update();
}

bool ZelvarBaudRateComboBox::isChangedIndex(int index) const
{
    return index != state.storedValue && index != placeholderIndex();
}
