#pragma once

#include <QString>
#include <cstdint>

// One value of a control table: the bytes it spans (little-endian), how they are read and
// the control that shows it.
struct RegisterSpan
{
    uint8_t address = 0;
    uint8_t size = 1;
    bool isSigned = false;
    bool writable = false;
    // The register's description without its "(lower)" or "(byte 0)" suffix.
    QString description;
    // Object name of the control that shows the value and names its limits; empty for none.
    QString field;
    // The field's kind (FieldHelper); -1 for a plain number.
    int32_t fieldId = -1;
    // A bit carrying the direction, with the magnitude in the bits below it; -1 for none.
    int directionBit = -1;
};
