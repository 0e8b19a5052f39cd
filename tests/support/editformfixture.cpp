#include "editformfixture.h"

#include "device/devicehelper.h"
#include "widgets/iunitdatafield.h"
#include "widgets/zelvarbaudratecombobox.h"
#include "widgets/zelvarcheckbox.h"
#include "widgets/zelvarcombobox.h"
#include "widgets/zelvardoublespinbox.h"
#include "widgets/zelvargrouptoolbutton.h"
#include "widgets/zelvarlabel.h"
#include "widgets/zelvarparametersgroupbox.h"
#include "widgets/zelvarspinbox.h"
#include "widgets/zelvarunitlabel.h"

#include <QStringList>

namespace {

enum Kind { Spin, Double, Combo, Mode, InputMode, Direction, Baud, Check, Label, Unit };

struct Row
{
    const char *group;
    Kind kind;
    const char *name;
};

const char nv[] = "nonVolatileParamsGroupBox";
const char vo[] = "volatileParamsGroupBox";

const Row rows[] = {
    {nv, Baud, "baudRateComboBox"},
    {nv, Unit, "idLabel"},
    {nv, Spin, "idSpinBox"},
    {nv, Unit, "ackResponseTimeLabel"},
    {nv, Spin, "ackResponseTimeSpinBox"},
    {nv, Mode, "operatingModeComboBox"},
    {nv, Label, "inputModeLabel"},
    {nv, InputMode, "inputModeComboBox"},
    {nv, Unit, "clockwiseAngleLimitLabel"},
    {nv, Double, "clockwiseLimitDoubleSpinBox"},
    {nv, Unit, "counterClockwiseAngleLimitLabel"},
    {nv, Double, "counterClockwiseLimitDoubleSpinBox"},
    {nv, Unit, "upperTemperatureLimitLabel"},
    {nv, Double, "temperatureLimitDoubleSpinBox"},
    {nv, Unit, "minVoltageLimitLabel"},
    {nv, Double, "minVoltageLimitDoubleSpinBox"},
    {nv, Unit, "maxVoltageLimitLabel"},
    {nv, Double, "maxVoltageLimitDoubleSpinBox"},
    {nv, Unit, "quadratureCurrentLimitLabel"},
    {nv, Double, "quadratureCurrentLimitDoubleSpinBox"},
    {nv, Unit, "angularVelocityLimitLabel"},
    {nv, Double, "angularVelocityLimitDoubleSpinBox"},
    {nv, Unit, "accelerationLimitLabel"},
    {nv, Double, "accelerationLimitDoubleSpinBox"},
    {nv, Unit, "hornPositionOffsetLabel"},
    {nv, Double, "hornPositionOffsetDoubleSpinBox"},
    {nv, Unit, "movingThresholdLabel"},
    {nv, Double, "movingThresholdDoubleSpinBox"},
    {nv, Label, "defPositionProportionalTermLabel"},
    {nv, Double, "defPositionProportionalTermDoubleSpinBox"},
    {nv, Label, "defVelocityFeedforwardTermLabel"},
    {nv, Double, "defVelocityFeedforwardTermDoubleSpinBox"},
    {nv, Label, "defVelocityProportionalTermLabel"},
    {nv, Double, "defVelocityProportionalTermDoubleSpinBox"},
    {nv, Label, "defVelocityIntegralTermLabel"},
    {nv, Double, "defVelocityIntegralTermDoubleSpinBox"},
    {nv, Label, "defCurrentFeedforwardTermLabel"},
    {nv, Double, "defCurrentFeedforwardTermDoubleSpinBox"},
    {nv, Unit, "defAngularVelocityProfileLabel"},
    {nv, Double, "defAngularVelocityProfileDoubleSpinBox"},
    {nv, Unit, "defAccelerationProfileLabel"},
    {nv, Double, "defAccelerationProfileDoubleSpinBox"},
    {vo, Unit, "targetPositionLabel"},
    {vo, Double, "targetPositionDoubleSpinBox"},
    {vo, Label, "positionProportionalTermLabel"},
    {vo, Double, "positionProportionalTermDoubleSpinBox"},
    {vo, Label, "velocityFeedforwardTermLabel"},
    {vo, Double, "velocityFeedforwardTermDoubleSpinBox"},
    {vo, Unit, "targetAngularVelocityLabel"},
    {vo, Double, "targetAngularVelocityDoubleSpinBox"},
    {vo, Label, "targetAngularVelocityDirectionLabel"},
    {vo, Direction, "targetAngularVelocityDirectionComboBox"},
    {vo, Label, "velocityProportionalTermLabel"},
    {vo, Double, "velocityProportionalTermDoubleSpinBox"},
    {vo, Label, "velocityIntegralTermLabel"},
    {vo, Double, "velocityIntegralTermDoubleSpinBox"},
    {vo, Label, "currentFeedforwardTermLabel"},
    {vo, Double, "currentFeedforwardTermDoubleSpinBox"},
    {vo, Unit, "targetTorqueLabel"},
    {vo, Double, "targetTorqueDoubleSpinBox"},
    {vo, Label, "targetTorqueDirectionLabel"},
    {vo, Direction, "targetTorqueDirectionComboBox"},
    {vo, Unit, "angularVelocityProfileLabel"},
    {vo, Double, "angularVelocityProfileDoubleSpinBox"},
    {vo, Unit, "accelerationProfileLabel"},
    {vo, Double, "accelerationProfileDoubleSpinBox"},
    {vo, Check, "enableMotorCheckBox"},
    {vo, Check, "pendingShadowInstructionCheckBox"},
};

QStringList itemsOf(Kind kind)
{
    switch (kind) {
    case Mode:
        return {"Torque", "Wheel", "Joint", "Multi-turn", "Stepper", "-"};
    case InputMode:
        return {"Trajectory", "Position", "-"};
    case Direction:
        return {"Counter-clockwise", "Clockwise", "-"};
    case Baud:
        return {"9600",   "19200",  "38400",  "57600",   "115200",  "200000",
                "250000", "400000", "500000", "1000000", "2000000", "-"};
    default:
        return {};
    }
}

template<typename T>
void name(T *widget, const char *objectName)
{
    widget->setObjectName(QLatin1String(objectName));
}

void addControl(QWidget *group, const Row &row)
{
    switch (row.kind) {
    case Spin:
        name(new ZelvarSpinBox(group), row.name);
        break;
    case Double:
        name(new ZelvarDoubleSpinBox(group), row.name);
        break;
    case Combo:
    case Mode:
    case InputMode:
    case Direction: {
        auto *box = new ZelvarComboBox(group);
        name(box, row.name);
        box->addItems(itemsOf(row.kind));
        break;
    }
    case Baud: {
        auto *box = new ZelvarBaudRateComboBox(group);
        name(box, row.name);
        box->addItems(itemsOf(row.kind));
        break;
    }
    case Check: {
        auto *box = new ZelvarCheckBox(group);
        name(box, row.name);
        box->setText(QLatin1String(row.name));
        break;
    }
    case Label:
        name(new ZelvarLabel(group), row.name);
        break;
    case Unit: {
        auto *label = new ZelvarUnitLabel(group);
        name(label, row.name);
        label->setText(QLatin1String(row.name));
        break;
    }
    }
}

void addButtons(QWidget *group, const char *cancelName, const char *editSaveName)
{
    auto *cancel = new ZelvarGroupToolButton(group);
    cancel->setObjectName(QLatin1String(cancelName));
    cancel->setText(QStringLiteral("Cancel"));
    cancel->role = ZelvarGroupToolButton::Cancel;
    auto *editSave = new ZelvarGroupToolButton(group);
    editSave->setObjectName(QLatin1String(editSaveName));
    editSave->setText(QStringLiteral("Edit"));
    editSave->setCheckable(true);
    editSave->role = ZelvarGroupToolButton::EditSave;
}

} // namespace

