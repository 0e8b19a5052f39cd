#pragma once

// A control that can tell whether it shows a value read from the servo. A group's block
// is written whole, so a control that shows none (a placeholder, a locked or not yet
// valued field) must leave the servo's own bytes in it.
class IServoValue
{
public:
    virtual ~IServoValue() = default;
    virtual bool showsServoValue() const = 0;
};
