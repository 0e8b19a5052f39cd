#include "plot/sampleseries.h"

#include "trace/samplebuffer.h"

#include <algorithm>
#include <cmath>

SampleSeries::SampleSeries(const SampleBuffer &buffer, int channel, const double &timeOrigin)
    : buffer(buffer)
    , channel(channel)
    , timeOrigin(timeOrigin)
{}

size_t SampleSeries::size() const
{
    return size_t(buffer.size());
}

QPointF SampleSeries::sample(size_t i) const
{
    return {buffer.time(int(i)) - timeOrigin, buffer.value(channel, int(i))};
}

QRectF SampleSeries::boundingRect() const
{
    const int rows = buffer.size();
    if (rows == 0)
        return {1.0, 1.0, -2.0, -2.0};
    double low = INFINITY;
    double high = -INFINITY;
    for (int row = 0; row < rows; ++row) {
        const double y = buffer.value(channel, row);
        if (std::isfinite(y)) {
            low = std::min(low, y);
            high = std::max(high, y);
        }
    }
    const double left = buffer.time(0) - timeOrigin;
    const double right = buffer.time(rows - 1) - timeOrigin;
    if (low > high)
        return {left, 0.0, right - left, 0.0};
    // A constant value gets room around it, so its axis still has a scale.
    if (high == low) {
        const double margin = std::max(0.5, std::abs(low) * 0.05);
        low -= margin;
        high += margin;
    }
    return {left, low, right - left, high - low};
}
