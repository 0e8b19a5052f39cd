#include "telemetry/registercatalogue.h"

#include "device/idevice.h"

RegisterCatalogue::RegisterCatalogue(const IDevice &device)
    : size(device.controlTableSize())
{
    for (const RegisterSpan &span : device.registers()) {
        CatalogueEntry entry{span, false, {}};
        if (!span.field.isEmpty() && device.definesField(span.field)) {
            entry.limits = *device.limits(span.field);
            // An empty range marks a code (the mode boxes): shown as it stands.
            entry.hasLimits = entry.limits.rawMax != entry.limits.rawMin;
        }
        all.push_back(entry);
    }
}

const CatalogueEntry *RegisterCatalogue::at(uint8_t address) const
{
    for (const CatalogueEntry &entry : all) {
        if (entry.span.address == address)
            return &entry;
    }
    return nullptr;
}

const CatalogueEntry *RegisterCatalogue::find(const QString &name) const
{
    const QString wanted = name.trimmed();
    // Descriptions first: on the AX-12 one control's limits serve two registers.
    for (const CatalogueEntry &entry : all) {
        if (entry.span.description.compare(wanted, Qt::CaseInsensitive) == 0)
            return &entry;
    }
    for (const CatalogueEntry &entry : all) {
        if (!entry.span.field.isEmpty() &&
            entry.span.field.compare(wanted, Qt::CaseInsensitive) == 0)
            return &entry;
    }
    return nullptr;
}

const CatalogueEntry *RegisterCatalogue::find(Quantity quantity) const
{
    return find(QuantityTable::description(quantity));
}
