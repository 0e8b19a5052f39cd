#include "device/uiregisterhelper.h"

#include "device/checkedlookup.h"
#include "device/statushelper.h"
#include "widgets/iunitdatafield.h"
#include "widgets/zelvarparametersgroupbox.h"

namespace {

std::shared_ptr<UiRegisterHelper> globalRegisterHelper;

} // namespace

std::shared_ptr<UiRegisterHelper> UiRegisterHelper::instance()
{
    if (!globalRegisterHelper)
        globalRegisterHelper = std::make_shared<UiRegisterHelper>();
    return globalRegisterHelper;
}

UiRegisterHelper::UiRegisterHelper()
{
    using T = ValueType;
    struct Row
    {
        uint8_t address;
        uint8_t size;
        ValueType type;
        QStringList widgets;
    };
    // Built in this order; where an address comes twice (107) the map keeps the first.
    // Items past the end of the control table (118, 119) and items without a widget are
    // kept: the scheduler's walk steps by item size and needs an item at every stop.
    // clang-format off
    const Row rows[] = {
        {0, 2, T::UInt16, {"modelNumberLineEdit"}},
        // Requested as one byte, handled as a 16-bit value.
        {2, 1, T::UInt16, {"firmwareVersionLineEdit"}},
        {3, 1, T::UInt8, {"idSpinBox"}},
        {4, 1, T::UInt8, {"baudRateComboBox"}},
        {5, 1, T::UInt8, {"ackResponseTimeSpinBox"}},
        {6, 1, T::UInt8, {"operatingModeComboBox"}},
        {7, 2, T::Int16, {"clockwiseLimitDoubleSpinBox"}},
        {9, 2, T::Int16, {"counterClockwiseLimitDoubleSpinBox"}},
        {11, 1, T::UInt8, {"temperatureLimitDoubleSpinBox"}},
        {12, 1, T::UInt8, {"minVoltageLimitDoubleSpinBox"}},
        {13, 1, T::UInt8, {"maxVoltageLimitDoubleSpinBox"}},
        // The torque limit register feeds the quadrature current limit.
        {14, 2, T::UInt16, {"quadratureCurrentLimitDoubleSpinBox"}},
        {16, 2, T::UInt16, {"angularVelocityLimitDoubleSpinBox"}},
        {18, 2, T::UInt16, {"accelerationLimitDoubleSpinBox"}},
        {20, 4, T::Int32, {"hornPositionOffsetDoubleSpinBox"}},
        {24, 2, T::UInt16, {"movingThresholdDoubleSpinBox"}},
        {26, 1, T::UInt8, {"inputModeComboBox"}},
        {27, 2, T::UInt16, {"defPositionProportionalTermDoubleSpinBox"}},
        {29, 2, T::UInt16, {"defVelocityFeedforwardTermDoubleSpinBox"}},
        {31, 2, T::UInt16, {"defCurrentFeedforwardTermDoubleSpinBox"}},
        {33, 2, T::UInt16, {"defVelocityIntegralTermDoubleSpinBox"}},
        {35, 2, T::UInt16, {"defVelocityProportionalTermDoubleSpinBox"}},
        {37, 2, T::UInt16, {"defAngularVelocityProfileDoubleSpinBox"}},
        {39, 2, T::UInt16, {"defAccelerationProfileDoubleSpinBox"}},
        {41, 1, T::UInt8, {}},
        {42, 2, T::UInt8, {}},
        {44, 2, T::UInt8, {}},
        {46, 2, T::UInt8, {}},
        {48, 1, T::UInt8, {"enableMotorCheckBox"}},
        {49, 1, T::UInt8, {"pendingShadowInstructionCheckBox"}},
        {107, 1, T::HardwareStatus, {}},
        {50, 2, T::UInt16, {}},
        {52, 2, T::UInt16, {}},
        {54, 2, T::UInt16, {"positionProportionalTermDoubleSpinBox"}},
        {56, 2, T::UInt16, {"velocityFeedforwardTermDoubleSpinBox"}},
        {58, 2, T::UInt16, {"currentFeedforwardTermDoubleSpinBox"}},
        {60, 2, T::UInt16, {"velocityIntegralTermDoubleSpinBox"}},
        {62, 2, T::UInt16, {"velocityProportionalTermDoubleSpinBox"}},
        {64, 2, T::UInt16, {}},
        {66, 2, T::UInt16, {}},
        {68, 2, T::UInt16, {"angularVelocityProfileDoubleSpinBox"}},
        {70, 2, T::UInt16, {"accelerationProfileDoubleSpinBox"}},
        {72, 2, T::UInt16, {}},
        {74, 2, T::UInt16, {}},
        {76, 2, T::UInt16, {}},
        {78, 4, T::Int32, {"targetPositionDoubleSpinBox"}},
        {82, 2, T::Directed, {"targetAngularVelocityDoubleSpinBox", "targetAngularVelocityDirectionComboBox"}},
        {84, 2, T::Directed, {"targetTorqueDoubleSpinBox", "targetTorqueDirectionComboBox"}},
        {86, 4, T::Int32, {"actualPositionLineEdit"}},
        {90, 2, T::UInt16, {"actualAngularVelocityLineEdit"}},
        {92, 2, T::UInt16, {"actualTorqueLineEdit"}},
        {94, 1, T::UInt8, {"actualVoltageLineEdit"}},
        {95, 2, T::UInt16, {"actualQuadratureCurrentLineEdit"}},
        {97, 1, T::UInt8, {"actualTemperatureLineEdit"}},
        {98, 1, T::UInt8, {}},
        {99, 1, T::UInt8, {"isMovingCheckBox"}},
        {100, 1, T::UInt8, {}},
        {101, 2, T::UInt16, {}},
        {103, 4, T::UInt32, {}},
        {107, 1, T::HardwareStatus, {}},
        {108, 1, T::UInt8, {}},
        {109, 1, T::UInt8, {}},
        {110, 1, T::UInt8, {}},
        {111, 1, T::UInt8, {}},
        {112, 1, T::UInt8, {}},
        {113, 1, T::UInt8, {}},
        {114, 2, T::UInt16, {}},
        {116, 2, T::UInt16, {}},
        {118, 1, T::UInt8, {}},
        {119, 1, T::UInt8, {}},
    };
    // clang-format on
    for (const Row &row : rows)
        addItem(row.address, row.size, row.type, row.widgets);
}

