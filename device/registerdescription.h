#pragma once

#include <QString>
#include <cstdint>

// Where one register byte is shown in the register view, and whether the user may write it.
struct RegisterDescription
{
    uint32_t bank = 0;
    uint16_t row = 0;
    uint32_t writable = 0;
    QString description;
};
