#pragma once

#include "device/unitshelper.h"
#include "telemetry/quantitytable.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QString>
#include <cstdint>
#include <memory>
#include <optional>

struct CatalogueEntry;
struct PhysicalQuantities;
class RegisterCatalogue;
struct RegisterSpan;

// One register's value at every stage from the table's bytes to what the user reads.
struct DecodedValue
{
    // The bytes put together, signed where the register is.
    int64_t raw = 0;
    // Set when the register's direction bit says clockwise; the values below are negative.
    bool clockwise = false;
    // In base units (rad, rad/s, N·m, V, mA, °C) or the plain number.
    double base = 0.0;
    double display = 0.0;
    QString unit;
};

// A value turned back into the register's raw number, or why it cannot be.
struct EncodedValue
{
    std::optional<int64_t> raw;
    QString error;
};

// Decodes the registers of a control table into units, and values back into registers,
// with the device's limits and the user's unit choices: the one conversion every reader
// of the table uses.
class TelemetryDecoder
{
    Q_DECLARE_TR_FUNCTIONS(TelemetryDecoder)

public:
    TelemetryDecoder(std::shared_ptr<const RegisterCatalogue> catalogue,
                     std::shared_ptr<PhysicalQuantities> units);

    const RegisterCatalogue &catalogue() const { return *registers; }

    // The control table inside a read reply of the whole table.
    static QByteArray tableOfReply(const QByteArray &reply);
    // Null when the table is too short to hold the register.
    static std::optional<int64_t> rawValue(const QByteArray &table, const RegisterSpan &span);
    // The rate of a baud-rate register's code, in bits per second.
    static int baudRateOfCode(int64_t code);
    // The register's bytes, least significant first.
    static QByteArray bytes(const RegisterSpan &span, int64_t raw);

    std::optional<DecodedValue> decode(const QByteArray &table, const CatalogueEntry &entry) const;
    DecodedValue decodeRaw(const CatalogueEntry &entry, int64_t raw) const;
    // In display units; null when the model lacks the quantity or the table is short.
    std::optional<double> value(const QByteArray &table, Quantity quantity) const;

    QString unitText(const CatalogueEntry &entry) const;
    // The base unit's name (radians, rad/s, Nm, V, mA, °C, μs); empty for a plain number.
    QString baseUnitText(const CatalogueEntry &entry) const;
    int decimals(const CatalogueEntry &entry) const;
    QString displayText(const DecodedValue &value, const CatalogueEntry &entry) const;

    // Empty when the register can hold the raw value, else why not.
    QString checkRaw(const CatalogueEntry &entry, int64_t raw) const;

    // Refuse what the register cannot hold, with the range in the units given.
    EncodedValue fromBase(const CatalogueEntry &entry, double base) const;
    EncodedValue fromDisplay(const CatalogueEntry &entry, double shown) const;

private:
    EncodedValue encode(const CatalogueEntry &entry, double base, const UnitsHelper &shownIn) const;

    std::shared_ptr<const RegisterCatalogue> registers;
    UnitsHelper units;
    UnitsHelper baseUnits;
    ConversionHelper conversion;
};