void UiRegisterHelper::registerWidget(const QString &name, IUnitDataField *field)
{
    // Bound widgets are QObjects: that is how a widget's group and its lifetime are known.
    auto *object = dynamic_cast<QObject *>(field);
    if (object)
        widgets[name] = Binding{object, field};
}

const RegisterItemHelper &UiRegisterHelper::item(uint8_t address) const
{
    return *checkedLookup(items, address);
}

void UiRegisterHelper::addItem(uint8_t address, uint8_t size, ValueType type,
                               const QStringList &names)
{
    using namespace std::placeholders;
    std::function<void(int32_t)> callback;
    switch (type) {
    case ValueType::UInt8:
        callback = std::bind(&UiRegisterHelper::showValue<uint8_t>, this, names, _1);
        break;
    case ValueType::Int16:
        callback = std::bind(&UiRegisterHelper::showValue<int16_t>, this, names, _1);
        break;
    case ValueType::UInt16:
        callback = std::bind(&UiRegisterHelper::showValue<uint16_t>, this, names, _1);
        break;
    case ValueType::Int32:
        callback = std::bind(&UiRegisterHelper::showValue<int32_t>, this, names, _1);
        break;
    case ValueType::UInt32:
        callback = std::bind(&UiRegisterHelper::showValue<uint32_t>, this, names, _1);
        break;
    case ValueType::HardwareStatus:
        callback = std::bind(&UiRegisterHelper::showHardwareStatus, this, _1);
        break;
    case ValueType::Directed:
        callback = std::bind(&UiRegisterHelper::showDirected, this, names, _1);
        break;
    }
    items.emplace(address,
                  std::make_shared<RegisterItemHelper>(RegisterItemHelper{size, callback}));
}

template<typename Value>
void UiRegisterHelper::showValue(const QStringList &names, Value value)
{
    for (const QString &name : names)
        deliver(name, static_cast<int>(value));
}

// The magnitude box shows bits 0 to 14 and the direction box bit 15, rather than the
// whole register in each: the register as one number is no index, nor any magnitude.
void UiRegisterHelper::showDirected(const QStringList &names, uint16_t value)
{
    constexpr int magnitudeBits = 0x7FFF;
    constexpr int directionShift = 15;
    deliver(names.value(0), value & magnitudeBits);
    deliver(names.value(1), value >> directionShift);
}

void UiRegisterHelper::showHardwareStatus(uint8_t status)
{
    StatusHelper::decodeHardwareStatus(
        status, [this](const QString &checkBox, int masked) { deliver(checkBox, masked); });
}

void UiRegisterHelper::deliver(const QString &name, int raw)
{
    // The edit view registers its widgets later than the map is built, and a model may
    // poll names no view shows.
    const auto found = widgets.find(name);
    if (found == widgets.end() || !found->second.object)
        return;
    IUnitDataField *field = found->second.field;
    // The dependency reads the widget as it stood before this value, so mode locks follow
    // one value late.
    field->applyDependency();
    // Held back while the user edits the widget's group, so the edit is not overwritten.
    const auto *group = qobject_cast<ZelvarParametersGroupBox *>(found->second.object->parent());
    if (group && group->editMode)
        return;
    field->setValue(raw);
}
