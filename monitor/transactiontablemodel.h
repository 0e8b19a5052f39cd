#pragma once

#include "monitor/transactionrecord.h"

#include <QAbstractTableModel>
#include <optional>

class LinkMonitor;

// The monitor's ring as table rows, newest last. It follows the ring only when told to
// (refresh()), so a log nobody looks at costs nothing and one on screen is redrawn at a
// human pace rather than per reply.
class TransactionTableModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { Time, Instruction, Id, Address, Length, Outcome, RoundTrip, ColumnCount };
    // "routine" for a whole-table poll, empty otherwise: a filter on it hides the polls.
    static constexpr int RoutineRole = Qt::UserRole;
    // The request and reply bytes in hex.
    static constexpr int BytesRole = Qt::UserRole + 1;

    explicit TransactionTableModel(const LinkMonitor *monitor, QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

    // Empty when the row's record has already left the ring.
    std::optional<TransactionRecord> record(int row) const;

public slots:
    // Drops the rows that left the ring and appends the new ones.
    void refresh();
    // The ring was cleared (a new connection).
    void reload();

private:
    const LinkMonitor *monitor;
    // Rows stand for the ring's appended records firstShown .. firstShown + shown - 1.
    qint64 firstShown = 0;
    int shown = 0;
};
