#include "controllers/wheelmodecontroller.h"

void WheelModeController::apply()
{
    applyMode(Wheel);
}
