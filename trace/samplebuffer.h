#pragma once

#include <QtGlobal>
#include <deque>
#include <functional>
#include <vector>

// The recent history of a few channels, one row per reply: what the plot draws. Keeps
// only the time window, stops taking rows while paused or frozen, and breaks the line
// where replies stopped coming (a row of NaN). Rows are kept raw and in the user's
// units, so a change of units converts the history instead of losing it.
class SampleBuffer
{
public:
    static constexpr int maxChannels = 8;
    static constexpr qint64 defaultWindowUs = 10'000'000;
    static constexpr qint64 minWindowUs = 1'000'000;
    static constexpr qint64 maxWindowUs = 600'000'000;

    explicit SampleBuffer(int channelCount = 0);

    using Conversion = std::function<double(double raw)>;

    // Both empty the buffer. Channels start without a conversion (shown raw).
    void setChannelCount(int count);
    void clear();
    int channelCount() const { return int(values.size()); }
    // Converts the channel's rows anew; none shows them raw.
    void setConversion(int channel, Conversion toDisplay);

    // Bounded to 1 s .. 10 min; a shorter window drops the rows that fall out of it.
    void setWindow(qint64 windowUs);
    qint64 window() const { return windowUs; }

    // Paused rows are dropped; the first row after a resume starts a new line.
    void setPaused(bool paused);
    bool isPaused() const { return paused; }
    // After a disconnect: keeps what it has and takes nothing until cleared.
    void freeze();
    bool isFrozen() const { return frozen; }

    // raw holds channelCount() values. Returns whether the row was taken.
    bool append(qint64 timeUs, const double *raw);

    int size() const { return int(times.size()); }
    // Seconds since the link came up.
    double time(int row) const { return times[size_t(row)]; }
    // In the user's units.
    double value(int channel, int row) const { return values[size_t(channel)][size_t(row)]; }
    double rawValue(int channel, int row) const { return raws[size_t(channel)][size_t(row)]; }
    // The value that stood at time t: the last row at or before t (NaN in a gap or
    // before the first row).
    double valueAt(int channel, double t) const;
    // Whether anything changed since the last call; the plot redraws only then.
    bool takeChanged();

private:
    void appendRow(double t, const double *raw);
    void trim();
    double display(size_t channel, double raw) const;

    std::deque<double> times;
    std::vector<std::deque<double>> raws;
    std::vector<std::deque<double>> values;
    std::vector<Conversion> conversions;
    qint64 windowUs = defaultWindowUs;
    qint64 lastTimeUs = -1;
    // Running estimate of the reply interval; a pause several times longer is a gap.
    double typicalIntervalUs = 0.0;
    bool paused = false;
    bool frozen = false;
    bool breakNext = false;
    bool changed = false;
};
