#include "plot/samplecurve.h"

#include <cmath>

SampleCurve::SampleCurve(const QString &title)
    : QwtPlotCurve(title)
{
    setPaintAttribute(QwtPlotCurve::ClipPolygons, true);
    setPaintAttribute(QwtPlotCurve::FilterPoints, true);
    setItemAttribute(QwtPlotItem::Legend, true);
    // The legend shows the line itself, so a dashed target stands apart from its actual.
    setLegendAttribute(QwtPlotCurve::LegendShowLine, true);
}

void SampleCurve::drawSeries(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
                             const QRectF &canvasRect, int from, int to) const
{
    if (to < 0)
        to = int(dataSize()) - 1;
    int start = from;
    for (int row = from; row <= to + 1; ++row) {
        if (row <= to && !std::isnan(sample(size_t(row)).y()))
            continue;
        if (row > start)
            QwtPlotCurve::drawSeries(painter, xMap, yMap, canvasRect, start, row - 1);
        start = row + 1;
    }
}
