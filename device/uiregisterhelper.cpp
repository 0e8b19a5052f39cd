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
    for (const PollMapRow &row : PollMapTable::ownFamily())
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

void UiRegisterHelper::addItem(uint8_t address, uint8_t size, PollValueType type,
                               const QStringList &names)
{
    using namespace std::placeholders;
    std::function<void(int32_t)> callback;
    switch (type) {
    case PollValueType::UInt8:
        callback = std::bind(&UiRegisterHelper::showValue<uint8_t>, this, names, _1);
        break;
    case PollValueType::Int16:
        callback = std::bind(&UiRegisterHelper::showValue<int16_t>, this, names, _1);
        break;
    case PollValueType::UInt16:
        callback = std::bind(&UiRegisterHelper::showValue<uint16_t>, this, names, _1);
        break;
    case PollValueType::Int32:
        callback = std::bind(&UiRegisterHelper::showValue<int32_t>, this, names, _1);
        break;
    case PollValueType::UInt32:
        callback = std::bind(&UiRegisterHelper::showValue<uint32_t>, this, names, _1);
        break;
    case PollValueType::HardwareStatus:
        callback = std::bind(&UiRegisterHelper::showHardwareStatus, this, _1);
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
