#pragma once

#include "device/fieldlimits.h"
#include "device/registerspan.h"

// One register of the connected model with the limits of the control that shows it.
struct CatalogueEntry
{
    RegisterSpan span;
    // False for a register shown as a plain number (codes, flags, unbound registers).
    bool hasLimits = false;
    FieldLimits limits;

    // Whether the value has a unit the user picks (field ids 0 to 7).
    bool isPhysical() const { return span.fieldId >= 0 && span.fieldId < 8; }
};
