#pragma once

#include "device/devicehelper.h"
#include "ui_editview.h"
#include "widgets/iunitdatafield.h"
#include "widgets/zelvargrouptoolbutton.h"
#include "widgets/zelvarparametersgroupbox.h"

#include <QAction>
#include <memory>

// The process's device helper, made first: controls listen to it when they connect.
inline std::shared_ptr<DeviceHelper> deviceHelper()
{
    return DeviceHelper::instance(nullptr, [] {});
}

// Identifies a servo as a connection does, from bytes 5 and 6 of its model-number reply:
// 12, 0 is the AX-12, anything else the own family.
inline void loadDevice(bool dynamixelAx12 = false)
{
    QByteArray reply(11, '\0');
    reply[5] = char(dynamixelAx12 ? 12 : 13);
    deviceHelper()->onModelNumberRead(reply);
}

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

    // What the connect and disconnect actions reach: both parameter groups and their
    // edit/save buttons. Connecting then loads a device model.
    void connectLink(bool dynamixelAx12 = false)
    {
        deviceHelper();
        forEachLinked([](IConnectInfo *info) { info->connected(); });
        loadDevice(dynamixelAx12);
    }
    void disconnectLink()
    {
        forEachLinked([](IConnectInfo *info) { info->disconnected(); });
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
    template<typename Operation>
    void forEachLinked(Operation operation)
    {
        // In the order the group helper connects them to the actions.
        operation(ui.nonVolatileParamsGroupBox);
        operation(ui.nvParamsEditSaveToolButton);
        operation(ui.volatileParamsGroupBox);
        operation(ui.vParamsEditSaveToolButton);
    }

    std::unique_ptr<QWidget> form = std::make_unique<QWidget>();
};
