#pragma once

#include "device/pollmaptable.h"
#include "device/registeritemhelper.h"

#include <QPointer>
#include <QString>
#include <QStringList>
#include <cstdint>
#include <map>
#include <memory>

class IUnitDataField;

// The poll map of the servo's control table, and the widgets its values go to. The
// request scheduler walks the map in address order and hands each item its value.
class UiRegisterHelper
{
public:
    using PollMap = std::map<uint8_t, std::shared_ptr<RegisterItemHelper>>;

    // The process-wide helper, created on first use.
    static std::shared_ptr<UiRegisterHelper> instance();

    UiRegisterHelper();
    UiRegisterHelper(const UiRegisterHelper &) = delete;
    UiRegisterHelper &operator=(const UiRegisterHelper &) = delete;

    // Binds a widget to the values polled for its name; a later registration under the
    // same name replaces the earlier one.
    void registerWidget(const QString &name, IUnitDataField *field);

    const PollMap &pollMap() const { return items; }
    // Throws std::out_of_range for an address that starts no item.
    const RegisterItemHelper &item(uint8_t address) const;

private:
    void addItem(uint8_t address, uint8_t size, PollValueType type, const QStringList &widgets);

    template<typename Value>
    void showValue(const QStringList &widgets, Value value);
    void showHardwareStatus(uint8_t status);
    void deliver(const QString &name, int raw);

    struct Binding
    {
        QPointer<QObject> object;
        IUnitDataField *field;
    };

    PollMap items;
    std::map<QString, Binding> widgets;
};
