#pragma once

#include "params/parameterfile.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QString>
#include <memory>
#include <optional>

class QJsonValue;
class TelemetryDecoder;

// Turns a servo's control table into a parameter file, and a file into JSON and back,
// refusing anything that does not fit the servo's model with the cause in words.
class ParameterFileCodec
{
    Q_DECLARE_TR_FUNCTIONS(ParameterFileCodec)

public:
    explicit ParameterFileCodec(std::shared_ptr<const TelemetryDecoder> decoder);

    // Every writable register of the table; the table must hold the whole control table.
    ParameterFile capture(const QByteArray &table, const QDateTime &date) const;

    QByteArray toJson(const ParameterFile &file) const;
    // Null with the cause in `error` when the text is no parameter file of `modelNumber`.
    std::optional<ParameterFile> fromJson(const QByteArray &json, int modelNumber,
                                          QString *error) const;

private:
    std::optional<ParameterValue> readRegister(const QJsonValue &value, QString *error) const;

    std::shared_ptr<const TelemetryDecoder> decoder;
};
