#pragma once

#include <qwt_plot_picker.h>

#include <functional>

// Follows the mouse over the plot with a vertical line and a readout of every channel
// at the time under it.
class PlotCursor : public QwtPlotPicker
{
public:
    PlotCursor(QWidget *canvas, std::function<QString(double t)> readout);

protected:
    QwtText trackerTextF(const QPointF &position) const override;

private:
    std::function<QString(double t)> readout;
};
