#include "widgets/uigrouphelper.h"

#include "link/serialhelper.h"
#include "widgets/igroupinputcomponent.h"
#include "widgets/iservovalue.h"
#include "widgets/iunitdatafield.h"
#include "widgets/zelvargrouptoolbutton.h"
#include "widgets/zelvarparametersgroupbox.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QIcon>
#include <QMessageBox>
#include <QWidget>

namespace {

std::shared_ptr<UiGroupHelper> processHelper;

constexpr uint8_t nonVolatileAddress = 3;
constexpr int nonVolatileLength = 38;
constexpr uint8_t volatileAddress = 48;
constexpr int volatileLength = 60;
// Registers 82 and 84 carry a direction in bit 15 and a magnitude in bits 0 to 14.
constexpr int directionBit = 0x8000;
constexpr int magnitudeBits = 0x7FFF;

enum class Encoding { Raw, BaudRateCode };

// One control's place in a block: its bytes, little-endian, at offset.
struct BlockField
{
    int offset;
    int width;
    const char *name;
    Encoding encoding = Encoding::Raw;
    // The combo box whose index (0 counter-clockwise, 1 clockwise) is bit 15 of the value.
    const char *direction = nullptr;
};

const BlockField nonVolatileFields[] = {
    {0, 1, "idSpinBox"},
    {1, 1, "baudRateComboBox", Encoding::BaudRateCode},
    {2, 1, "ackResponseTimeSpinBox"},
    {3, 1, "operatingModeComboBox"},
    {4, 2, "clockwiseLimitDoubleSpinBox"},
    {6, 2, "counterClockwiseLimitDoubleSpinBox"},
    {8, 1, "temperatureLimitDoubleSpinBox"},
    {9, 1, "minVoltageLimitDoubleSpinBox"},
    {10, 1, "maxVoltageLimitDoubleSpinBox"},
    {11, 2, "quadratureCurrentLimitDoubleSpinBox"},
    {13, 2, "angularVelocityLimitDoubleSpinBox"},
    {15, 2, "accelerationLimitDoubleSpinBox"},
    {17, 4, "hornPositionOffsetDoubleSpinBox"},
    {21, 2, "movingThresholdDoubleSpinBox"},
    {23, 1, "inputModeComboBox"},
    {24, 2, "defPositionProportionalTermDoubleSpinBox"},
    {26, 2, "defVelocityFeedforwardTermDoubleSpinBox"},
    {28, 2, "defCurrentFeedforwardTermDoubleSpinBox"},
    {30, 2, "defVelocityIntegralTermDoubleSpinBox"},
    {32, 2, "defVelocityProportionalTermDoubleSpinBox"},
    {34, 2, "defAngularVelocityProfileDoubleSpinBox"},
    {36, 2, "defAccelerationProfileDoubleSpinBox"},
};

const BlockField volatileFields[] = {
    {0, 1, "enableMotorCheckBox"},
    {1, 1, "pendingShadowInstructionCheckBox"},
    {6, 2, "positionProportionalTermDoubleSpinBox"},
    {8, 2, "velocityFeedforwardTermDoubleSpinBox"},
    {10, 2, "currentFeedforwardTermDoubleSpinBox"},
    {12, 2, "velocityIntegralTermDoubleSpinBox"},
    {14, 2, "velocityProportionalTermDoubleSpinBox"},
    {20, 2, "angularVelocityProfileDoubleSpinBox"},
    {22, 2, "accelerationProfileDoubleSpinBox"},
    {30, 4, "targetPositionDoubleSpinBox"},
    {34, 2, "targetAngularVelocityDoubleSpinBox", Encoding::Raw,
     "targetAngularVelocityDirectionComboBox"},
    {36, 2, "targetTorqueDoubleSpinBox", Encoding::Raw, "targetTorqueDirectionComboBox"},
};

IUnitDataField *fieldNamed(const QWidget *form, const char *name)
{
    if (!form)
        return nullptr;
    return dynamic_cast<IUnitDataField *>(form->findChild<QObject *>(QLatin1String(name)));
}

bool isEdited(IUnitDataField *control)
{
    const auto *value = dynamic_cast<const IServoValue *>(control);
    return value && value->isEdited();
}

int servoValue(const QByteArray &block, const BlockField &field)
{
    int value = 0;
    for (int i = 0; i < field.width; ++i)
        value |= quint8(block[field.offset + i]) << (8 * i);
    return value;
}

// The direction and the magnitude are the user's only where the user changed them (which
// departs from writing the whole register from the two boxes): a box that merely shows a
// value must not flip the wheel's direction or move its target.
int directedValue(const QWidget *form, const BlockField &field, IUnitDataField *magnitude,
                  int servo)
{
    int value = servo;
    if (isEdited(magnitude))
        value = (value & directionBit) | (magnitude->value() & magnitudeBits);
    IUnitDataField *direction = fieldNamed(form, field.direction);
    if (direction && isEdited(direction)) {
        const int index = direction->value();
        if (index == 0)
            value &= ~directionBit;
        else if (index == 1)
            value |= directionBit;
    }
    return value;
}

int encodedValue(const BlockField &field, IUnitDataField *control)
{
    const int value = control->value();
    return field.encoding == Encoding::BaudRateCode ? SerialHelper::baudRateRegisterValue(value)
                                                    : value;
}

// The block starts as the servo's own bytes; only what the user changed is put in.
template<size_t N>
void putFields(QByteArray &block, const QWidget *form, const BlockField (&fields)[N])
{
    for (const BlockField &field : fields) {
        IUnitDataField *control = fieldNamed(form, field.name);
        if (!control)
            continue;
        int value = 0;
        if (field.direction)
            value = directedValue(form, field, control, servoValue(block, field));
        else if (isEdited(control))
            value = encodedValue(field, control);
        else
            continue;
        for (int i = 0; i < field.width; ++i)
            block[field.offset + i] = char((value >> (8 * i)) & 0xFF);
    }
}

ZelvarGroupToolButton *firstButtonWithRole(const QObject *group, int32_t role)
{
    for (QObject *child : group->children()) {
        auto *button = qobject_cast<ZelvarGroupToolButton *>(child);
        if (button && button->role == role)
            return button;
    }
    return nullptr;
}

template<typename Operation>
void forEachInput(const QObject *group, Operation operation)
{
    for (QObject *child : group->children()) {
        if (auto *input = dynamic_cast<IGroupInputComponent *>(child))
            operation(child, input);
    }
}

void showEdit(ZelvarGroupToolButton *button)
{
    button->setIcon(QIcon(QStringLiteral(":/images/edit.png")));
    button->setText(UiGroupHelper::tr("Edit"));
}

// The edit view is built inside the main window's form while its tab page has no parent
// yet, so the view's own window does not hold the actions; the main window, made first,
// is then one of the top-level windows.
QAction *findAction(QWidget *form, const QString &name)
{
    if (auto *action = form->window()->findChild<QAction *>(name))
        return action;
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (auto *action = window->findChild<QAction *>(name))
            return action;
    }
    return nullptr;
}

} // namespace

