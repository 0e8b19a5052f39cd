#include "telemetry/telemetrydecoder.h"

#include "device/physicalquantities.h"
#include "telemetry/registercatalogue.h"

#include <algorithm>
#include <cmath>

namespace {

// A read reply carries the table from this byte on.
constexpr int replyDataOffset = 9;

// The unit choices that are the base units themselves: the current's base is the mA.
std::shared_ptr<PhysicalQuantities> baseUnitChoices()
{
    auto choices = std::make_shared<PhysicalQuantities>();
    choices->current = 1;
    return choices;
}

int64_t magnitudeMask(int bits)
{
    return (int64_t(1) << bits) - 1;
}

// Decimals that show one raw step of a scaled plain number.
int stepDecimals(const FieldLimits &limits)
{
    const double step = (limits.physicalMax - limits.physicalMin) / (limits.rawMax - limits.rawMin);
    return std::max(0, int(std::ceil(-std::log10(std::abs(step)) - 1e-9)));
}

} // namespace

TelemetryDecoder::TelemetryDecoder(std::shared_ptr<const RegisterCatalogue> catalogue,
                                   std::shared_ptr<PhysicalQuantities> units)
    : registers(std::move(catalogue))
    , units(std::move(units))
    , baseUnits(baseUnitChoices())
{}

QByteArray TelemetryDecoder::tableOfReply(const QByteArray &reply)
{
    return reply.mid(replyDataOffset, std::max(0, reply.size() - replyDataOffset - 2));
}

std::optional<int64_t> TelemetryDecoder::rawValue(const QByteArray &table, const RegisterSpan &span)
{
    if (table.size() < int(span.address) + span.size)
        return std::nullopt;
    uint64_t value = 0;
    for (int i = 0; i < span.size; ++i)
        value |= uint64_t(uint8_t(table.at(span.address + i))) << (8 * i);
    const int bits = 8 * span.size;
    if (span.isSigned && bits < 64 && (value >> (bits - 1)) & 1)
        return int64_t(value) - (int64_t(1) << bits);
    return int64_t(value);
}

int TelemetryDecoder::baudRateOfCode(int64_t code)
{
    // The servo divides 2,000,000 bps by the code plus one; the codes of the usual rates
    // go by those rates' names, which a port is opened at.
    static const std::pair<int, int> namedRates[] = {
        {207, 9600}, {103, 19200}, {51, 38400}, {34, 57600},  {16, 115200}, {9, 200000},
        {7, 250000}, {4, 400000},  {3, 500000}, {1, 1000000}, {0, 2000000},
    };
    for (const auto &[namedCode, rate] : namedRates) {
        if (code == namedCode)
            return rate;
    }
    return code >= 0 ? int(2000000 / (code + 1)) : 0;
}

QByteArray TelemetryDecoder::bytes(const RegisterSpan &span, int64_t raw)
{
    QByteArray data;
    for (int i = 0; i < span.size; ++i)
        data.append(char(uint64_t(raw) >> (8 * i) & 0xFF));
    return data;
}

std::optional<DecodedValue> TelemetryDecoder::decode(const QByteArray &table,
                                                     const CatalogueEntry &entry) const
{
    const std::optional<int64_t> raw = rawValue(table, entry.span);
    if (!raw)
        return std::nullopt;
    return decodeRaw(entry, *raw);
}

DecodedValue TelemetryDecoder::decodeRaw(const CatalogueEntry &entry, int64_t raw) const
{
    DecodedValue value;
    value.raw = raw;
    int64_t magnitude = raw;
    if (entry.span.directionBit >= 0) {
        value.clockwise = (raw >> entry.span.directionBit) & 1;
        magnitude = raw & magnitudeMask(entry.span.directionBit);
    }
    value.base = entry.hasLimits ? conversion.rawToPhysical(int32_t(magnitude), entry.limits)
                                 : double(magnitude);
    if (value.clockwise)
        value.base = -value.base;
    value.display =
        entry.isPhysical() ? units.toDisplay(value.base, entry.span.fieldId) : value.base;
    value.unit = unitText(entry);
    return value;
}

std::optional<double> TelemetryDecoder::value(const QByteArray &table, Quantity quantity) const
{
    const CatalogueEntry *entry = registers->find(quantity);
    if (!entry)
        return std::nullopt;
    const std::optional<DecodedValue> decoded = decode(table, *entry);
    if (!decoded)
        return std::nullopt;
    return decoded->display;
}

QString TelemetryDecoder::unitText(const CatalogueEntry &entry) const
{
    return entry.isPhysical() ? units.unitName(entry.span.fieldId) : QString();
}