EditFormFixture::EditFormFixture()
    : form(std::make_unique<QWidget>())
{
    for (const char *groupName : {nv, vo}) {
        auto *group = new ZelvarParametersGroupBox(form.get());
        group->setObjectName(QLatin1String(groupName));
        group->resize(381, 821);
    }
    for (const Row &row : rows)
        addControl(group(QLatin1String(row.group)), row);
    addButtons(group(QLatin1String(nv)), "nvParamsCancelToolButton", "nvParamsEditSaveToolButton");
    addButtons(group(QLatin1String(vo)), "vParamsCancelToolButton", "vParamsEditSaveToolButton");
}

EditFormFixture::~EditFormFixture() = default;

IUnitDataField *EditFormFixture::field(const QString &name) const
{
    return dynamic_cast<IUnitDataField *>(form->findChild<QObject *>(name));
}

ZelvarParametersGroupBox *EditFormFixture::group(const QString &name) const
{
    return find<ZelvarParametersGroupBox>(name);
}

ZelvarGroupToolButton *EditFormFixture::button(const QString &name) const
{
    return find<ZelvarGroupToolButton>(name);
}

void EditFormFixture::connectLink(bool dynamixelAx12)
{
    const auto deviceHelper = DeviceHelper::instance(nullptr, [] {});
    group(QLatin1String(nv))->connected();
    group(QLatin1String(vo))->connected();
    for (auto *button : form->findChildren<ZelvarGroupToolButton *>())
        button->connected();
    // Bytes 5 and 6 of the model-number reply: 12, 0 is the AX-12.
    QByteArray reply(11, '\0');
    reply[5] = char(dynamixelAx12 ? 12 : 13);
    deviceHelper->onModelNumberRead(reply);
}

void EditFormFixture::deliver(const QString &name, int raw) const
{
    IUnitDataField *target = field(name);
    target->applyDependency();
    auto *group =
        qobject_cast<ZelvarParametersGroupBox *>(dynamic_cast<QObject *>(target)->parent());
    if (!group || !group->editMode)
        target->setValue(raw);
}
