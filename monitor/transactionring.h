#pragma once

#include "monitor/transactionrecord.h"

#include <vector>

// The most recent transactions, oldest first; once full, each new one replaces the oldest,
// so memory stays flat however long the link runs.
class TransactionRing
{
public:
    explicit TransactionRing(int capacity);

    void append(TransactionRecord record);
    void clear();

    int size() const { return count; }
    int capacity() const { return limit; }
    // Appended since the last clear, including those already replaced.
    qint64 appended() const { return total; }
    // 0 is the oldest kept.
    const TransactionRecord &at(int index) const;

private:
    int limit;
    std::vector<TransactionRecord> records;
    int oldest = 0;
    int count = 0;
    qint64 total = 0;
};
