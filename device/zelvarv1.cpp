#include "device/zelvarv1.h"

#include "controllers/inputmodecontroller.h"
#include "controllers/operationmodecontroller.h"
#include "device/fieldhelper.h"
#include "device/pollmaptable.h"

#include <QRegularExpression>
#include <algorithm>

namespace {

// 1044479 counts (0xFEFFF) of 2 pi / 4096 rad each.
constexpr double positionRange = 1602.2107193496022;
// The angle limits count 2047 steps to half a turn: a coarser scale than positions.
constexpr double angleLimitRange = 3.141592653589;

enum Bank : uint32_t { NonVolatile1, NonVolatile2, Volatile1, Volatile2 };

struct DescriptionRow
{
    uint16_t address;
    uint32_t bank;
    uint16_t row;
    uint32_t writable;
    const char *description;
};

// 93 repeats the text of 92, and 101 and 102 repeat those of 68 and 69: the register
// view shows them as they stand.
const DescriptionRow descriptionRows[] = {
    {0, NonVolatile1, 0, 0, "Model number (lower)"},
    {1, NonVolatile1, 1, 0, "Model number (upper)"},
    {2, NonVolatile1, 2, 0, "Firmware version"},
    {3, NonVolatile1, 3, 1, "ID"},
    {4, NonVolatile1, 4, 1, "Baud rate"},
    {5, NonVolatile1, 5, 1, "Acknowledge response time"},
    {6, NonVolatile1, 6, 1, "Operating mode"},
    {7, NonVolatile1, 7, 1, "CW angle limit (lower)"},
    {8, NonVolatile1, 8, 1, "CW angle limit (upper)"},
    {9, NonVolatile1, 9, 1, "CCW angle limit (lower)"},
    {10, NonVolatile1, 10, 1, "CCW angle limit (upper)"},
    {11, NonVolatile1, 11, 1, "Upper temperature limit"},
    {12, NonVolatile1, 12, 1, "Lower input voltage limit"},
    {13, NonVolatile1, 13, 1, "Upper input voltage limit"},
    {14, NonVolatile1, 14, 1, "Torque limit (lower)"},
    {15, NonVolatile1, 15, 1, "Torque limit (upper)"},
    {16, NonVolatile1, 16, 1, "Angular velocity limit (lower)"},
    {17, NonVolatile1, 17, 1, "Angular velocity limit (upper)"},
    {18, NonVolatile1, 18, 1, "Acceleration limit (lower)"},
    {19, NonVolatile1, 19, 1, "Acceleration limit (upper)"},
    {20, NonVolatile1, 20, 1, "Home position offset (byte 0)"},
    {21, NonVolatile1, 21, 1, "Home position offset (byte 1)"},
    {22, NonVolatile1, 22, 1, "Home position offset (byte 2)"},
    {23, NonVolatile1, 23, 1, "Home position offset (byte 3)"},
    {24, NonVolatile1, 24, 1, "Moving threshold (lower)"},
    {25, NonVolatile1, 25, 1, "Moving threshold (upper)"},
    {26, NonVolatile1, 26, 1, "Input mode"},
    {27, NonVolatile2, 0, 1, "Default position proportional gain (lower)"},
    {28, NonVolatile2, 1, 1, "Default position proportional gain (upper)"},
    {29, NonVolatile2, 2, 1, "Default velocity feedforward gain (lower)"},
    {30, NonVolatile2, 3, 1, "Default velocity feedforward gain (upper)"},
    {31, NonVolatile2, 4, 1, "Default current feedforward gain (lower)"},
    {32, NonVolatile2, 5, 1, "Default current feedforward gain (upper)"},
    {33, NonVolatile2, 6, 1, "Default velocity integral gain (lower)"},
    {34, NonVolatile2, 7, 1, "Default velocity integral gain (upper)"},
    {35, NonVolatile2, 8, 1, "Default velocity proportional gain (lower)"},
    {36, NonVolatile2, 9, 1, "Default velocity proportional gain (upper)"},
    {37, NonVolatile2, 10, 1, "Default angular velocity profile (lower)"},
    {38, NonVolatile2, 11, 1, "Default angular velocity profile (upper)"},
    {39, NonVolatile2, 12, 1, "Default acceleration profile (lower)"},
    {40, NonVolatile2, 13, 1, "Default acceleration profile (upper)"},
    {48, Volatile1, 0, 1, "Control enable"},
    {49, Volatile1, 1, 1, "Pending shadow instruction"},
    {54, Volatile1, 2, 1, "Position proportional gain (lower)"},
    {55, Volatile1, 3, 1, "Position proportional gain (upper)"},
    {56, Volatile1, 4, 1, "Velocity feedforward gain (lower)"},
    {57, Volatile1, 5, 1, "Velocity feedforward gain (upper)"},
    {58, Volatile1, 6, 1, "Current feedforward gain (lower)"},
    {59, Volatile1, 7, 1, "Current feedforward gain (upper)"},
    {60, Volatile1, 8, 1, "Velocity integral gain (lower)"},
    {61, Volatile1, 9, 1, "Velocity integral gain (upper)"},
    {62, Volatile1, 10, 1, "Velocity proportional gain (lower)"},
    {63, Volatile1, 11, 1, "Velocity proportional gain (upper)"},
    {68, Volatile1, 12, 1, "Angular velocity profile (lower)"},
    {69, Volatile1, 13, 1, "Angular velocity profile (upper)"},
    {70, Volatile1, 14, 1, "Acceleration profile (lower)"},
    {71, Volatile1, 15, 1, "Acceleration profile (upper)"},
    {78, Volatile1, 16, 1, "Target position (byte 0)"},
    {79, Volatile1, 17, 1, "Target position (byte 1)"},
    {80, Volatile1, 18, 1, "Target position (byte 2)"},
    {81, Volatile1, 19, 1, "Target position (byte 3)"},
    {82, Volatile1, 20, 1, "Target angular velocity (lower)"},
    {83, Volatile1, 21, 1, "Target angular velocity (upper)"},
    {84, Volatile1, 22, 1, "Target torque (lower)"},
    {85, Volatile1, 23, 1, "Target torque (upper)"},
    {86, Volatile2, 0, 0, "Actual position (byte 0)"},
    {87, Volatile2, 1, 0, "Actual position (byte 1)"},
    {88, Volatile2, 2, 0, "Actual position (byte 2)"},
    {89, Volatile2, 3, 0, "Actual position (byte 3)"},
    {90, Volatile2, 4, 0, "Actual angular velocity (lower)"},
    {91, Volatile2, 5, 0, "Actual angular velocity (upper)"},
    {92, Volatile2, 6, 0, "Actual torque (lower)"},
    {93, Volatile2, 7, 0, "Actual torque (lower)"},
    {94, Volatile2, 8, 0, "Actual voltage"},
    {95, Volatile2, 9, 0, "Actual phase current (lower)"},
    {96, Volatile2, 10, 0, "Actual phase current (upper)"},
    {97, Volatile2, 11, 0, "Actual temperature"},
    {99, Volatile2, 12, 0, "Moving"},
    {101, Volatile2, 13, 0, "Angular velocity profile (lower)"},
    {102, Volatile2, 14, 0, "Angular velocity profile (upper)"},
    {107, Volatile2, 15, 0, "Hardware error status"},
    {112, Volatile2, 16, 0, "Debug 1 (u8)"},
    {113, Volatile2, 17, 0, "Debug 2 (u8)"},
    {114, Volatile2, 18, 0, "Debug 3 (lower)"},
    {115, Volatile2, 19, 0, "Debug 3 (upper)"},
    {116, Volatile2, 20, 0, "Debug 4 (lower)"},
    {117, Volatile2, 21, 0, "Debug 4 (upper)"},
};

} // namespace

