#pragma once

#include "widgets/iunitfield.h"

#include <QString>

// A field that shows, and may edit, a raw register value.
class IUnitDataField : public IUnitField
{
public:
    virtual ~IUnitDataField() = default;
    // A raw value from the servo; ignored while not connected.
    virtual void setValue(int raw) = 0;
    // The raw value a save writes.
    virtual int value() = 0;
    // Binds the field id, then sets the Qt object name. Widgets hide QObject's
    // non-virtual setObjectName with this, which is what generated form code calls.
    virtual void setObjectName(const QString &name) = 0;
    // Runs the field dependency of the limits record, if any.
    virtual void applyDependency() = 0;
};
