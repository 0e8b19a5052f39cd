#pragma once

#include "controllers/controllerbase.h"

// Keeps only the limits, the horn offset, the stored defaults and the motor enable.
class StepperModeController : public ControllerBase
{
public:
    void apply() override;
};
