#pragma once

#include <QByteArray>
#include <cstdint>
#include <optional>
#include <vector>

struct CatalogueEntry;
struct ParameterFile;
class RegisterCatalogue;

// A register whose value on the servo is not the one wanted.
struct ParameterDifference
{
    const CatalogueEntry *entry = nullptr;
    // Null when the table read from the servo is too short to hold the register.
    std::optional<int64_t> servoRaw;
    int64_t wantedRaw = 0;
};

// Compares wanted register values with a control table read from the servo.
class ParameterDiff
{
public:
    // The file's registers that the table holds differently, in address order.
    static std::vector<ParameterDifference>
    between(const ParameterFile &file, const QByteArray &table, const RegisterCatalogue &catalogue);
    // The wanted values that the table does not hold: what a write did not change.
    static std::vector<ParameterDifference> notTaken(const std::vector<ParameterDifference> &wanted,
                                                     const QByteArray &table);
    // ID and baud rate move the servo away from the link, and the motor switch and the
    // targets set it moving: those are written only when the user asks for them.
    static bool startsTicked(const CatalogueEntry &entry);
};
