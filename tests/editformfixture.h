#pragma once

#include "device/devicehelper.h"
#include "ui_editview.h"
#include "widgets/iunitdatafield.h"
#include "widgets/zelvargrouptoolbutton.h"
#include "widgets/zelvarparametersgroupbox.h"

#include <QAction>
#include <memory>

// The edit view's form without the view's process-wide helpers, plus the main window's
// connect and disconnect actions. Header-only: only test targets generate ui_editview.h.
class EditFormFixture
{
public:
    EditFormFixture()
    {
        ui.setupUi(form.get());
        ui.nvParamsCancelToolButton->role = ZelvarGroupToolButton::Cancel;
        ui.vParamsCancelToolButton->role = ZelvarGroupToolButton::Cancel;
    }

    QWidget *root() const { return form.get(); }
    template<typename T>
    T *find(const QString &name) const
    {
        return form->findChild<T *>(name);
    }
    IUnitDataField *field(const QString &name) const
    {
        return dynamic_cast<IUnitDataField *>(find<QObject>(name));
    }

    // Tells both parameter groups that the link is up, then loads a device model
    // (the AX-12 or the own family's) into the device helper the controls read.
    void connectLink(bool dynamixelAx12 = false)
    {
        const auto deviceHelper = DeviceHelper::instance(nullptr, [] {});
        ui.nonVolatileParamsGroupBox->connected();
        ui.volatileParamsGroupBox->connected();
        for (auto *button : form->findChildren<ZelvarGroupToolButton *>())
            button->connected();
        QByteArray reply(11, '\0');
        reply[5] = char(dynamixelAx12 ? 12 : 13);
        deviceHelper->onModelNumberRead(reply);
    }
    // What the poll binder does with a value: dependency first, then the value unless
    // the group is being edited.
    void deliver(const QString &name, int raw) const
    {
        IUnitDataField *target = field(name);
        target->applyDependency();
        auto *owner =
            qobject_cast<ZelvarParametersGroupBox *>(dynamic_cast<QObject *>(target)->parent());
        if (!owner || !owner->editMode)
            target->setValue(raw);
    }

    Ui::EditView ui;
    QAction connectAction;
    QAction disconnectAction;

private:
    std::unique_ptr<QWidget> form = std::make_unique<QWidget>();
};
