#pragma once

// A control that can tell whether it holds a value read from the servo and whether the
// user changed it. A group's block is written whole: only what the user changed goes in,
// every other byte stays the servo's own.
class IServoValue
{
public:
    virtual ~IServoValue() = default;
    // A value from the servo arrived since the connect, shown or locked away.
    virtual bool holdsServoValue() const = 0;
    // The user changed it in the group's current edit.
    virtual bool isEdited() const = 0;
};
