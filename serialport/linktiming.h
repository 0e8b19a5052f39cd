#pragma once

// How long a transaction may take on the wire, and how long the line must be quiet
// before the next request goes out.
class LinkTiming
{
public:
    // Largest return delay a servo can be configured to (254 x 2 us).
    static constexpr int ReturnDelayUs = 508;
    // Quiet after a clean reply: a repeated reply or an echo starts within a byte or two.
    static constexpr int SettleBytes = 4;

    // 10 bits a byte (start, 8 data, stop).
    static constexpr int wireUs(int bytes, int baudRate)
    {
        return baudRate > 0 ? int(bytes * 10LL * 1000000LL / baudRate) : 0;
    }

    // Both ways on the wire, the servo's return delay and the adapter's margin.
    static constexpr int transactionTimeoutUs(int requestBytes, int replyBytes, int baudRate,
                                              int adapterMarginUs)
    {
        return wireUs(requestBytes + replyBytes, baudRate) + ReturnDelayUs + adapterMarginUs;
    }

    // After an accepted reply: a few byte times, plus what the adapter holds back.
    static constexpr int settleGuardUs(int baudRate, int adapterLatencyUs)
    {
        return wireUs(SettleBytes, baudRate) + adapterLatencyUs;
    }

    // After a timeout or stray bytes: long enough for a late or repeated reply of
    // `replyBytes` to have ended, however late the adapter hands it on.
    static constexpr int recoveryGuardUs(int replyBytes, int baudRate, int adapterMarginUs)
    {
        return wireUs(replyBytes, baudRate) + ReturnDelayUs + adapterMarginUs;
    }
};