UiGroupHelper::UiGroupHelper(QWidget *form, QAction *connectAction, QAction *disconnectAction)
    : form(form)
    , connectAction(connectAction)
    , disconnectAction(disconnectAction)
{
    qRegisterMetaType<uint8_t>("uint8_t");
    setUpGroup("realtimeInformationGroupBox", [] {});
    setUpGroup("versionInfoGroupBox", [] {});
    setUpGroup("nonVolatileParamsGroupBox", [this] { saveNonVolatile(); });
    setUpGroup("volatileParamsGroupBox", [this] { saveVolatile(); });
    setUpGroup("zelvarHardwareErrorGroupBox", nullptr);
    setUpGroup("zelvarPacketStatusGroupBox", nullptr);
    if (!form)
        return;
    if (auto *enableMotor = form->findChild<QCheckBox *>(QStringLiteral("enableMotorCheckBox")))
        connect(enableMotor, SIGNAL(toggled(bool)), this,
                SLOT(on_enableMotorCheckBox_toggled(bool)));
}

std::shared_ptr<UiGroupHelper> UiGroupHelper::instance()
{
    return processHelper;
}

std::shared_ptr<UiGroupHelper> UiGroupHelper::create(QWidget *form)
{
    if (!processHelper) {
        // Without a form (a scheduler that comes first) there are no groups and no actions.
        processHelper = std::make_shared<UiGroupHelper>(
            form, form ? findAction(form, QStringLiteral("actionConnect")) : nullptr,
            form ? findAction(form, QStringLiteral("actionDisconnect")) : nullptr);
    }
    return processHelper;
}

