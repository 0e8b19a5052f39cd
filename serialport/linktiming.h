#pragma once

// How long a transaction may take on the wire before its reply counts as lost.
class LinkTiming
{
public:
    // Largest return delay a servo can be configured to (254 x 2 us).
    static constexpr int ReturnDelayUs = 508;

    // 10 bits a byte (start, 8 data, stop) each way, the servo's return delay and the
    // adapter's margin.
    static constexpr int transactionTimeoutUs(int requestBytes, int replyBytes, int baudRate,
                                              int adapterMarginUs)
    {
        const long long wireUs =
            baudRate > 0 ? (requestBytes + replyBytes) * 10LL * 1000000LL / baudRate : 0;
        return int(wireUs) + ReturnDelayUs + adapterMarginUs;
    }
};
