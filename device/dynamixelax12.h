#pragma once

#include "device/limitstabledevice.h"

// The Dynamixel AX-12: a 50-byte control table, with limits for the few fields its
// view would show and no register descriptions.
class DynamixelAx12 : public LimitsTableDevice
{
public:
    DynamixelAx12();

    unsigned controlTableSize() const override;
    std::unique_ptr<RegisterDescription> registerDescription(uint16_t address) const override;
    unsigned registerCount(unsigned bank) const override;
    bool hasRegisterMap() const override;
    std::vector<RegisterSpan> registers() const override;
};
