#pragma once

#include "device/idevice.h"

#include <map>

// A device model whose field limits come from a table filled by the concrete model.
class LimitsTableDevice : public IDevice
{
public:
    std::unique_ptr<FieldLimits> limits(const QString &objectName) const override;
    bool definesField(const QString &objectName) const override;

protected:
    struct LimitsRow
    {
        const char *objectName;
        int32_t rawMin;
        int32_t rawMax;
        double physicalMin;
        double physicalMax;
        std::shared_ptr<IFieldDependency> controller;
    };

    void addLimits(std::initializer_list<LimitsRow> rows);

private:
    std::map<QString, FieldLimits> limitsTable;
};
