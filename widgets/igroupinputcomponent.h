#pragma once

// A control that takes part in its group's edit, apply and cancel. Each concrete widget
// also declares the Qt signal setIsDirty(bool), emitted when it turns dirty or clean.
class IGroupInputComponent
{
public:
    virtual ~IGroupInputComponent() = default;
    virtual void setEditable(bool enable) = 0;
    // Puts back the last value received from the servo and leaves edit mode.
    virtual void restoreValue() = 0;
};
