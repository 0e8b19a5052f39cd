#include "monitor/transactiontablemodel.h"

#include "monitor/linkmonitor.h"
#include "monitor/transactiontext.h"

#include <QBrush>
#include <QColor>
#include <algorithm>

TransactionTableModel::TransactionTableModel(const LinkMonitor *monitor, QObject *parent)
    : QAbstractTableModel(parent)
    , monitor(monitor)
{
    connect(monitor, SIGNAL(started()), this, SLOT(reload()));
}

int TransactionTableModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : shown;
}

int TransactionTableModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

std::optional<TransactionRecord> TransactionTableModel::record(int row) const
{
    const TransactionRing &ring = monitor->ring();
    const qint64 ringFirst = ring.appended() - ring.size();
    const qint64 index = firstShown + row - ringFirst;
    if (row < 0 || row >= shown || index < 0 || index >= ring.size())
        return std::nullopt;
    return ring.at(int(index));
}

QVariant TransactionTableModel::data(const QModelIndex &index, int role) const
{
    const std::optional<TransactionRecord> entry = record(index.row());
    if (!entry)
        return {};
    const BusTransaction &t = entry->transaction;
    if (role == RoutineRole)
        return entry->routinePoll ? QStringLiteral("routine") : QString();
    if (role == BytesRole)
        return tr("Request: %1\nReply: %2")
            .arg(TransactionText::hex(t.request),
                 t.reply.isEmpty() ? tr("none") : TransactionText::hex(t.reply));
    if (role == Qt::ToolTipRole)
        return data(index, BytesRole);
    const bool failed = t.outcome != BusTransaction::Outcome::Reply || (t.error & 0x7F) != 0;
    if (role == Qt::ForegroundRole)
        return failed && t.outcome != BusTransaction::Outcome::Superseded
                   ? QVariant(QBrush(QColor(0xC6, 0x28, 0x28)))
                   : QVariant();
    if (role == Qt::TextAlignmentRole)
        return index.column() == Outcome || index.column() == Instruction
                   ? QVariant(Qt::AlignLeft | Qt::AlignVCenter)
                   : QVariant(Qt::AlignRight | Qt::AlignVCenter);
    if (role != Qt::DisplayRole)
        return {};
    switch (index.column()) {
    case Time:
        return QString::number(double(entry->timeUs) / 1000.0, 'f', 1);
    case Instruction:
        return TransactionText::instruction(t.instruction);
    case Id:
        return t.id;
    case Address:
        return t.address;
    case Length:
        return t.length;
    case Outcome:
        return TransactionText::outcome(t);
    case RoundTrip: {
        const double ms = TransactionText::roundTripMs(t);
        return ms > 0 ? QString::number(ms, 'f', 2) : QString();
    }
    default:
        return {};
    }
}

QVariant TransactionTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QAbstractTableModel::headerData(section, orientation, role);
    static const char *const titles[] = {
        QT_TR_NOOP("Time (ms)"),       QT_TR_NOOP("Instruction"), QT_TR_NOOP("Id"),
        QT_TR_NOOP("Address"),         QT_TR_NOOP("Length"),      QT_TR_NOOP("Outcome"),
        QT_TR_NOOP("Round trip (ms)"),
    };
    return section >= 0 && section < ColumnCount ? tr(titles[section]) : QVariant();
}

void TransactionTableModel::refresh()
{
    const TransactionRing &ring = monitor->ring();
    const qint64 ringFirst = ring.appended() - ring.size();
    const qint64 ringEnd = ring.appended();
    if (ringEnd < firstShown + shown || (shown > 0 && ringFirst >= firstShown + shown)) {
        // Everything shown has gone (or the ring started over): start over too.
        reload();
        return;
    }
    if (shown == 0)
        firstShown = ringFirst;
    const int gone = int(std::max<qint64>(0, ringFirst - firstShown));
    if (gone > 0) {
        beginRemoveRows(QModelIndex(), 0, gone - 1);
        firstShown += gone;
        shown -= gone;
        endRemoveRows();
    }
    const int added = int(ringEnd - (firstShown + shown));
    if (added > 0) {
        beginInsertRows(QModelIndex(), shown, shown + added - 1);
        shown += added;
        endInsertRows();
    }
}

void TransactionTableModel::reload()
{
    const TransactionRing &ring = monitor->ring();
    beginResetModel();
    firstShown = ring.appended() - ring.size();
    shown = ring.size();
    endResetModel();
}
