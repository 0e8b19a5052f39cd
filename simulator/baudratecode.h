#pragma once

// The servo's baud-rate register holds a code; its rate is 2,000,000 / (code + 1) bps.
class BaudRateCode
{
public:
    static bool isValid(int code);
    static int rate(int code);
    // The valid code whose rate is nearest to `baudRate`.
    static int nearest(int baudRate);
    // Whether a host at `hostBaudRate` can talk to a servo at `code`: within 3 %.
    static bool matches(int code, int hostBaudRate);
};
