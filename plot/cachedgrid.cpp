#include "plot/cachedgrid.h"

#include <qwt_plot.h>
#include <qwt_scale_map.h>

#include <QPaintDevice>
#include <QPainter>

void CachedGrid::draw(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
                      const QRectF &canvasRect) const
{
    // Only the canvas on screen and grabs of it; exports draw lines, which an SVG keeps.
    const int device = painter->device()->devType();
    if (!plot() || (device != QInternal::Widget && device != QInternal::Pixmap)) {
        QwtPlotGrid::draw(painter, xMap, yMap, canvasRect);
        return;
    }
    const double ratio = painter->device()->devicePixelRatioF();
    QVector<double> key{canvasRect.x(),
                        canvasRect.y(),
                        canvasRect.width(),
                        canvasRect.height(),
                        xMap.s1(),
                        xMap.s2(),
                        yMap.s1(),
                        yMap.s2(),
                        ratio,
                        double(plot()->canvasBackground().color().rgba())};
    key += xScaleDiv().ticks(QwtScaleDiv::MajorTick).toVector();
    key += yScaleDiv().ticks(QwtScaleDiv::MajorTick).toVector();
    if (key != pictureKey) {
        picture = QPixmap((canvasRect.size() * ratio).toSize());
        picture.setDevicePixelRatio(ratio);
        // An opaque background makes the copy a plain one, with no blending.
        picture.fill(plot()->canvasBackground().color());
        QPainter gridPainter(&picture);
        gridPainter.translate(-canvasRect.topLeft());
        QwtPlotGrid::draw(&gridPainter, xMap, yMap, canvasRect);
        pictureKey = key;
    }
    painter->drawPixmap(canvasRect.topLeft(), picture);
}