ZelvarV1::ZelvarV1()
{
    const auto operationMode = std::make_shared<OperationModeController>();
    const auto inputMode = std::make_shared<InputModeController>();
    // baudRateComboBox has no record: its value is a code, not a range.
    // clang-format off
    addLimits({
        {"actualPositionLineEdit", -1044479, 1044479, -positionRange, positionRange, nullptr},
        {"actualAngularVelocityLineEdit", 0, 2300, 0.0, 2.3, nullptr},
        {"actualTemperatureLineEdit", 0, 255, 0.0, 255.0, nullptr},
        {"actualTorqueLineEdit", 0, 18000, 0.0, 18.0, nullptr},
        {"actualVoltageLineEdit", 0, 255, 0.0, 25.5, nullptr},
        {"actualQuadratureCurrentLineEdit", 0, 255, 0.0, 255.0, nullptr},
        {"firmwareVersionLineEdit", 0, 255, 0.0, 255.0, nullptr},
        {"modelNumberLineEdit", 0, 255, 0.0, 255.0, nullptr},
        {"idSpinBox", 0, 253, 0.0, 253.0, nullptr},
        {"ackResponseTimeSpinBox", 0, 254, 0.0, 508.0, nullptr},
        {"operatingModeComboBox", 0, 0, 0.0, 0.0, operationMode},
        {"inputModeComboBox", 0, 0, 0.0, 0.0, inputMode},
        {"clockwiseLimitDoubleSpinBox", -2047, 2047, -angleLimitRange, angleLimitRange, nullptr},
        {"counterClockwiseLimitDoubleSpinBox", -2047, 2047, -angleLimitRange, angleLimitRange, nullptr},
        {"temperatureLimitDoubleSpinBox", 0, 255, 0.0, 255.0, nullptr},
        {"minVoltageLimitDoubleSpinBox", 0, 255, 0.0, 25.5, nullptr},
        {"maxVoltageLimitDoubleSpinBox", 0, 255, 0.0, 25.5, nullptr},
        {"quadratureCurrentLimitDoubleSpinBox", 0, 5000, 0.0, 5.0, nullptr},
        {"angularVelocityLimitDoubleSpinBox", 0, 2400, 0.0, 2.4, nullptr},
        {"accelerationLimitDoubleSpinBox", 0, 48000, 0.0, 48.0, nullptr},
        {"defPositionProportionalTermDoubleSpinBox", 0, 2000, 0.0, 200.0, nullptr},
        {"defVelocityFeedforwardTermDoubleSpinBox", 0, 16383, 0.0, 16.383, nullptr},
        {"defCurrentFeedforwardTermDoubleSpinBox", 0, 1000, 0.0, 1.0, nullptr},
        {"defVelocityProportionalTermDoubleSpinBox", 0, 4000, 0.0, 4.0, nullptr},
        {"defVelocityIntegralTermDoubleSpinBox", 0, 4000, 0.0, 4.0, nullptr},
        {"defAngularVelocityProfileDoubleSpinBox", 0, 2000, 0.0, 2.0, nullptr},
        {"defAccelerationProfileDoubleSpinBox", 0, 48000, 0.0, 48.0, nullptr},
        {"hornPositionOffsetDoubleSpinBox", -1044479, 1044479, -positionRange, positionRange, nullptr},
        {"movingThresholdDoubleSpinBox", 0, 2000, 0.0, 2.0, nullptr},
        {"targetPositionDoubleSpinBox", -1044479, 1044479, -positionRange, positionRange, nullptr},
        {"positionProportionalTermDoubleSpinBox", 0, 2000, 0.0, 200.0, nullptr},
        {"velocityFeedforwardTermDoubleSpinBox", 0, 16383, 0.0, 16.383, nullptr},
        {"currentFeedforwardTermDoubleSpinBox", 0, 1000, 0.0, 1.0, nullptr},
        {"deadZoneDoubleSpinBox", 0, 1024, 0.0, 1.5707963267945, nullptr},
        {"targetAngularVelocityDoubleSpinBox", 0, 2000, 0.0, 2.0, nullptr},
        {"targetAngularVelocityDirectionComboBox", 0, 0, 0.0, 0.0, nullptr},
        {"velocityProportionalTermDoubleSpinBox", 0, 4000, 0.0, 4.0, nullptr},
        {"velocityIntegralTermDoubleSpinBox", 0, 4000, 0.0, 4.0, nullptr},
        {"targetTorqueDoubleSpinBox", 0, 18000, 0.0, 18.0, nullptr},
        {"targetTorqueDirectionComboBox", 0, 0, 0.0, 0.0, nullptr},
        {"angularVelocityProfileDoubleSpinBox", 0, 2000, 0.0, 2.0, nullptr},
        {"accelerationProfileDoubleSpinBox", 0, 48000, 0.0, 48.0, nullptr},
        {"pendingShadowInstructionCheckBox", 0, 1, 0.0, 1.0, nullptr},
        {"enableMotorCheckBox", 0, 1, 0.0, 1.0, nullptr},
        {"isMovingCheckBox", 0, 1, 0.0, 1.0, nullptr},
        {"inputVoltageStatusCheckBox", 0, 1, 0.0, 1.0, nullptr},
        {"overheatingStatusCheckBox", 0, 1, 0.0, 1.0, nullptr},
        {"encoderStatusCheckBox", 0, 1, 0.0, 1.0, nullptr},
        {"hallStatusCheckBox", 0, 1, 0.0, 1.0, nullptr},
        {"angleLimitStatusCheckBox", 0, 1, 0.0, 1.0, nullptr},
    });
    // clang-format on
    for (const DescriptionRow &row : descriptionRows)
        descriptions.emplace(row.address,
                             RegisterDescription{row.bank, row.row, row.writable,
                                                 QString::fromLatin1(row.description)});
}

