#pragma once

#include "widgets/ifielddependency.h"

// Follows the input mode. The input mode acts through the operating-mode controllers,
// which read it themselves, so there is nothing to do here.
class InputModeController : public IFieldDependency
{
public:
    void apply() override;
};
