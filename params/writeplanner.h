#pragma once

#include "params/parameterdiff.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QString>
#include <cstdint>
#include <vector>

class RegisterCatalogue;

// One write instruction: bytes from a start address on.
struct WriteBlock
{
    uint8_t address = 0;
    QByteArray data;
};

struct WritePlan
{
    // In the order they must be sent.
    std::vector<WriteBlock> blocks;
    // Empty unless nothing may be written.
    QString error;
};

// Turns the registers the user ticked into as few write blocks as the table allows,
// never carrying a byte of a register that was not ticked.
class WritePlanner
{
    Q_DECLARE_TR_FUNCTIONS(WritePlanner)

public:
    explicit WritePlanner(const RegisterCatalogue &catalogue);

    // Whether the servo refuses these writes while its motor runs, as the table shows it.
    bool needsMotorOff(const std::vector<ParameterDifference> &ticked,
                       const QByteArray &table) const;
    // With `switchMotorOff`, a write that switches the motor off comes first when needed.
    WritePlan plan(const std::vector<ParameterDifference> &ticked, const QByteArray &table,
                   bool switchMotorOff) const;

private:
    const RegisterCatalogue &catalogue;
};
