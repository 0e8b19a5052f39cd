#include "simulator/baudratecode.h"

#include <QtGlobal>
#include <algorithm>
#include <cstdlib>
#include <iterator>

namespace {

const int validCodes[] = {207, 103, 51, 34, 16, 9, 7, 4, 3, 1, 0};

} // namespace

bool BaudRateCode::isValid(int code)
{
    return std::find(std::begin(validCodes), std::end(validCodes), code) != std::end(validCodes);
}

int BaudRateCode::rate(int code)
{
    return 2000000 / (code + 1);
}

int BaudRateCode::nearest(int baudRate)
{
    int best = validCodes[0];
    for (int code : validCodes) {
        if (std::abs(rate(code) - baudRate) < std::abs(rate(best) - baudRate))
            best = code;
    }
    return best;
}

bool BaudRateCode::matches(int code, int hostBaudRate)
{
    const qint64 servoRate = rate(code);
    return std::abs(hostBaudRate - servoRate) * 100 <= servoRate * 3;
}
