#pragma once

#include "transactionobserver.h"

// One transaction as the log keeps it: when it ended, counted from Connect.
struct TransactionRecord
{
    qint64 timeUs = 0;
    // The read of the whole table that every poll sends; the log can hide these.
    bool routinePoll = false;
    BusTransaction transaction;
};
