#include "monitor/transactiontext.h"

#include "monitor/transactionrecord.h"

#include <QStringList>

namespace {

constexpr quint8 alertBit = 0x80;
constexpr quint8 accessError = 7;
constexpr quint8 readInstruction = 0x02;
constexpr quint8 writeInstruction = 0x03;
// Below the control-enable register lies the non-volatile area, which a servo only lets
// be written while its motor is off.
constexpr quint16 volatileAreaStart = 48;

} // namespace

QString TransactionText::servoError(quint8 error, quint8 instruction, quint16 address)
{
    static const char *const numbers[] = {
        nullptr,
        QT_TR_NOOP("result fail"),
        QT_TR_NOOP("instruction error"),
        QT_TR_NOOP("checksum error"),
        QT_TR_NOOP("data range error"),
        QT_TR_NOOP("data length error"),
        QT_TR_NOOP("data limit error"),
        QT_TR_NOOP("access error"),
    };
    const quint8 number = error & ~alertBit;
    QStringList parts;
    if (number == accessError && instruction == writeInstruction)
        parts << (address < volatileAreaStart ? tr("access error: the motor is enabled")
                                              : tr("access error: the register cannot be written"));
    else if (number == accessError && instruction == readInstruction)
        parts << tr("access error: the register cannot be read");
    else if (number > 0 && number < sizeof numbers / sizeof *numbers)
        parts << tr(numbers[number]);
    else if (number != 0)
        parts << tr("error %1").arg(number);
    if (error & alertBit)
        parts << tr("hardware alert");
    return parts.join(QStringLiteral(", "));
}

QString TransactionText::instruction(quint8 instruction)
{
    switch (instruction) {
    case 0x01:
        return tr("ping");
    case readInstruction:
        return tr("read");
    case writeInstruction:
        return tr("write");
    case 0x06:
        return tr("factory reset");
    case 0x08:
        return tr("reboot");
    default:
        return QStringLiteral("0x%1").arg(instruction, 2, 16, QLatin1Char('0'));
    }
}

QString TransactionText::outcome(const BusTransaction &transaction)
{
    switch (transaction.outcome) {
    case BusTransaction::Outcome::Reply: {
        const QString error =
            servoError(transaction.error, transaction.instruction, transaction.address);
        if (error.isEmpty())
            return tr("reply");
        return (transaction.error & ~alertBit) ? tr("refused: %1").arg(error)
                                               : tr("reply, %1").arg(error);
    }
    case BusTransaction::Outcome::Timeout:
        return tr("timeout");
    case BusTransaction::Outcome::Damaged:
        return tr("bad checksum");
    case BusTransaction::Outcome::Superseded:
        return tr("superseded");
    case BusTransaction::Outcome::NotSent:
        return tr("not sent");
    case BusTransaction::Outcome::PortLost:
        return tr("port lost");
    }
    return {};
}

double TransactionText::roundTripMs(const BusTransaction &transaction)
{
    if (transaction.sentAtNs == 0 || transaction.endedAtNs == 0)
        return 0;
    return double(transaction.endedAtNs - transaction.sentAtNs) / 1e6;
}

QString TransactionText::hex(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes.toHex(' ').toUpper());
}

QString TransactionText::header()
{
    return tr(
        "time (ms)\tinstruction\tid\taddress\tlength\toutcome\tround trip (ms)\trequest\treply");
}

QString TransactionText::line(const TransactionRecord &record)
{
    const BusTransaction &t = record.transaction;
    return QStringList{QString::number(double(record.timeUs) / 1000.0, 'f', 1),
                       instruction(t.instruction),
                       QString::number(t.id),
                       QString::number(t.address),
                       QString::number(t.length),
                       outcome(t),
                       QString::number(roundTripMs(t), 'f', 2),
                       hex(t.request),
                       hex(t.reply)}
        .join(QLatin1Char('\t'));
}
