#pragma once

#include <QByteArray>
#include <QObject>
#include <QPointer>
#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

class QAction;
class QWidget;
class ZelvarGroupToolButton;
class ZelvarParametersGroupBox;

// Wires the parameter groups of the edit view: connect and disconnect reach every group
// and its edit/save button, dirty fields enable "Apply", and a save writes the group's
// registers to the servo as one block through addQueueRequest().
class UiGroupHelper : public QObject
{
    Q_OBJECT

public:
    // The registers [address, address + length) as last read from the servo, or fewer
    // bytes when they are not known.
    using RegisterSource = std::function<QByteArray(uint8_t address, int length)>;

    // form is the edit view's widget tree, searched for its groups by object name. The
    // actions are the main window's connect and disconnect; either may be null.
    UiGroupHelper(QWidget *form, QAction *connectAction, QAction *disconnectAction);

    // The process-wide helper, or null before create().
    static std::shared_ptr<UiGroupHelper> instance();
    // Creates the process-wide helper once. The edit view is built inside the main
    // window's form, whose actions are made first, so they are found by name in form's
    // window or, while the view's tab page is not yet placed, in a top-level window.
    // A null form makes a helper with no groups, whose signal can still be connected.
    static std::shared_ptr<UiGroupHelper> create(QWidget *form);

    // The servo's own last values: a block is written whole, so every byte the user did
    // not change gets them back.
    void setRegisterSource(RegisterSource source);

    // Empty while the servo's values of the block are not known.
    QByteArray nonVolatileBlock() const;
    QByteArray volatileBlock() const;

    // After each poll reply: a group's Edit comes on once every field holds a servo value.
    void enableEditWhereValued();

signals:
    void addQueueRequest(uint8_t address, const QByteArray &data);

public slots:
    void on_editSaveToolButton_toggled(bool checked);
    void on_editSaveToolButton_pressed();
    void on_limitsCancelToolButton_pressed();
    void on_enableMotorCheckBox_toggled(bool checked);

private:
    void setUpGroup(const char *groupName, std::function<void()> save);
    void followEnableMotor(const ZelvarParametersGroupBox *group);
    void saveNonVolatile();
    void saveVolatile();
    void save(uint8_t address, const QByteArray &block);
    ZelvarGroupToolButton *editSaveButtonOf(const char *groupName) const;
    QByteArray lastRead(uint8_t address, int length) const;

    // This helper outlives the view it was made for; these tell when that view is gone.
    QPointer<QWidget> form;
    QPointer<QAction> connectAction;
    QPointer<QAction> disconnectAction;
    RegisterSource registerSource;
    std::vector<std::pair<QPointer<ZelvarParametersGroupBox>, QPointer<ZelvarGroupToolButton>>>
        editableGroups;
};
