#pragma once

#include <cstdint>
#include <memory>

class IFieldDependency;

// Linear map between a field's raw register range and its physical range (base units).
struct FieldLimits
{
    int32_t rawMin = 0;
    int32_t rawMax = 0;
    double physicalMin = 0.0;
    double physicalMax = 0.0;
    // Only the mode combo boxes carry one.
    std::shared_ptr<IFieldDependency> controller;
};
