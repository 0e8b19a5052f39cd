#include "device/limitstabledevice.h"

#include "device/checkedlookup.h"

std::unique_ptr<FieldLimits> LimitsTableDevice::limits(const QString &objectName) const
{
    return std::make_unique<FieldLimits>(checkedLookup(limitsTable, objectName));
}

bool LimitsTableDevice::definesField(const QString &objectName) const
{
    return limitsTable.count(objectName) != 0;
}

void LimitsTableDevice::addLimits(std::initializer_list<LimitsRow> rows)
{
    for (const LimitsRow &row : rows) {
        limitsTable.emplace(
            QString::fromLatin1(row.objectName),
            FieldLimits{row.rawMin, row.rawMax, row.physicalMin, row.physicalMax, row.controller});
    }
}
