#include "controllers/multiturnmodecontroller.h"

void MultiTurnModeController::apply()
{
    applyMode(MultiTurn);
}
