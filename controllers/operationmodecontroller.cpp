#include "controllers/operationmodecontroller.h"

#include "controllers/jointmodecontroller.h"
#include "controllers/multiturnmodecontroller.h"
#include "controllers/steppermodecontroller.h"
#include "controllers/torquemodecontroller.h"
#include "controllers/wheelmodecontroller.h"
#include "device/fieldhelper.h"
#include "widgets/iunitdatafield.h"

void OperationModeController::apply()
{
    const auto helper = FieldHelper::instance();
    if (!helper)
        return;
    auto *operatingMode =
        dynamic_cast<IUnitDataField *>(helper->field(QStringLiteral("operatingModeComboBox")));
    if (!operatingMode)
        return;
    // Runs before the combo box shows the new value, so it acts on the mode shown until
    // now: the locks follow a mode change one received value late.
    switch (operatingMode->value()) {
    case ControllerBase::Torque:
        TorqueModeController().apply();
        break;
    case ControllerBase::Wheel:
        WheelModeController().apply();
        break;
    case ControllerBase::MultiTurn:
        MultiTurnModeController().apply();
        break;
    case ControllerBase::Stepper:
        StepperModeController().apply();
        break;
    default:
        // Joint, the placeholder and any index beyond the list.
        JointModeController().apply();
        break;
    }
}
