#pragma once

#include "widgets/ifielddependency.h"

// Follows the operating mode: locks the controls the current mode does not use.
class OperationModeController : public IFieldDependency
{
public:
    void apply() override;
};
