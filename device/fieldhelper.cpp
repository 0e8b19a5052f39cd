#include "device/fieldhelper.h"

#include "device/checkedlookup.h"
#include "widgets/izelvarfield.h"

namespace {

std::shared_ptr<FieldHelper> globalFieldHelper;

// The kind of value each bound widget name shows: 0 to 7 are the physical quantities of
// UnitsHelper, the rest take no unit conversion (12 is not used).
const std::map<QString, int32_t> fieldIds{
    {"angularVelocityLabel", 0},
    {"angularVelocityLimitLabel", 0},
    {"movingThresholdLabel", 0},
    {"defAngularVelocityProfileLabel", 0},
    {"actualAngularVelocityLineEdit", 0},
    {"targetAngularVelocityLabel", 0},
    {"angularVelocityProfileLabel", 0},
    {"targetAngularVelocityDoubleSpinBox", 0},
    {"angularVelocityLimitDoubleSpinBox", 0},
    {"movingThresholdDoubleSpinBox", 0},
    {"positionLabel", 1},
    {"clockwiseAngleLimitLabel", 1},
    {"counterClockwiseAngleLimitLabel", 1},
    {"goalPositionLabel", 1},
    {"hornPositionOffsetLabel", 1},
    {"actualPositionLineEdit", 1},
    {"clockwiseLimitDoubleSpinBox", 1},
    {"counterClockwiseLimitDoubleSpinBox", 1},
    {"deadZoneDoubleSpinBox", 1},
    {"targetPositionLabel", 1},
    {"targetPositionDoubleSpinBox", 1},
    {"hornPositionOffsetDoubleSpinBox", 1},
    {"accelerationLimitLabel", 2},
    {"defAccelerationProfileLabel", 2},
    {"accelerationProfileLabel", 2},
    {"accelerationLimitDoubleSpinBox", 2},
    {"torqueLabel", 3},
    {"actualTorqueLineEdit", 3},
    {"targetTorqueLabel", 3},
    {"targetTorqueDoubleSpinBox", 3},
    // Fed by the torque limit register, so it converts as a torque while its labels
    // below show a current.
    {"quadratureCurrentLimitDoubleSpinBox", 3},
    {"voltageLabel", 4},
    {"minVoltageLimitLabel", 4},
    {"maxVoltageLimitLabel", 4},
    {"actualVoltageLineEdit", 4},
    {"minVoltageLimitDoubleSpinBox", 4},
    {"maxVoltageLimitDoubleSpinBox", 4},
    {"quadratureCurrentLabel", 5},
    {"maxquadratureCurrentLimitLabel", 5},
    {"quadratureCurrentLimitLabel", 5},
    {"actualQuadratureCurrentLineEdit", 5},
    {"temperatureLabel", 6},
    {"upperTemperatureLimitLabel", 6},
    {"actualTemperatureLineEdit", 6},
    {"temperatureLimitDoubleSpinBox", 6},
    {"ackResponseTimeLabel", 7},
    {"ackResponseTimeSpinBox", 7},
    {"idSpinBox", 8},
    {"positionProportionalTermDoubleSpinBox", 9},
    {"defPositionProportionalTermDoubleSpinBox", 9},
    {"velocityFeedforwardTermDoubleSpinBox", 10},
    {"defVelocityFeedforwardTermDoubleSpinBox", 10},
    {"currentFeedforwardTermDoubleSpinBox", 11},
    {"defCurrentFeedforwardTermDoubleSpinBox", 11},
    {"velocityProportionalTermDoubleSpinBox", 13},
    {"defVelocityProportionalTermDoubleSpinBox", 13},
    {"velocityIntegralTermDoubleSpinBox", 14},
    {"defVelocityIntegralTermDoubleSpinBox", 14},
    {"angularVelocityProfileDoubleSpinBox", 15},
    {"defAngularVelocityProfileDoubleSpinBox", 15},
    {"accelerationProfileDoubleSpinBox", 16},
    {"defAccelerationProfileDoubleSpinBox", 16},
    {"modelNumberLineEdit", 17},
    {"baudRateComboBox", 18},
    {"operatingModeComboBox", 19},
    {"inputModeLabel", 20},
    {"inputModeComboBox", 20},
    {"targetAngularVelocityDirectionComboBox", 21},
    {"targetTorqueDirectionComboBox", 21},
    {"firmwareVersionLineEdit", 22},
    {"pendingShadowInstructionCheckBox", 22},
    {"enableMotorCheckBox", 22},
    {"isMovingCheckBox", 22},
    {"inputVoltageStatusCheckBox", 22},
    {"overheatingStatusCheckBox", 22},
    {"encoderStatusCheckBox", 22},
    {"hallStatusCheckBox", 22},
    {"angleLimitStatusCheckBox", 22},
    {"idLabel", 23},
};

} // namespace

std::shared_ptr<FieldHelper> FieldHelper::instance()
{
    return globalFieldHelper;
}

std::shared_ptr<FieldHelper> FieldHelper::create(const QObjectList &viewChildren)
{
    if (!globalFieldHelper)
        globalFieldHelper = std::make_shared<FieldHelper>(viewChildren);
    return globalFieldHelper;
}

int32_t FieldHelper::fieldId(const QString &objectName)
{
    return checkedLookup(fieldIds, objectName);
}

bool FieldHelper::hasFieldId(const QString &objectName)
{
    return fieldIds.count(objectName) != 0;
}

FieldHelper::FieldHelper(const QObjectList &viewChildren)
{
    collect(viewChildren);
}

IZelvarField *FieldHelper::field(const QString &objectName) const
{
    const Binding &binding = checkedLookup(fields, objectName);
    // A widget destroyed since is as unknown as one never seen.
    if (!binding.object)
        throwInvalidKey();
    return binding.field;
}

bool FieldHelper::hasField(const QString &objectName) const
{
    const auto found = fields.find(objectName);
    return found != fields.end() && found->second.object;
}

void FieldHelper::collect(const QObjectList &objects)
{
    for (QObject *object : objects) {
        if (auto *field = dynamic_cast<IZelvarField *>(object))
            fields[field->objectName()] = Binding{object, field};
        collect(object->children());
    }
}
