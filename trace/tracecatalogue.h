#pragma once

#include "trace/tracechannel.h"

#include <QStringList>
#include <QVector>
#include <memory>

class TelemetryDecoder;

// The channels a connected model offers to the plot and the recorder, all read through
// the one decoder, in the user's units of the moment.
class TraceCatalogue
{
public:
    // Keys of register channels start with this, followed by the register's address.
    static const QString registerKeyPrefix;

    explicit TraceCatalogue(std::shared_ptr<const TelemetryDecoder> decoder);

    // The realtime quantities and targets (keyed as the decoder's quantity table), then
    // every other register by its description.
    QVector<TraceChannel> channels() const;
    // What a recording holds: every quantity and target, the reply's error byte, the
    // hardware error status, and the chosen registers as raw numbers.
    QVector<TraceChannel> recordingColumns(const QStringList &rawRegisterKeys) const;

private:
    std::shared_ptr<const TelemetryDecoder> decoder;
};
