#pragma once

#include <qwt_series_data.h>

class SampleBuffer;

// One channel of a SampleBuffer as the points of a curve, in the user's current units,
// with time counted from an origin the plot moves (the latest reply).
class SampleSeries : public QwtSeriesData<QPointF>
{
public:
    SampleSeries(const SampleBuffer &buffer, int channel, const double &timeOrigin);

    size_t size() const override;
    QPointF sample(size_t i) const override;
    // Over the finite values only; a gap's NaN would spoil autoscaling.
    QRectF boundingRect() const override;

private:
    const SampleBuffer &buffer;
    int channel;
    const double &timeOrigin;
};
