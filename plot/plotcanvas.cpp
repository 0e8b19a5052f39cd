#include "plot/plotcanvas.h"

#include <QElapsedTimer>

PlotCanvas::PlotCanvas(std::function<void(qint64 paintUs)> painted)
    : painted(std::move(painted))
{
    setPaintAttribute(QwtPlotCanvas::ImmediatePaint, false);
    // Every frame scrolls the whole canvas, so a backing store would only add a copy.
    setPaintAttribute(QwtPlotCanvas::BackingStore, false);
    setPaintAttribute(QwtPlotCanvas::HackStyledBackground, false);
    setFrameStyle(QFrame::NoFrame);
}

void PlotCanvas::paintEvent(QPaintEvent *event)
{
    QElapsedTimer clock;
    clock.start();
    QwtPlotCanvas::paintEvent(event);
    painted(clock.nsecsElapsed() / 1000);
}
