#include "params/parameterdiff.h"

#include "params/parameterfile.h"
#include "telemetry/registercatalogue.h"
#include "telemetry/telemetrydecoder.h"

#include <QStringList>
#include <algorithm>

std::vector<ParameterDifference> ParameterDiff::between(const ParameterFile &file,
                                                        const QByteArray &table,
                                                        const RegisterCatalogue &catalogue)
{
    std::vector<ParameterDifference> wanted;
    for (const ParameterValue &value : file.registers) {
        if (const CatalogueEntry *entry = catalogue.find(value.description))
            wanted.push_back({entry, std::nullopt, value.raw});
    }
    std::sort(wanted.begin(), wanted.end(), [](const auto &a, const auto &b) {
        return a.entry->span.address < b.entry->span.address;
    });
    return notTaken(wanted, table);
}

std::vector<ParameterDifference>
ParameterDiff::notTaken(const std::vector<ParameterDifference> &wanted, const QByteArray &table)
{
    std::vector<ParameterDifference> differing;
    for (ParameterDifference difference : wanted) {
        difference.servoRaw = TelemetryDecoder::rawValue(table, difference.entry->span);
        if (difference.servoRaw != difference.wantedRaw)
            differing.push_back(difference);
    }
    return differing;
}

bool ParameterDiff::startsTicked(const CatalogueEntry &entry)
{
    static const QStringList held{
        "ID",           "Baud rate", "Control enable", "Target position", "Target angular velocity",
        "Target torque"};
    return !held.contains(entry.span.description, Qt::CaseInsensitive);
}