void UiGroupHelper::setRegisterSource(RegisterSource source)
{
    registerSource = std::move(source);
}

void UiGroupHelper::setUpGroup(const char *groupName, std::function<void()> save)
{
    if (!form)
        return;
    auto *group = form->findChild<ZelvarParametersGroupBox *>(QLatin1String(groupName));
    if (!group)
        return;
    if (connectAction)
        connect(connectAction, SIGNAL(triggered()), group, SLOT(connected()));
    if (disconnectAction)
        connect(disconnectAction, SIGNAL(triggered()), group, SLOT(disconnected()));

    if (auto *cancel = firstButtonWithRole(group, ZelvarGroupToolButton::Cancel))
        connect(cancel, SIGNAL(pressed()), this, SLOT(on_limitsCancelToolButton_pressed()));

    ZelvarGroupToolButton *editSave = firstButtonWithRole(group, ZelvarGroupToolButton::EditSave);
    if (!editSave)
        return;
    if (connectAction)
        connect(connectAction, SIGNAL(triggered()), editSave, SLOT(connected()));
    if (disconnectAction)
        connect(disconnectAction, SIGNAL(triggered()), editSave, SLOT(disconnected()));
    connect(editSave, SIGNAL(toggled(bool)), this, SLOT(on_editSaveToolButton_toggled(bool)));
    connect(editSave, SIGNAL(pressed()), this, SLOT(on_editSaveToolButton_pressed()));
    editSave->saveAction = std::move(save);
    editableGroups.emplace_back(group, editSave);

    forEachInput(group, [editSave](QObject *child, IGroupInputComponent *) {
        connect(child, SIGNAL(setIsDirty(bool)), editSave, SLOT(incrementReferenceCount(bool)));
    });
}

QByteArray UiGroupHelper::nonVolatileBlock() const
{
    QByteArray block = lastRead(nonVolatileAddress, nonVolatileLength);
    if (!block.isEmpty())
        putFields(block, form, nonVolatileFields);
    return block;
}

QByteArray UiGroupHelper::volatileBlock() const
{
    // Its gaps are no controls' at all; they also keep the servo's values.
    QByteArray block = lastRead(volatileAddress, volatileLength);
    if (!block.isEmpty())
        putFields(block, form, volatileFields);
    return block;
}

QByteArray UiGroupHelper::lastRead(uint8_t address, int length) const
{
    const QByteArray known = registerSource ? registerSource(address, length) : QByteArray();
    return known.size() >= length ? known.left(length) : QByteArray();
}

void UiGroupHelper::saveNonVolatile()
{
    save(nonVolatileAddress, nonVolatileBlock());
}

void UiGroupHelper::saveVolatile()
{
    save(volatileAddress, volatileBlock());
}

void UiGroupHelper::save(uint8_t address, const QByteArray &block)
{
    if (!form)
        return;
    if (block.isEmpty()) {
        QMessageBox::critical(form, tr("Error"),
                              tr("The servo's values have not been read yet, so nothing was "
                                 "written. Apply again once they show."));
        return;
    }
    emit addQueueRequest(address, block);
}

void UiGroupHelper::enableEditWhereValued()
{
    for (const auto &[group, editSave] : editableGroups) {
        if (!group || !editSave || !editSave->isLive() || editSave->isValued())
            continue;
        bool valued = true;
        forEachInput(group, [&valued](QObject *child, IGroupInputComponent *) {
            const auto *value = dynamic_cast<const IServoValue *>(child);
            valued = valued && (!value || value->holdsServoValue());
        });
        if (valued)
            editSave->markValued();
    }
}

