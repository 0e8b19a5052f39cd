#pragma once

#include "controllers/controllerbase.h"

// Joint mode without the angle limits.
class MultiTurnModeController : public ControllerBase
{
public:
    void apply() override;
};
