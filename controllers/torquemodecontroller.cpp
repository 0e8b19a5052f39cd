#include "controllers/torquemodecontroller.h"

void TorqueModeController::apply()
{
    applyMode(Torque);
}
