#pragma once

#include "widgets/iconnectinfo.h"

#include <QToolButton>
#include <cstdint>
#include <functional>

// The edit/save or cancel button of a parameters group. The edit/save button counts the
// group's dirty fields and is enabled while any is dirty.
class ZelvarGroupToolButton : public QToolButton, public IConnectInfo
{
    Q_OBJECT

public:
    enum Role { EditSave = 0, Cancel = 1 };

    explicit ZelvarGroupToolButton(QWidget *parent = nullptr);

    int32_t referenceCount = 0;
    // Set by the form code: EditSave or Cancel.
    int32_t role = EditSave;
    // The group's save, bound by UiGroupHelper.
    std::function<void()> saveAction;

    // Whether a device that the group can be written to is loaded: from the device's
    // arrival to the next disconnect.
    bool isLive() const { return live; }
    // Whether every field of the group holds a value read from that device.
    bool isValued() const { return valued; }
    // setEnabled for the rules that enable Edit: never while no such device is loaded or
    // a field still waits for its first value; the wish is kept until then.
    void enableIfLive(bool enable);
    // Every field of the group now holds a servo value: Edit follows the rules from here.
    void markValued();

public slots:
    void connected() override;
    void disconnected() override;
    void incrementReferenceCount(bool dirty);
    void clearReferenceCount();
    void on_deviceLoaded();

private:
    bool live = false;
    bool valued = false;
    bool wanted = false;
};
