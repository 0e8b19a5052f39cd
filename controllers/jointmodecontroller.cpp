#include "controllers/jointmodecontroller.h"

void JointModeController::apply()
{
    applyMode(Joint);
}
