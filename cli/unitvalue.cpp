#include "cli/unitvalue.h"

#include "device/physicalquantities.h"
#include "device/unitshelper.h"
#include "telemetry/catalogueentry.h"
#include "telemetry/telemetrydecoder.h"

#include <QRegularExpression>
#include <memory>
#include <vector>

namespace {

// Every quantity in its first (0) or second (1) unit.
std::shared_ptr<PhysicalQuantities> unitChoice(int32_t c)
{
    return std::make_shared<PhysicalQuantities>(PhysicalQuantities{c, c, c, c, c, c, c, c, 0});
}

} // namespace

UnitValue::Result UnitValue::parse(const QString &text, const CatalogueEntry &entry,
                                   const std::shared_ptr<const RegisterCatalogue> &catalogue)
{
    static const QRegularExpression form(
        QStringLiteral("^\\s*([-+]?(?:\\d+\\.?\\d*|\\.\\d+)(?:[eE][-+]?\\d+)?)\\s*(.*?)\\s*$"));
    const auto match = form.match(text);
    const QString &name = entry.span.description;
    if (!match.hasMatch())
        return {std::nullopt, QStringLiteral("%1: '%2' is not a number").arg(name, text)};
    const double number = match.captured(1).toDouble();
    const QString unit = match.captured(2);

    int32_t choice = 0;
    if (!unit.isEmpty()) {
        if (!entry.isPhysical())
            return {std::nullopt,
                    QStringLiteral("%1 takes a plain number, without a unit").arg(name)};
        // The settings offer up to two units per quantity.
        std::vector<int32_t> matches;
        QStringList offered;
        for (int32_t c = 0; c < 2; ++c) {
            const QString candidate = UnitsHelper(unitChoice(c)).unitName(entry.span.fieldId);
            if (candidate.isEmpty() || offered.contains(candidate))
                continue;
            offered << candidate;
            if (normalized(candidate).startsWith(normalized(unit)))
                matches.push_back(c);
        }
        if (matches.size() != 1)
            return {std::nullopt, QStringLiteral("%1 takes %2, not '%3'")
                                      .arg(name, offered.join(QStringLiteral(" or ")), unit)};
        choice = matches.front();
    }
    // A refusal names the range in the unit the value was given in.
    const EncodedValue encoded =
        TelemetryDecoder(catalogue, unitChoice(choice)).fromDisplay(entry, number);
    if (!encoded.raw)
        return {std::nullopt, encoded.error};
    return {*encoded.raw, QString()};
}

QString UnitValue::normalized(const QString &unit)
{
    QString plain = unit.toLower();
    plain.remove(QChar(0x00B0));                    // °
    plain.replace(QChar(0x03BC), QLatin1Char('u')); // μ
    plain.replace(QChar(0x00B5), QLatin1Char('u')); // µ
    plain.replace(QChar(0x00B2), QLatin1Char('2')); // ²
    plain.remove(QLatin1Char(' '));
    plain.remove(QLatin1Char('-'));
    return plain;
}
