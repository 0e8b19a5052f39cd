#include "controllers/inputmodecontroller.h"

void InputModeController::apply() {}
