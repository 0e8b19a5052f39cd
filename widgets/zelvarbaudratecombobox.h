#pragma once

#include "widgets/zelvarcombobox.h"

// The servo's baud-rate choice. Its raw value is the servo's baud-rate code, which the
// serial helper maps to an item index and back; it has no limits record and no mode.
class ZelvarBaudRateComboBox : public ZelvarComboBox
{
    Q_OBJECT

public:
    explicit ZelvarBaudRateComboBox(QWidget *parent = nullptr);

    void setEditable(bool enable) override;
    void setValue(int raw) override;
    void applyDependency() override {}

public slots:
    void on_deviceLoaded() override;

protected:
    bool isChangedIndex(int index) const override;
};
