#pragma once

#include <qwt_plot_canvas.h>

#include <functional>

// The plot's canvas, painted with the rest of the window rather than at once, so a frame
// never forces the window's other pending repaints through. It tells how long each of its
// own paints took, so a frame's cost is measured where it is spent.
class PlotCanvas : public QwtPlotCanvas
{
public:
    explicit PlotCanvas(std::function<void(qint64 paintUs)> painted);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    std::function<void(qint64 paintUs)> painted;
};
