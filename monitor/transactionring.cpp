#include "monitor/transactionring.h"

#include <utility>

TransactionRing::TransactionRing(int capacity)
    : limit(capacity > 0 ? capacity : 1)
{}

void TransactionRing::append(TransactionRecord record)
{
    ++total;
    // Grows up to the cap; after that every slot is reused.
    if (count < limit) {
        records.push_back(std::move(record));
        ++count;
        return;
    }
    records[size_t(oldest)] = std::move(record);
    oldest = (oldest + 1) % limit;
}

void TransactionRing::clear()
{
    records.clear();
    oldest = 0;
    count = 0;
    total = 0;
}

const TransactionRecord &TransactionRing::at(int index) const
{
    return records[size_t((oldest + index) % limit)];
}
