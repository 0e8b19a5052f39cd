#include "trace/tracecatalogue.h"

#include "telemetry/registercatalogue.h"
#include "telemetry/telemetrydecoder.h"

#include <algorithm>
#include <limits>

namespace {
constexpr int replyErrorByte = 8;
constexpr int replyDataOffset = 9;
constexpr double noValue = std::numeric_limits<double>::quiet_NaN();

// The register's raw value straight from the reply, without copying the table out.
std::function<double(const QByteArray &)> rawReader(const RegisterSpan &span)
{
    return [span](const QByteArray &reply) {
        if (reply.size() <= replyDataOffset)
            return noValue;
        const QByteArray table = QByteArray::fromRawData(reply.constData() + replyDataOffset,
                                                         reply.size() - replyDataOffset);
        const std::optional<int64_t> raw = TelemetryDecoder::rawValue(table, span);
        return raw ? double(*raw) : noValue;
    };
}

TraceChannel channelOf(const std::shared_ptr<const TelemetryDecoder> &decoder,
                       const CatalogueEntry &entry, const QString &key, const QString &name)
{
    const CatalogueEntry *registerEntry = &entry;
    // The conversion holds the decoder, and with it the entry, so a channel outlives the
    // catalogue it came from.
    auto toDisplay = [decoder, registerEntry](double raw) {
        return decoder->decodeRaw(*registerEntry, int64_t(raw)).display;
    };
    return {key, name, decoder->unitText(entry), rawReader(entry.span), toDisplay};
}

QString registerKey(const CatalogueEntry &entry)
{
    return TraceCatalogue::registerKeyPrefix + QString::number(entry.span.address);
}
} // namespace

const QString TraceCatalogue::registerKeyPrefix = QStringLiteral("register-");

TraceCatalogue::TraceCatalogue(std::shared_ptr<const TelemetryDecoder> decoder)
    : decoder(std::move(decoder))
{}

QVector<TraceChannel> TraceCatalogue::channels() const
{
    const RegisterCatalogue &catalogue = decoder->catalogue();
    QVector<TraceChannel> list;
    std::vector<const CatalogueEntry *> quantities;
    for (Quantity quantity : QuantityTable::all()) {
        if (const CatalogueEntry *entry = catalogue.find(quantity)) {
            list.append(channelOf(decoder, *entry, QuantityTable::key(quantity),
                                  QuantityTable::description(quantity)));
            quantities.push_back(entry);
        }
    }
    for (const CatalogueEntry &entry : catalogue.entries()) {
        if (std::find(quantities.begin(), quantities.end(), &entry) == quantities.end())
            list.append(channelOf(decoder, entry, registerKey(entry), entry.span.description));
    }
    return list;
}

QVector<TraceChannel> TraceCatalogue::recordingColumns(const QStringList &rawRegisterKeys) const
{
    QVector<TraceChannel> columns;
    for (const TraceChannel &channel : channels()) {
        if (!channel.key.startsWith(registerKeyPrefix))
            columns.append(channel);
    }
    columns.append({QStringLiteral("error"),
                    QStringLiteral("Error byte"),
                    QString(),
                    [](const QByteArray &reply) {
                        return reply.size() > replyErrorByte ? double(quint8(reply[replyErrorByte]))
                                                             : noValue;
                    },
                    {}});
    const RegisterCatalogue &catalogue = decoder->catalogue();
    if (const CatalogueEntry *status = catalogue.find(QStringLiteral("Hardware error status")))
        columns.append({QStringLiteral("hardware-error"),
                        status->span.description,
                        QString(),
                        rawReader(status->span),
                        {}});
    for (const CatalogueEntry &entry : catalogue.entries()) {
        if (rawRegisterKeys.contains(registerKey(entry)))
            columns.append({registerKey(entry),
                            entry.span.description + QStringLiteral(" (raw)"),
                            QString(),
                            rawReader(entry.span),
                            {}});
    }
    return columns;
}
