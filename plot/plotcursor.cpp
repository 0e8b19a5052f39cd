#include "plot/plotcursor.h"

#include <qwt_picker_machine.h>
#include <qwt_plot.h>

#include <QColor>
#include <utility>

PlotCursor::PlotCursor(QWidget *canvas, std::function<QString(double t)> readout)
    : QwtPlotPicker(QwtPlot::xBottom, QwtPlot::yLeft, QwtPicker::VLineRubberBand,
                    QwtPicker::AlwaysOn, canvas)
    , readout(std::move(readout))
{
    setStateMachine(new QwtPickerTrackerMachine);
    setRubberBandPen(QColor(Qt::darkGray));
}

QwtText PlotCursor::trackerTextF(const QPointF &position) const
{
    QwtText text(readout(position.x()), QwtText::RichText);
    text.setRenderFlags(Qt::AlignLeft | Qt::AlignTop);
    QColor background(Qt::white);
    background.setAlpha(220);
    text.setBackgroundBrush(background);
    return text;
}
