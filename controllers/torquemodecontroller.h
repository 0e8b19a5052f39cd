#pragma once

#include "controllers/controllerbase.h"

// Uses only the torque target and direction, the current and velocity limits, the horn offset and
// the two check boxes.
class TorqueModeController : public ControllerBase
{
public:
    void apply() override;
};
