#pragma once

#include <QCoreApplication>
#include <QString>

struct BusTransaction;
struct TransactionRecord;

// Words for what the wire carried, shared by the indicator, the log and saved logs.
class TransactionText
{
    Q_DECLARE_TR_FUNCTIONS(TransactionText)

public:
    // The status packet's error byte: the error number in words and the hardware alert.
    // Empty for 0. The instruction and address say why an access was refused.
    static QString servoError(quint8 error, quint8 instruction, quint16 address);
    static QString instruction(quint8 instruction);
    // "reply", "timeout", "refused: ...", "bad checksum", ...
    static QString outcome(const BusTransaction &transaction);
    static double roundTripMs(const BusTransaction &transaction);
    static QString hex(const QByteArray &bytes);
    // One tab-separated line: time, instruction, id, address, length, outcome, round
    // trip, request and reply bytes.
    static QString line(const TransactionRecord &record);
    static QString header();
};
