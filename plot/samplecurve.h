#pragma once

#include <qwt_plot_curve.h>

// A curve that stops at a row without a value and starts again after it, so a time
// without replies shows as a gap, not as a line across it.
class SampleCurve : public QwtPlotCurve
{
public:
    explicit SampleCurve(const QString &title);

    void drawSeries(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
                    const QRectF &canvasRect, int from, int to) const override;
};
