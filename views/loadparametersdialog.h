#pragma once

#include "params/parameterdiff.h"

#include <QDialog>
#include <QString>
#include <vector>

class QPushButton;
class TelemetryDecoder;

namespace Ui {
class LoadParametersDialog;
}

// Shows the registers in which a parameter file differs from the servo, in display
// units, and lets the user tick the ones to write.
class LoadParametersDialog : public QDialog
{
    Q_OBJECT

public:
    LoadParametersDialog(const QString &fileSummary,
                         const std::vector<ParameterDifference> &differences,
                         const TelemetryDecoder &decoder, bool motorOn, QWidget *parent = nullptr);
    ~LoadParametersDialog() override;

    std::vector<ParameterDifference> tickedDifferences() const;
    bool switchMotorOff() const;

private slots:
    void on_differencesTableWidget_itemChanged();
    void on_switchMotorOffCheckBox_toggled();

private:
    void fillTable(const TelemetryDecoder &decoder);
    void updateWriteButton();

    Ui::LoadParametersDialog *ui;
    std::vector<ParameterDifference> differences;
    bool motorOn;
    QPushButton *writeButton;
};