QString TelemetryDecoder::baseUnitText(const CatalogueEntry &entry) const
{
    return entry.isPhysical() ? baseUnits.unitName(entry.span.fieldId) : QString();
}

QString TelemetryDecoder::checkRaw(const CatalogueEntry &entry, int64_t raw) const
{
    const RegisterSpan &span = entry.span;
    const int bits = 8 * span.size;
    const int64_t lowest = span.isSigned ? -(int64_t(1) << (bits - 1)) : 0;
    const int64_t highest =
        span.isSigned ? (int64_t(1) << (bits - 1)) - 1 : (int64_t(1) << bits) - 1;
    int64_t magnitude = raw;
    if (span.directionBit >= 0 && raw >= 0)
        magnitude = raw & magnitudeMask(span.directionBit);
    int64_t low = lowest;
    int64_t high = highest;
    if (entry.hasLimits) {
        low = std::min(entry.limits.rawMin, entry.limits.rawMax);
        high = std::max(entry.limits.rawMin, entry.limits.rawMax);
    }
    if (raw < lowest || raw > highest || magnitude < low || magnitude > high)
        return tr("%1 takes raw values %2 to %3").arg(span.description).arg(low).arg(high);
    return QString();
}

int TelemetryDecoder::decimals(const CatalogueEntry &entry) const
{
    if (entry.isPhysical())
        return units.decimals(entry.span.fieldId);
    return entry.hasLimits ? stepDecimals(entry.limits) : 0;
}

QString TelemetryDecoder::displayText(const DecodedValue &value, const CatalogueEntry &entry) const
{
    if (entry.span.description == QLatin1String("Baud rate"))
        return QStringLiteral("%1 bps").arg(baudRateOfCode(value.raw));
    const QString number = QString::number(value.display, 'f', decimals(entry));
    return value.unit.isEmpty() ? number : number + QLatin1Char(' ') + value.unit;
}

EncodedValue TelemetryDecoder::fromBase(const CatalogueEntry &entry, double base) const
{
    return encode(entry, base, baseUnits);
}

EncodedValue TelemetryDecoder::fromDisplay(const CatalogueEntry &entry, double shown) const
{
    const double base = entry.isPhysical() ? units.fromDisplay(shown, entry.span.fieldId) : shown;
    return encode(entry, base, units);
}

EncodedValue TelemetryDecoder::encode(const CatalogueEntry &entry, double base,
                                      const UnitsHelper &shownIn) const
{
    const RegisterSpan &span = entry.span;
    if (!std::isfinite(base))
        return {std::nullopt, QStringLiteral("%1 takes a number").arg(span.description)};

    const bool clockwise = span.directionBit >= 0 && base < 0;
    const double magnitude = clockwise ? -base : base;
    double low = 0.0;
    double high = 0.0;
    const int bits = span.directionBit >= 0 ? span.directionBit : 8 * span.size;
    if (entry.hasLimits) {
        low = entry.limits.physicalMin;
        high = entry.limits.physicalMax;
    } else if (span.isSigned) {
        low = -std::ldexp(1.0, bits - 1);
        high = std::ldexp(1.0, bits - 1) - 1;
    } else {
        high = std::ldexp(1.0, bits) - 1;
    }

    // Rounding on the way through the display unit must not refuse the range's own ends.
    const double slack = 1e-9 * std::max(1.0, high - low);
    const bool wholeNumber = entry.hasLimits || magnitude == std::trunc(magnitude);
    if (magnitude < low - slack || magnitude > high + slack || !wholeNumber) {
        const int32_t id = entry.isPhysical() ? span.fieldId : -1;
        const int places = decimals(entry);
        const double shownLow = span.directionBit >= 0 ? -high : low;
        const QString unit =
            entry.isPhysical() ? QLatin1Char(' ') + shownIn.unitName(id) : QString();
        const QString kind = wholeNumber ? QString() : QStringLiteral("whole numbers from ");
        return {std::nullopt,
                QStringLiteral("%1 takes %2%3 to %4%5")
                    .arg(span.description, kind,
                         QString::number(shownIn.toDisplay(shownLow, id), 'f', places),
                         QString::number(shownIn.toDisplay(high, id), 'f', places), unit)};
    }

    int64_t raw = entry.hasLimits
                      ? conversion.physicalToRaw(std::clamp(magnitude, low, high), entry.limits)
                      : int64_t(magnitude);
    if (clockwise)
        raw |= int64_t(1) << span.directionBit;
    return {raw, QString()};
}
