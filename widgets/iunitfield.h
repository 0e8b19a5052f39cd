#pragma once

#include "widgets/izelvarfield.h"

#include <cstdint>

// A field with a field id, which selects its unit and conversion.
class IUnitField : public IZelvarField
{
public:
    virtual int32_t fieldId() const = 0;

protected:
    ~IUnitField() = default;
};
