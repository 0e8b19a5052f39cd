#pragma once

#include <QAction>
#include <QString>
#include <QWidget>
#include <memory>

class IUnitDataField;
class ZelvarGroupToolButton;
class ZelvarParametersGroupBox;

// The two parameter groups of the edit view, built by hand with every bound control
// under its form name, plus the main window's connect and disconnect actions.
class EditFormFixture
{
public:
    EditFormFixture();
    ~EditFormFixture();

    QWidget *root() const { return form.get(); }

    template<typename T>
    T *find(const QString &name) const
    {
        return form->findChild<T *>(name);
    }
    IUnitDataField *field(const QString &name) const;
    ZelvarParametersGroupBox *group(const QString &name) const;
    ZelvarGroupToolButton *button(const QString &name) const;

    // Tells every group that the link is up, then loads a device model into the
    // process-wide device helper, which the controls read their limits from.
    void connectLink(bool dynamixelAx12 = false);
    // What the poll binder does with a value: dependency first, then the value unless
    // the group is being edited.
    void deliver(const QString &name, int raw) const;

    QAction connectAction;
    QAction disconnectAction;

private:
    std::unique_ptr<QWidget> form;
};
