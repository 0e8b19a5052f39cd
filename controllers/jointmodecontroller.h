#pragma once

#include "controllers/controllerbase.h"

// Moves to a target position within the angle limits.
class JointModeController : public ControllerBase
{
public:
    void apply() override;
};
