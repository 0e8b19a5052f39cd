#include "plot/axisrangedialog.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QVBoxLayout>

namespace {
constexpr double valueLimit = 1e9;
}

AxisRangeDialog::AxisRangeDialog(QWidget *parent)
    : QDialog(parent)
{
    setWindowTitle(tr("Y axes"));
    auto *layout = new QVBoxLayout(this);
    leftAxis = addAxis(tr("Left axis"));
    rightAxis = addAxis(tr("Right axis"));
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, SIGNAL(accepted()), this, SLOT(accept()));
    connect(buttons, SIGNAL(rejected()), this, SLOT(reject()));
    layout->addWidget(buttons);
}

AxisRangeDialog::AxisControls AxisRangeDialog::addAxis(const QString &title)
{
    auto *group = new QGroupBox(title);
    auto *form = new QFormLayout(group);
    AxisControls controls{new QCheckBox(tr("Autoscale")), new QDoubleSpinBox, new QDoubleSpinBox};
    for (QDoubleSpinBox *box : {controls.minimum, controls.maximum}) {
        box->setRange(-valueLimit, valueLimit);
        box->setDecimals(3);
    }
    form->addRow(controls.autoscale);
    form->addRow(tr("Minimum"), controls.minimum);
    form->addRow(tr("Maximum"), controls.maximum);
    // A fixed range is only edited when autoscale is off.
    for (QDoubleSpinBox *box : {controls.minimum, controls.maximum})
        connect(controls.autoscale, SIGNAL(toggled(bool)), box, SLOT(setDisabled(bool)));
    static_cast<QVBoxLayout *>(layout())->addWidget(group);
    return controls;
}

void AxisRangeDialog::setRanges(const Range &left, const Range &right)
{
    showRange(leftAxis, left);
    showRange(rightAxis, right);
}

AxisRangeDialog::Range AxisRangeDialog::left() const
{
    return readRange(leftAxis);
}

AxisRangeDialog::Range AxisRangeDialog::right() const
{
    return readRange(rightAxis);
}

void AxisRangeDialog::showRange(const AxisControls &controls, const Range &range)
{
    controls.autoscale->setChecked(range.autoscale);
    controls.minimum->setValue(range.minimum);
    controls.maximum->setValue(range.maximum);
    controls.minimum->setDisabled(range.autoscale);
    controls.maximum->setDisabled(range.autoscale);
}

AxisRangeDialog::Range AxisRangeDialog::readRange(const AxisControls &controls)
{
    Range range{controls.autoscale->isChecked(), controls.minimum->value(),
                controls.maximum->value()};
    if (range.maximum <= range.minimum)
        range.maximum = range.minimum + 1.0;
    return range;
}
