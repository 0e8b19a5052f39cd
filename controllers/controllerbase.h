#pragma once

#include <vector>

class IUnitDataField;
class IZelvarField;

// Locks the controls that the servo's operating mode does not use and unlocks the ones
// it does. Each concrete controller stands for one mode; it is built when the mode
// changes, applied once and dropped.
class ControllerBase
{
public:
    virtual void apply() = 0;
    virtual ~ControllerBase() = default;

    enum Mode { Torque, Wheel, Joint, MultiTurn, Stepper };

protected:
    // Fetches the mode-dependent controls by name; an unknown name throws
    // std::out_of_range.
    ControllerBase();

    // Sets every control as mode's column of the table says. When the operating mode is
    // neither mode nor unknown, every setting is reversed.
    void applyMode(Mode mode);

private:
    IUnitDataField *operatingMode = nullptr;
    IUnitDataField *inputMode = nullptr;
    std::vector<IZelvarField *> controls;
};
