#pragma once

#include "controllers/controllerbase.h"

// Turns continuously at a target angular velocity.
class WheelModeController : public ControllerBase
{
public:
    void apply() override;
};
