#include "controllers/operationmodecontroller.h"

void OperationModeController::apply() {}
