#pragma once

#include <QDialog>

class QCheckBox;
class QDoubleSpinBox;

// Autoscale or a fixed range for each of the plot's two y axes.
class AxisRangeDialog : public QDialog
{
    Q_OBJECT

public:
    struct Range
    {
        bool autoscale = true;
        double minimum = 0.0;
        double maximum = 1.0;
    };

    explicit AxisRangeDialog(QWidget *parent = nullptr);

    void setRanges(const Range &left, const Range &right);
    Range left() const;
    Range right() const;

private:
    struct AxisControls
    {
        QCheckBox *autoscale;
        QDoubleSpinBox *minimum;
        QDoubleSpinBox *maximum;
    };

    AxisControls addAxis(const QString &title);
    static void showRange(const AxisControls &controls, const Range &range);
    static Range readRange(const AxisControls &controls);

    AxisControls leftAxis;
    AxisControls rightAxis;
};
