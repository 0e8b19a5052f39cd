#pragma once

#include "device/limitstabledevice.h"

#include <map>

// The servos of the own family: a 118-byte control table, all of it described.
class ZelvarV1 : public LimitsTableDevice
{
public:
    ZelvarV1();

    unsigned controlTableSize() const override;
    std::unique_ptr<RegisterDescription> registerDescription(uint16_t address) const override;
    unsigned registerCount(unsigned bank) const override;
    bool hasRegisterMap() const override;

private:
    std::map<uint16_t, RegisterDescription> descriptions;
};
