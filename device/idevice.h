#pragma once

#include "device/fieldlimits.h"
#include "device/registerdescription.h"
#include "device/registerspan.h"

#include <QString>
#include <memory>
#include <vector>

// A servo model: its control table size, the limits of every bound field and the
// descriptions of its registers.
class IDevice
{
public:
    virtual unsigned controlTableSize() const = 0;
    // Throws std::out_of_range for a name the model does not define.
    virtual std::unique_ptr<FieldLimits> limits(const QString &objectName) const = 0;
    // Null when the address is not described.
    virtual std::unique_ptr<RegisterDescription> registerDescription(uint16_t address) const = 0;
    virtual unsigned registerCount(unsigned bank) const = 0;
    virtual bool hasRegisterMap() const = 0;
    // Whether limits(objectName) would answer. Widgets ask first, so that a model with a
    // smaller table (the AX-12) leaves the fields it lacks on their placeholder.
    virtual bool definesField(const QString &objectName) const = 0;
    // Every value of the control table in address order, for the programs that read the
    // table without the edit view.
    virtual std::vector<RegisterSpan> registers() const = 0;
    virtual ~IDevice() = default;
};
