#include "params/parameterfilecodec.h"

#include "telemetry/registercatalogue.h"
#include "telemetry/telemetrydecoder.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <cmath>
#include <set>

namespace {

const QString formatVersionKey = QStringLiteral("formatVersion");
const QString modelNumberKey = QStringLiteral("modelNumber");
const QString firmwareKey = QStringLiteral("firmwareVersion");
const QString idKey = QStringLiteral("id");
const QString baudRateKey = QStringLiteral("baudRate");
const QString dateKey = QStringLiteral("date");
const QString registersKey = QStringLiteral("registers");
const QString descriptionKey = QStringLiteral("description");
const QString addressKey = QStringLiteral("address");
const QString rawKey = QStringLiteral("raw");
const QString valueKey = QStringLiteral("value");
const QString unitKey = QStringLiteral("unit");

std::optional<int64_t> wholeNumber(const QJsonValue &value)
{
    if (!value.isDouble())
        return std::nullopt;
    const double number = value.toDouble();
    // Past 2^53 a double no longer tells neighbouring integers apart.
    if (number != std::trunc(number) || std::abs(number) > 9007199254740992.0)
        return std::nullopt;
    return int64_t(number);
}

int64_t rawOf(const QByteArray &table, const RegisterCatalogue &catalogue, const QString &name)
{
    const CatalogueEntry *entry = catalogue.find(name);
    if (!entry)
        return 0;
    return TelemetryDecoder::rawValue(table, entry->span).value_or(0);
}

} // namespace

ParameterFileCodec::ParameterFileCodec(std::shared_ptr<const TelemetryDecoder> decoder)
    : decoder(std::move(decoder))
{}

ParameterFile ParameterFileCodec::capture(const QByteArray &table, const QDateTime &date) const
{
    const RegisterCatalogue &catalogue = decoder->catalogue();
    ParameterFile file;
    file.modelNumber = int(rawOf(table, catalogue, QStringLiteral("Model number")));
    file.firmwareVersion = int(rawOf(table, catalogue, QStringLiteral("Firmware version")));
    file.id = int(rawOf(table, catalogue, QStringLiteral("ID")));
    file.baudRate =
        TelemetryDecoder::baudRateOfCode(rawOf(table, catalogue, QStringLiteral("Baud rate")));
    file.date = date;
    for (const CatalogueEntry &entry : catalogue.entries()) {
        const std::optional<DecodedValue> value = decoder->decode(table, entry);
        if (!entry.span.writable || !value)
            continue;
        ParameterValue saved{entry.span.description, value->raw, std::nullopt};
        if (entry.isPhysical())
            saved.base = value->base;
        file.registers.push_back(saved);
    }
    return file;
}

QByteArray ParameterFileCodec::toJson(const ParameterFile &file) const
{
    const RegisterCatalogue &catalogue = decoder->catalogue();
    QJsonArray registers;
    for (const ParameterValue &value : file.registers) {
        QJsonObject item{{descriptionKey, value.description}, {rawKey, double(value.raw)}};
        if (const CatalogueEntry *entry = catalogue.find(value.description)) {
            item.insert(addressKey, entry->span.address);
            if (value.base) {
                item.insert(valueKey, *value.base);
                item.insert(unitKey, decoder->baseUnitText(*entry));
            }
        }
        registers.append(item);
    }
    const QJsonObject root{
        {formatVersionKey, file.formatVersion},
        {modelNumberKey, file.modelNumber},
        {firmwareKey, file.firmwareVersion},
        {idKey, file.id},
        {baudRateKey, file.baudRate},
        {dateKey, file.date.toUTC().toString(Qt::ISODate)},
        {registersKey, registers},
    };
    return QJsonDocument(root).toJson(QJsonDocument::Indented);
}

