#pragma once

#include "monitor/transactionrecord.h"

#include <vector>

// The most recent transactions, oldest first; once full, each new one replaces the oldest.
// Every slot is allocated up front with room for a table poll's bytes, so memory stays
// flat from the first transaction on, however long the link runs.
class TransactionRing
{
public:
    explicit TransactionRing(int capacity);

    void append(const TransactionRecord &record);
    void clear();

    int size() const { return count; }
    int capacity() const { return limit; }
    // Appended since the last clear, including those already replaced.
    qint64 appended() const { return total; }
    // 0 is the oldest kept.
    TransactionRecord at(int index) const;

private:
    // Request and reply of the largest table poll with room to spare; longer packets
    // (rare bulk writes) keep their bytes on the heap.
    static constexpr int inlineBytes = 160;

    struct Slot
    {
        qint64 timeUs = 0;
        bool routinePoll = false;
        BusTransaction fields;
        int requestSize = 0;
        int replySize = 0;
        QByteArray overflow;
        char bytes[inlineBytes] = {};
    };

    int limit;
    std::vector<Slot> entries;
    int oldest = 0;
    int count = 0;
    qint64 total = 0;
};
