#include "controllers/steppermodecontroller.h"

void StepperModeController::apply()
{
    applyMode(Stepper);
}
