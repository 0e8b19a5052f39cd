#pragma once

#include <QString>

// A control bound to a servo field by its object name.
class IZelvarField
{
public:
    // Overridden by each widget to return the QObject name, the key of its binding.
    virtual QString objectName() const = 0;
    // Taken out of use by a mode controller (true) or given back (false).
    virtual void setLocked(bool lock) = 0;

protected:
    ~IZelvarField() = default;
};
