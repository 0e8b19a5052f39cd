#include "controllers/controllerbase.h"

#include "device/fieldhelper.h"
#include "widgets/iunitdatafield.h"

#include <QComboBox>
#include <iterator>
#include <vector>

namespace {

// The controls in the order they are fetched and set.
enum Control {
    OperatingModeComboBox,
    InputModeLabel,
    ClockwiseAngleLimitLabel,
    CounterClockwiseAngleLimitLabel,
    PositionProportionalTermLabel,
    VelocityFeedforwardTermLabel,
    CurrentFeedforwardTermLabel,
    TargetAngularVelocityLabel,
    VelocityProportionalTermLabel,
    VelocityIntegralTermLabel,
    AngularVelocityProfileLabel,
    AccelerationProfileLabel,
    TargetAngularVelocityDirectionLabel,
    TargetPositionLabel,
    TargetTorqueLabel,
    TargetTorqueDirectionLabel,
    QuadratureCurrentLimitLabel,
    AngularVelocityLimitLabel,
    AccelerationLimitLabel,
    HornPositionOffsetLabel,
    DefPositionProportionalTermLabel,
    DefVelocityFeedforwardTermLabel,
    DefVelocityProportionalTermLabel,
    DefVelocityIntegralTermLabel,
    DefCurrentFeedforwardTermLabel,
    DefAngularVelocityProfileLabel,
    DefAccelerationProfileLabel,
    InputModeComboBox,
    ClockwiseLimitDoubleSpinBox,
    CounterClockwiseLimitDoubleSpinBox,
    PositionProportionalTermDoubleSpinBox,
    VelocityFeedforwardTermDoubleSpinBox,
    CurrentFeedforwardTermDoubleSpinBox,
    TargetAngularVelocityDoubleSpinBox,
    VelocityProportionalTermDoubleSpinBox,
    VelocityIntegralTermDoubleSpinBox,
    AngularVelocityProfileDoubleSpinBox,
    AccelerationProfileDoubleSpinBox,
    TargetPositionDoubleSpinBox,
    TargetAngularVelocityDirectionComboBox,
    TargetTorqueDoubleSpinBox,
    TargetTorqueDirectionComboBox,
    QuadratureCurrentLimitDoubleSpinBox,
    AngularVelocityLimitDoubleSpinBox,
    AccelerationLimitDoubleSpinBox,
    HornPositionOffsetDoubleSpinBox,
    EnableMotorCheckBox,
    PendingShadowInstructionCheckBox,
    DefPositionProportionalTermDoubleSpinBox,
    DefVelocityFeedforwardTermDoubleSpinBox,
    DefVelocityProportionalTermDoubleSpinBox,
    DefVelocityIntegralTermDoubleSpinBox,
    DefCurrentFeedforwardTermDoubleSpinBox,
    DefAngularVelocityProfileDoubleSpinBox,
    DefAccelerationProfileDoubleSpinBox,
    ControlCount
};

const char *const controlNames[ControlCount] = {
    "operatingModeComboBox",
    "inputModeLabel",
    "clockwiseAngleLimitLabel",
    "counterClockwiseAngleLimitLabel",
    "positionProportionalTermLabel",
    "velocityFeedforwardTermLabel",
    "currentFeedforwardTermLabel",
    "targetAngularVelocityLabel",
    "velocityProportionalTermLabel",
    "velocityIntegralTermLabel",
    "angularVelocityProfileLabel",
    "accelerationProfileLabel",
    "targetAngularVelocityDirectionLabel",
    "targetPositionLabel",
    "targetTorqueLabel",
    "targetTorqueDirectionLabel",
    "quadratureCurrentLimitLabel",
    "angularVelocityLimitLabel",
    "accelerationLimitLabel",
    "hornPositionOffsetLabel",
    "defPositionProportionalTermLabel",
    "defVelocityFeedforwardTermLabel",
    "defVelocityProportionalTermLabel",
    "defVelocityIntegralTermLabel",
    "defCurrentFeedforwardTermLabel",
    "defAngularVelocityProfileLabel",
    "defAccelerationProfileLabel",
    "inputModeComboBox",
    "clockwiseLimitDoubleSpinBox",
    "counterClockwiseLimitDoubleSpinBox",
    "positionProportionalTermDoubleSpinBox",
    "velocityFeedforwardTermDoubleSpinBox",
    "currentFeedforwardTermDoubleSpinBox",
    "targetAngularVelocityDoubleSpinBox",
    "velocityProportionalTermDoubleSpinBox",
    "velocityIntegralTermDoubleSpinBox",
    "angularVelocityProfileDoubleSpinBox",
    "accelerationProfileDoubleSpinBox",
    "targetPositionDoubleSpinBox",
    "targetAngularVelocityDirectionComboBox",
    "targetTorqueDoubleSpinBox",
    "targetTorqueDirectionComboBox",
    "quadratureCurrentLimitDoubleSpinBox",
    "angularVelocityLimitDoubleSpinBox",
    "accelerationLimitDoubleSpinBox",
    "hornPositionOffsetDoubleSpinBox",
    "enableMotorCheckBox",
    "pendingShadowInstructionCheckBox",
    "defPositionProportionalTermDoubleSpinBox",
    "defVelocityFeedforwardTermDoubleSpinBox",
    "defVelocityProportionalTermDoubleSpinBox",
    "defVelocityIntegralTermDoubleSpinBox",
    "defCurrentFeedforwardTermDoubleSpinBox",
    "defAngularVelocityProfileDoubleSpinBox",
    "defAccelerationProfileDoubleSpinBox",
};

// What a mode does with a control, for an active controller: L locks it, U unlocks it,
// I unlocks it only at input mode 0, N leaves it as the previous mode left it.
enum Rule : char { L, U, I, N };

struct Step
{
    Control control;
    Rule rules[5]; // Torque, Wheel, Joint, Multi-turn, Stepper
};

// The fourth step sets the velocity-proportional label where the position-proportional
// one would stand, so that label is set twice and the position-proportional label only
// by the modes that set it separately. Torque also leaves the acceleration limit alone.
// These gaps are how the modes behave and are kept.
const Step steps[] = {
    {InputModeLabel, {L, L, U, U, L}},
    {ClockwiseAngleLimitLabel, {L, L, U, L, L}},
    {CounterClockwiseAngleLimitLabel, {L, L, U, L, L}},
    {VelocityProportionalTermLabel, {L, L, U, U, L}},
    {PositionProportionalTermLabel, {N, L, U, N, L}},
    {VelocityFeedforwardTermLabel, {L, L, U, U, L}},
    {CurrentFeedforwardTermLabel, {L, U, U, U, L}},
    {TargetAngularVelocityLabel, {L, U, L, L, L}},
    {VelocityProportionalTermLabel, {L, U, U, U, L}},
    {VelocityIntegralTermLabel, {L, U, U, U, L}},
    {AngularVelocityProfileLabel, {L, L, U, U, L}},
    {AccelerationProfileLabel, {L, U, I, I, L}},
    {TargetAngularVelocityDirectionLabel, {L, U, L, L, L}},
    {TargetPositionLabel, {L, L, U, U, L}},
    {TargetTorqueLabel, {U, L, L, L, L}},
    {TargetTorqueDirectionLabel, {U, L, L, L, L}},
    {QuadratureCurrentLimitLabel, {U, U, U, U, U}},
    {AngularVelocityLimitLabel, {U, U, U, U, U}},
    {AccelerationLimitLabel, {N, U, U, U, U}},
    {HornPositionOffsetLabel, {U, U, U, U, U}},
    {DefPositionProportionalTermLabel, {L, L, U, U, U}},
    {DefVelocityFeedforwardTermLabel, {L, L, U, U, U}},
    {DefVelocityProportionalTermLabel, {L, U, U, U, U}},
    {DefVelocityIntegralTermLabel, {L, U, U, U, U}},
    {DefCurrentFeedforwardTermLabel, {L, U, U, U, U}},
    {DefAngularVelocityProfileLabel, {L, L, U, U, U}},
    {DefAccelerationProfileLabel, {L, U, U, U, U}},
    {InputModeComboBox, {L, L, U, U, L}},
    {ClockwiseLimitDoubleSpinBox, {L, L, U, L, L}},
    {CounterClockwiseLimitDoubleSpinBox, {L, L, U, L, L}},
    {PositionProportionalTermDoubleSpinBox, {L, L, U, U, L}},
    {VelocityFeedforwardTermDoubleSpinBox, {L, L, U, U, L}},
    {CurrentFeedforwardTermDoubleSpinBox, {L, U, U, U, L}},
    {TargetAngularVelocityDoubleSpinBox, {L, U, L, L, L}},
    {VelocityProportionalTermDoubleSpinBox, {L, U, U, U, L}},
    {VelocityIntegralTermDoubleSpinBox, {L, U, U, U, L}},
    {AngularVelocityProfileDoubleSpinBox, {L, L, U, U, L}},
    {AccelerationProfileDoubleSpinBox, {L, U, I, I, L}},
    {TargetPositionDoubleSpinBox, {L, L, U, U, L}},
    {TargetAngularVelocityDirectionComboBox, {L, U, L, L, L}},
    {TargetTorqueDoubleSpinBox, {U, L, L, L, L}},
    {TargetTorqueDirectionComboBox, {U, L, L, L, L}},
    {QuadratureCurrentLimitDoubleSpinBox, {U, U, U, U, U}},
    {AngularVelocityLimitDoubleSpinBox, {U, U, U, U, U}},
    {AccelerationLimitDoubleSpinBox, {N, U, U, U, U}},
    {HornPositionOffsetDoubleSpinBox, {U, U, U, U, U}},
    {EnableMotorCheckBox, {U, U, U, U, U}},
    {PendingShadowInstructionCheckBox, {U, U, U, U, L}},
    {DefPositionProportionalTermDoubleSpinBox, {L, L, U, U, U}},
    {DefVelocityFeedforwardTermDoubleSpinBox, {L, L, U, U, U}},
    {DefVelocityProportionalTermDoubleSpinBox, {L, U, U, U, U}},
    {DefVelocityIntegralTermDoubleSpinBox, {L, U, U, U, U}},
    {DefCurrentFeedforwardTermDoubleSpinBox, {L, U, U, U, U}},
    {DefAngularVelocityProfileDoubleSpinBox, {L, L, U, U, U}},
    {DefAccelerationProfileDoubleSpinBox, {L, U, U, U, U}},
};

// A controller is built for every received mode value; the names are made once.
const std::vector<QString> &controlNameStrings()
{
    static const std::vector<QString> names(std::begin(controlNames), std::end(controlNames));
    return names;
}

int itemCount(IUnitDataField *comboBox)
{
    const auto *box = dynamic_cast<QComboBox *>(comboBox);
    return box ? box->count() : 0;
}

} // namespace

ControllerBase::ControllerBase()
{
    const auto helper = FieldHelper::instance();
    if (!helper)
        return;
    controls.reserve(ControlCount);
    for (const QString &name : controlNameStrings())
        controls.push_back(helper->field(name));
    operatingMode = dynamic_cast<IUnitDataField *>(controls[OperatingModeComboBox]);
    inputMode = dynamic_cast<IUnitDataField *>(controls[InputModeComboBox]);
}

void ControllerBase::applyMode(Mode mode)
{
    if (!operatingMode || !inputMode)
        return;
    const int index = operatingMode->value();
    // An unknown mode (the placeholder) counts as this controller's own.
    const bool active = index == mode || index == itemCount(operatingMode) - 1;
    const bool profileUsable = inputMode->value() == 0;
    for (const Step &step : steps) {
        switch (step.rules[mode]) {
        case L:
            controls[step.control]->setLocked(active);
            break;
        case U:
            controls[step.control]->setLocked(!active);
            break;
        case I:
            controls[step.control]->setLocked(profileUsable ? !active : active);
            break;
        case N:
            break;
        }
    }
}
