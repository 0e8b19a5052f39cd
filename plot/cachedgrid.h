#pragma once

#include <qwt_plot_grid.h>

#include <QPixmap>
#include <QVector>

// The canvas background with its grid, drawn once into a picture and copied in each frame
// while the size and the scales stay: the time axis never moves, so only a y axis that
// autoscales to a new range draws it anew. Exports get the grid drawn as lines.
class CachedGrid : public QwtPlotGrid
{
public:
    void draw(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
              const QRectF &canvasRect) const override;

private:
    mutable QPixmap picture;
    mutable QVector<double> pictureKey;
};
