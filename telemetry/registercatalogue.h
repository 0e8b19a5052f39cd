#pragma once

#include "telemetry/catalogueentry.h"
#include "telemetry/quantitytable.h"

#include <QString>
#include <cstdint>
#include <vector>

class IDevice;

// Every register of a model's control table by its description, with the limits of its
// control: what the plot, the recorder, parameter files and the console tool look up.
class RegisterCatalogue
{
public:
    explicit RegisterCatalogue(const IDevice &device);

    unsigned tableSize() const { return size; }
    // In address order.
    const std::vector<CatalogueEntry> &entries() const { return all; }

    // Null when no register starts at the address.
    const CatalogueEntry *at(uint8_t address) const;
    // By description or control name, case-insensitive; null when nothing matches.
    const CatalogueEntry *find(const QString &name) const;
    // Null when the model has no such register.
    const CatalogueEntry *find(Quantity quantity) const;

private:
    unsigned size;
    std::vector<CatalogueEntry> all;
};
