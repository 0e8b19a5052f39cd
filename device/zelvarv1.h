#pragma once

#include "device/limitstabledevice.h"

#include <map>

// The servos of the own family: a 118-byte control table, of which 87 addresses are
// described for the register view; the 31 others are left out of it.
class ZelvarV1 : public LimitsTableDevice
{
public:
    ZelvarV1();

    unsigned controlTableSize() const override;
    std::unique_ptr<RegisterDescription> registerDescription(uint16_t address) const override;
    unsigned registerCount(unsigned bank) const override;
    bool hasRegisterMap() const override;
    std::vector<RegisterSpan> registers() const override;

private:
    std::map<uint16_t, RegisterDescription> descriptions;
};