std::optional<ParameterFile> ParameterFileCodec::fromJson(const QByteArray &json, int modelNumber,
                                                          QString *error) const
{
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(json, &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        *error = tr("The file is damaged: %1 at character %2.")
                     .arg(parseError.errorString())
                     .arg(parseError.offset);
        return std::nullopt;
    }
    const QJsonObject root = document.object();
    const std::optional<int64_t> version = wholeNumber(root.value(formatVersionKey));
    if (!document.isObject() || !version) {
        *error = tr("The file is not a parameter file: it has no format version.");
        return std::nullopt;
    }
    if (*version != ParameterFile::currentFormatVersion) {
        *error = tr("The file has format version %1; this program reads version %2.")
                     .arg(*version)
                     .arg(ParameterFile::currentFormatVersion);
        return std::nullopt;
    }
    const std::optional<int64_t> model = wholeNumber(root.value(modelNumberKey));
    if (!model) {
        *error = tr("The file is damaged: it names no model number.");
        return std::nullopt;
    }
    if (*model != modelNumber) {
        *error = tr("The file is for model number %1; this servo is model number %2.")
                     .arg(*model)
                     .arg(modelNumber);
        return std::nullopt;
    }
    if (!root.value(registersKey).isArray()) {
        *error = tr("The file is damaged: it has no list of registers.");
        return std::nullopt;
    }

    ParameterFile file;
    file.modelNumber = int(*model);
    file.firmwareVersion = root.value(firmwareKey).toInt();
    file.id = root.value(idKey).toInt();
    file.baudRate = root.value(baudRateKey).toInt();
    file.date = QDateTime::fromString(root.value(dateKey).toString(), Qt::ISODate);
    std::set<uint8_t> seen;
    for (const QJsonValue &item : root.value(registersKey).toArray()) {
        const std::optional<ParameterValue> value = readRegister(item, error);
        if (!value)
            return std::nullopt;
        const CatalogueEntry *entry = decoder->catalogue().find(value->description);
        if (!seen.insert(entry->span.address).second) {
            *error = tr("The file is damaged: it names \"%1\" twice.").arg(value->description);
            return std::nullopt;
        }
        file.registers.push_back(*value);
    }
    return file;
}

std::optional<ParameterValue> ParameterFileCodec::readRegister(const QJsonValue &item,
                                                               QString *error) const
{
    const QJsonObject object = item.toObject();
    const QString description = object.value(descriptionKey).toString();
    const CatalogueEntry *entry = decoder->catalogue().find(description);
    // Only descriptions name registers: a control's name is no key of the file.
    if (!entry || entry->span.description.compare(description, Qt::CaseInsensitive) != 0) {
        *error = description.isEmpty()
                     ? tr("The file is damaged: a register has no description.")
                     : tr("The file names a register this model does not have: \"%1\".")
                           .arg(description);
        return std::nullopt;
    }
    const QString name = entry->span.description;
    if (!entry->span.writable) {
        *error = tr("The file sets \"%1\", which is read-only.").arg(name);
        return std::nullopt;
    }
    if (object.contains(addressKey) &&
        wholeNumber(object.value(addressKey)) != int64_t(entry->span.address)) {
        *error = tr("The file is damaged: it puts \"%1\" at another address than %2.")
                     .arg(name)
                     .arg(entry->span.address);
        return std::nullopt;
    }
    const std::optional<int64_t> raw = wholeNumber(object.value(rawKey));
    if (!raw) {
        *error = tr("The file is damaged: the raw value of \"%1\" is missing or not "
                    "a whole number.")
                     .arg(name);
        return std::nullopt;
    }
    if (const QString outOfRange = decoder->checkRaw(*entry, *raw); !outOfRange.isEmpty()) {
        *error = tr("The file is damaged: its raw value %1 is out of range (%2).")
                     .arg(*raw)
                     .arg(outOfRange);
        return std::nullopt;
    }
    ParameterValue value{name, *raw, std::nullopt};
    if (entry->isPhysical() && object.contains(valueKey)) {
        const double base = decoder->decodeRaw(*entry, *raw).base;
        const double given = object.value(valueKey).toDouble(qQNaN());
        // Both numbers are written together; when they part, one of them was altered.
        if (!(std::abs(given - base) <= 1e-9 * std::max(1.0, std::abs(base)))) {
            *error = tr("The file is damaged: \"%1\" has raw value %2, which is %3 "
                        "%4, but value %5.")
                         .arg(name)
                         .arg(*raw)
                         .arg(base, 0, 'g', 10)
                         .arg(decoder->baseUnitText(*entry))
                         .arg(object.value(valueKey).toVariant().toString());
            return std::nullopt;
        }
        value.base = base;
    }
    return value;
}