unsigned ZelvarV1::controlTableSize() const
{
    return 118;
}

std::unique_ptr<RegisterDescription> ZelvarV1::registerDescription(uint16_t address) const
{
    const auto found = descriptions.find(address);
    if (found == descriptions.end())
        return nullptr;
    return std::make_unique<RegisterDescription>(found->second);
}

unsigned ZelvarV1::registerCount(unsigned bank) const
{
    return unsigned(std::count_if(descriptions.begin(), descriptions.end(),
                                  [bank](const auto &entry) { return entry.second.bank == bank; }));
}

bool ZelvarV1::hasRegisterMap() const
{
    return true;
}

std::vector<RegisterSpan> ZelvarV1::registers() const
{
    static const QRegularExpression byteSuffix(QStringLiteral(" \\((lower|upper|byte \\d)\\)$"));
    std::map<uint8_t, RegisterSpan> spans;
    for (const PollMapRow &row : PollMapTable::ownFamily()) {
        const auto described = descriptions.find(row.address);
        if (described == descriptions.end() || spans.count(row.address))
            continue;
        RegisterSpan span;
        span.address = row.address;
        span.size = row.size;
        span.isSigned = row.type == PollValueType::Int16 || row.type == PollValueType::Int32;
        span.writable = described->second.writable != 0;
        span.description = QString(described->second.description).remove(byteSuffix);
        for (const QString &widget : row.widgets) {
            if (span.field.isEmpty() && (definesField(widget) || row.widgets.size() == 1))
                span.field = widget;
            // A target shown with a direction box keeps the direction in its top bit.
            if (widget.endsWith(QLatin1String("DirectionComboBox")))
                span.directionBit = 15;
        }
        if (FieldHelper::hasFieldId(span.field))
            span.fieldId = FieldHelper::fieldId(span.field);
        spans.emplace(row.address, span);
    }
    std::vector<RegisterSpan> ordered;
    for (const auto &entry : spans)
        ordered.push_back(entry.second);
    return ordered;
}
