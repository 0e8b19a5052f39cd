#pragma once

#include <QDateTime>
#include <QString>
#include <cstdint>
#include <optional>
#include <vector>

// One writable register as a parameter file keeps it.
struct ParameterValue
{
    QString description;
    int64_t raw = 0;
    // In base units, for physical quantities only.
    std::optional<double> base;
};

// The settings of one servo, as saved to and loaded from a file.
struct ParameterFile
{
    static constexpr int currentFormatVersion = 1;

    int formatVersion = currentFormatVersion;
    int modelNumber = 0;
    int firmwareVersion = 0;
    int id = 0;
    int baudRate = 0;
    QDateTime date;
    // In address order.
    std::vector<ParameterValue> registers;
};