void UiGroupHelper::on_editSaveToolButton_toggled(bool checked)
{
    auto *button = qobject_cast<ZelvarGroupToolButton *>(sender());
    auto *group = button ? qobject_cast<ZelvarParametersGroupBox *>(button->parent()) : nullptr;
    if (!group)
        return;
    group->editMode = checked;
    for (QObject *child : group->children()) {
        auto *toolButton = qobject_cast<ZelvarGroupToolButton *>(child);
        if (toolButton && toolButton->role == ZelvarGroupToolButton::Cancel)
            toolButton->setEnabled(checked);
    }
    forEachInput(
        group, [checked](QObject *, IGroupInputComponent *input) { input->setEditable(checked); });
    if (checked) {
        button->setIcon(QIcon(QStringLiteral(":/images/apply.png")));
        button->setText(tr("Apply"));
        // Enabled again when the first field turns dirty.
        button->setEnabled(false);
    } else {
        showEdit(button);
        button->enableIfLive(true);
        button->clearReferenceCount();
        followEnableMotor(group);
    }
}

// While the volatile group is edited, the motor box changes without the rule running, and
// a poll that shows the same state does not toggle it again. Once the group leaves edit
// mode, the non-volatile group follows what the box shows, so that it cannot be edited
// while the motor runs (the servo would refuse that write).
void UiGroupHelper::followEnableMotor(const ZelvarParametersGroupBox *group)
{
    if (!form || group->objectName() != QLatin1String("volatileParamsGroupBox"))
        return;
    const auto *nonVolatile =
        form->findChild<ZelvarParametersGroupBox *>(QStringLiteral("nonVolatileParamsGroupBox"));
    const auto *enableMotor = form->findChild<QCheckBox *>(QStringLiteral("enableMotorCheckBox"));
    ZelvarGroupToolButton *editSave = editSaveButtonOf("nonVolatileParamsGroupBox");
    if (nonVolatile && !nonVolatile->editMode && enableMotor && editSave)
        editSave->enableIfLive(!enableMotor->isChecked());
}

void UiGroupHelper::on_editSaveToolButton_pressed()
{
    // Pressed comes before the toggle, so the group is still in edit mode here.
    auto *button = qobject_cast<ZelvarGroupToolButton *>(sender());
    if (button && button->isChecked() && button->saveAction)
        button->saveAction();
}

void UiGroupHelper::on_limitsCancelToolButton_pressed()
{
    auto *group = sender() ? qobject_cast<ZelvarParametersGroupBox *>(sender()->parent()) : nullptr;
    if (!group)
        return;
    group->editMode = false;
    ZelvarGroupToolButton *cancel = nullptr;
    ZelvarGroupToolButton *editSave = nullptr;
    for (QObject *child : group->children()) {
        if (auto *button = qobject_cast<ZelvarGroupToolButton *>(child))
            (button->text() == QLatin1String("Cancel") ? cancel : editSave) = button;
    }
    if (!cancel || !editSave)
        return;
    // Checked first, then unchecked: the toggle handler then runs for "unchecked" even
    // when the group was not being edited.
    editSave->setChecked(true);
    forEachInput(group, [](QObject *, IGroupInputComponent *input) { input->restoreValue(); });
    cancel->setEnabled(false);
    editSave->setChecked(false);
    editSave->enableIfLive(true);
    showEdit(editSave);
}

void UiGroupHelper::on_enableMotorCheckBox_toggled(bool checked)
{
    if (!form)
        return;
    const auto *volatileEditSave =
        form->findChild<ZelvarGroupToolButton *>(QStringLiteral("vParamsEditSaveToolButton"));
    if (volatileEditSave && volatileEditSave->isChecked())
        return;
    const QObject *source = sender() ? sender()->parent() : nullptr;
    bool enable = !checked;
    const char *target = "volatileParamsGroupBox";
    if (source && source->objectName() == QLatin1String("volatileParamsGroupBox")) {
        const auto *enableMotor =
            form->findChild<QCheckBox *>(QStringLiteral("enableMotorCheckBox"));
        enable = !checked && !(enableMotor && enableMotor->isChecked());
        target = "nonVolatileParamsGroupBox";
    }
    // A disconnect restores the box, which toggles it after the button went offline.
    if (ZelvarGroupToolButton *editSave = editSaveButtonOf(target))
        editSave->enableIfLive(enable);
}

ZelvarGroupToolButton *UiGroupHelper::editSaveButtonOf(const char *groupName) const
{
    const auto *group = form->findChild<ZelvarParametersGroupBox *>(QLatin1String(groupName));
    return group ? firstButtonWithRole(group, ZelvarGroupToolButton::EditSave) : nullptr;
}
