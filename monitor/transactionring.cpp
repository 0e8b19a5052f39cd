#include "monitor/transactionring.h"

#include <cstring>

TransactionRing::TransactionRing(int capacity)
    : limit(capacity > 0 ? capacity : 1)
    , entries(size_t(limit))
{}

void TransactionRing::append(const TransactionRecord &record)
{
    ++total;
    Slot &slot = entries[size_t((oldest + count) % limit)];
    if (count < limit)
        ++count;
    else
        oldest = (oldest + 1) % limit;

    const BusTransaction &transaction = record.transaction;
    slot.timeUs = record.timeUs;
    slot.routinePoll = record.routinePoll;
    // Only the fixed fields: the slot's own buffer holds the bytes.
    slot.fields = BusTransaction();
    slot.fields.instruction = transaction.instruction;
    slot.fields.id = transaction.id;
    slot.fields.address = transaction.address;
    slot.fields.length = transaction.length;
    slot.fields.outcome = transaction.outcome;
    slot.fields.error = transaction.error;
    slot.fields.handedOver = transaction.handedOver;
    slot.fields.sentAtNs = transaction.sentAtNs;
    slot.fields.endedAtNs = transaction.endedAtNs;
    slot.fields.discardedBytes = transaction.discardedBytes;
    slot.requestSize = transaction.request.size();
    slot.replySize = transaction.reply.size();
    if (slot.requestSize + slot.replySize <= inlineBytes) {
        slot.overflow.clear();
        std::memcpy(slot.bytes, transaction.request.constData(), size_t(slot.requestSize));
        std::memcpy(slot.bytes + slot.requestSize, transaction.reply.constData(),
                    size_t(slot.replySize));
    } else {
        slot.overflow = transaction.request + transaction.reply;
    }
}

void TransactionRing::clear()
{
    oldest = 0;
    count = 0;
    total = 0;
}

TransactionRecord TransactionRing::at(int index) const
{
    const Slot &slot = entries[size_t((oldest + index) % limit)];
    const char *bytes = slot.overflow.isNull() ? slot.bytes : slot.overflow.constData();
    TransactionRecord record;
    record.timeUs = slot.timeUs;
    record.routinePoll = slot.routinePoll;
    record.transaction = slot.fields;
    record.transaction.request = QByteArray(bytes, slot.requestSize);
    record.transaction.reply = QByteArray(bytes + slot.requestSize, slot.replySize);
    return record;
}
