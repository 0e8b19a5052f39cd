#include "trace/samplebuffer.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace {
constexpr double noValue = std::numeric_limits<double>::quiet_NaN();
// A reply this many typical intervals late, and later than the jitter of a busy machine,
// means one or more never came.
constexpr double gapFactor = 3.0;
constexpr double jitterUs = 50'000.0;
// Weight of the newest interval in the running estimate.
constexpr double intervalWeight = 1.0 / 8.0;
} // namespace

SampleBuffer::SampleBuffer(int channelCount)
{
    setChannelCount(channelCount);
}

void SampleBuffer::setChannelCount(int count)
{
    const size_t channels = size_t(std::clamp(count, 0, maxChannels));
    raws.assign(channels, {});
    values.assign(channels, {});
    conversions.assign(channels, {});
    clear();
}

void SampleBuffer::clear()
{
    times.clear();
    for (auto &channel : raws)
        channel.clear();
    for (auto &channel : values)
        channel.clear();
    lastTimeUs = -1;
    typicalIntervalUs = 0.0;
    frozen = false;
    breakNext = false;
    changed = true;
}

void SampleBuffer::setConversion(int channel, Conversion toDisplay)
{
    const size_t index = size_t(channel);
    conversions[index] = std::move(toDisplay);
    for (size_t row = 0; row < times.size(); ++row)
        values[index][row] = display(index, raws[index][row]);
    changed = true;
}

double SampleBuffer::display(size_t channel, double raw) const
{
    return conversions[channel] && !std::isnan(raw) ? conversions[channel](raw) : raw;
}

void SampleBuffer::setWindow(qint64 window)
{
    windowUs = std::clamp(window, minWindowUs, maxWindowUs);
    trim();
    changed = true;
}

void SampleBuffer::setPaused(bool pause)
{
    if (paused && !pause)
        breakNext = true;
    paused = pause;
}

void SampleBuffer::freeze()
{
    frozen = true;
    breakNext = true;
}

bool SampleBuffer::append(qint64 timeUs, const double *raw)
{
    if (paused || frozen || timeUs <= lastTimeUs)
        return false;
    if (lastTimeUs >= 0) {
        const double interval = double(timeUs - lastTimeUs);
        const bool late = typicalIntervalUs > 0.0 && interval > gapFactor * typicalIntervalUs &&
                          interval > typicalIntervalUs + jitterUs;
        if (breakNext || late) {
            // The line stops where the next reply was due.
            const double dueUs =
                double(lastTimeUs) +
                (typicalIntervalUs > 0.0 ? std::min(interval, typicalIntervalUs) : interval / 2.0);
            std::vector<double> gap(values.size(), noValue);
            appendRow(dueUs / 1e6, gap.data());
        } else {
            typicalIntervalUs =
                typicalIntervalUs > 0.0
                    ? typicalIntervalUs + intervalWeight * (interval - typicalIntervalUs)
                    : interval;
        }
    }
    breakNext = false;
    lastTimeUs = timeUs;
    appendRow(double(timeUs) / 1e6, raw);
    trim();
    return true;
}

void SampleBuffer::appendRow(double t, const double *raw)
{
    times.push_back(t);
    for (size_t channel = 0; channel < values.size(); ++channel) {
        raws[channel].push_back(raw[channel]);
        values[channel].push_back(display(channel, raw[channel]));
    }
    changed = true;
}

// Keeps one row older than the window, so the line enters at the left edge.
void SampleBuffer::trim()
{
    if (times.empty())
        return;
    const double start = times.back() - double(windowUs) / 1e6;
    size_t drop = 0;
    while (drop + 1 < times.size() && times[drop + 1] <= start)
        ++drop;
    if (drop == 0)
        return;
    times.erase(times.begin(), times.begin() + long(drop));
    for (auto &channel : raws)
        channel.erase(channel.begin(), channel.begin() + long(drop));
    for (auto &channel : values)
        channel.erase(channel.begin(), channel.begin() + long(drop));
    changed = true;
}

double SampleBuffer::valueAt(int channel, double t) const
{
    const auto after = std::upper_bound(times.begin(), times.end(), t);
    if (after == times.begin())
        return noValue;
    return values[size_t(channel)][size_t(after - times.begin() - 1)];
}

bool SampleBuffer::takeChanged()
{
    return std::exchange(changed, false);
}
