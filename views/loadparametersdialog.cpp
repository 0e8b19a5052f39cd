#include "views/loadparametersdialog.h"
#include "ui_loadparametersdialog.h"

#include "telemetry/registercatalogue.h"
#include "telemetry/telemetrydecoder.h"

#include <QHeaderView>
#include <QPushButton>

LoadParametersDialog::LoadParametersDialog(const QString &fileSummary,
                                           const std::vector<ParameterDifference> &differences,
                                           const TelemetryDecoder &decoder, bool motorOn,
                                           QWidget *parent)
    : QDialog(parent)
    , ui(new Ui::LoadParametersDialog)
    , differences(differences)
    , motorOn(motorOn)
{
    ui->setupUi(this);
    writeButton =
        ui->buttonBox->addButton(tr("Write ticked registers"), QDialogButtonBox::AcceptRole);
    writeButton->setObjectName(QStringLiteral("writeButton"));
    connect(ui->buttonBox, SIGNAL(accepted()), this, SLOT(accept()));
    connect(ui->buttonBox, SIGNAL(rejected()), this, SLOT(reject()));
    ui->fileLabel->setText(fileSummary);
    fillTable(decoder);
    updateWriteButton();
}

LoadParametersDialog::~LoadParametersDialog()
{
    delete ui;
}

std::vector<ParameterDifference> LoadParametersDialog::tickedDifferences() const
{
    std::vector<ParameterDifference> ticked;
    for (int row = 0; row < ui->differencesTableWidget->rowCount(); ++row) {
        if (ui->differencesTableWidget->item(row, 0)->checkState() == Qt::Checked)
            ticked.push_back(differences[size_t(row)]);
    }
    return ticked;
}

bool LoadParametersDialog::switchMotorOff() const
{
    return ui->switchMotorOffCheckBox->isChecked();
}

void LoadParametersDialog::on_differencesTableWidget_itemChanged()
{
    updateWriteButton();
}

void LoadParametersDialog::on_switchMotorOffCheckBox_toggled()
{
    updateWriteButton();
}

void LoadParametersDialog::fillTable(const TelemetryDecoder &decoder)
{
    QTableWidget *table = ui->differencesTableWidget;
    const QSignalBlocker quiet(table);
    table->setRowCount(int(differences.size()));
    for (int row = 0; row < table->rowCount(); ++row) {
        const ParameterDifference &difference = differences[size_t(row)];
        const CatalogueEntry &entry = *difference.entry;
        auto *name = new QTableWidgetItem(entry.span.description);
        name->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable);
        name->setCheckState(ParameterDiff::startsTicked(entry) ? Qt::Checked : Qt::Unchecked);
        table->setItem(row, 0, name);
        const QString servo =
            difference.servoRaw
                ? decoder.displayText(decoder.decodeRaw(entry, *difference.servoRaw), entry)
                : tr("not read");
        table->setItem(row, 1, new QTableWidgetItem(servo));
        table->setItem(row, 2,
                       new QTableWidgetItem(decoder.displayText(
                           decoder.decodeRaw(entry, difference.wantedRaw), entry)));
        for (int column = 1; column < 3; ++column)
            table->item(row, column)->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    }
    table->resizeColumnsToContents();
    // No cell is current: a focus frame on the first row would read as an edit in progress.
    table->setCurrentIndex(QModelIndex());
}

void LoadParametersDialog::updateWriteButton()
{
    bool anyTicked = false;
    bool nonVolatileTicked = false;
    for (const ParameterDifference &difference : tickedDifferences()) {
        anyTicked = true;
        nonVolatileTicked = nonVolatileTicked || difference.entry->span.nonVolatile;
    }
    const bool motorInTheWay = motorOn && nonVolatileTicked;
    ui->motorLabel->setVisible(motorInTheWay);
    ui->switchMotorOffCheckBox->setVisible(motorInTheWay);
    writeButton->setEnabled(anyTicked && (!motorInTheWay || switchMotorOff()));
}
