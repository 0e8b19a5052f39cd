#include "params/writeplanner.h"

#include "telemetry/registercatalogue.h"
#include "telemetry/telemetrydecoder.h"

#include <algorithm>

namespace {

const QString motorSwitch = QStringLiteral("Control enable");

} // namespace

WritePlanner::WritePlanner(const RegisterCatalogue &catalogue)
    : catalogue(catalogue)
{}

bool WritePlanner::needsMotorOff(const std::vector<ParameterDifference> &ticked,
                                 const QByteArray &table) const
{
    const CatalogueEntry *motor = catalogue.find(motorSwitch);
    const bool motorOn = motor && TelemetryDecoder::rawValue(table, motor->span).value_or(0) != 0;
    return motorOn && std::any_of(ticked.begin(), ticked.end(), [](const auto &difference) {
               return difference.entry->span.nonVolatile;
           });
}

WritePlan WritePlanner::plan(const std::vector<ParameterDifference> &ticked,
                             const QByteArray &table, bool switchMotorOff) const
{
    WritePlan plan;
    for (const ParameterDifference &difference : ticked) {
        if (!difference.entry->span.writable) {
            plan.error = tr("\"%1\" is read-only.").arg(difference.entry->span.description);
            return plan;
        }
    }
    if (needsMotorOff(ticked, table)) {
        if (!switchMotorOff) {
            plan.error = tr("The motor is on: the servo takes the non-volatile "
                            "registers only with the motor off.");
            return plan;
        }
        const CatalogueEntry *motor = catalogue.find(motorSwitch);
        plan.blocks.push_back({motor->span.address, TelemetryDecoder::bytes(motor->span, 0)});
    }

    std::vector<ParameterDifference> ordered = ticked;
    std::sort(ordered.begin(), ordered.end(), [](const auto &a, const auto &b) {
        return a.entry->span.address < b.entry->span.address;
    });
    std::vector<WriteBlock> blocks;
    std::vector<bool> moving;
    int end = -1;
    bool endNonVolatile = false;
    for (const ParameterDifference &difference : ordered) {
        const RegisterSpan &span = difference.entry->span;
        const QByteArray bytes = TelemetryDecoder::bytes(span, difference.wantedRaw);
        if (span.address == end && span.nonVolatile == endNonVolatile) {
            blocks.back().data.append(bytes);
            moving.back() = moving.back() || ParameterDiff::movesTheLink(*difference.entry);
        } else {
            blocks.push_back({span.address, bytes});
            moving.push_back(ParameterDiff::movesTheLink(*difference.entry));
        }
        end = span.address + span.size;
        endNonVolatile = span.nonVolatile;
    }
    // Whatever follows a new id or rate would go to a servo that no longer listens there.
    for (size_t i = 0; i < blocks.size(); ++i) {
        if (!moving[i])
            plan.blocks.push_back(blocks[i]);
    }
    for (size_t i = 0; i < blocks.size(); ++i) {
        if (moving[i])
            plan.blocks.push_back(blocks[i]);
    }
    return plan;
}
