#include "app/mainwindow.h"
#include "ui_mainwindow.h"

#include "link/serialhelper.h"
#include "search/searchdialog.h"
#include "settings/settings.h"
#include "settings/settingsdialog.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QScreen>
#include <QSpinBox>

namespace {
const QString geometryKey = QStringLiteral("geometry");
const QString windowStateKey = QStringLiteral("windowState");
const QString pollingIntervalKey = QStringLiteral("pollingInterval");
const QString servoIdKey = QStringLiteral("servoId");
} // namespace

MainWindow::MainWindow(QWidget *parent)
    : QMainWindow(parent)
    , ui(new Ui::MainWindow)
    , settings(std::make_shared<Settings>(QStringLiteral("main window settings")))
    , settingsDialog(std::make_shared<SettingsDialog>())
    , searchDialog(std::make_shared<SearchDialog>())
    , serialHelper(std::make_shared<SerialHelper>())
{
    ui->setupUi(this);
    ui->tabWidget->setAutoFillBackground(true);

    ui->actionConnect->setEnabled(true);
    ui->actionQuit->setEnabled(true);
    ui->actionSettings->setEnabled(true);
    ui->actionSearch->setEnabled(true);
    ui->actionReboot->setEnabled(true);
    ui->actionReset->setEnabled(true);
    ui->actionDisconnect->setEnabled(false);

    fillToolBar();

    connect(pollingIntervalSpinBox.get(), SIGNAL(valueChanged(int)), this,
            SLOT(on_pollingIntervalSpinBoxValueChanged(int)));
    connect(idSpinBox.get(), SIGNAL(valueChanged(int)), this, SLOT(on_idSpinBoxValueChanged(int)));
    connect(ui->actionQuit, SIGNAL(triggered()), this, SLOT(close()));
    connect(ui->actionSettings, SIGNAL(triggered()), settingsDialog.get(), SLOT(show()));
    connect(ui->actionSearch, SIGNAL(triggered()), searchDialog.get(), SLOT(show()));
    connect(searchDialog.get(), SIGNAL(updateBaudRate(int)), settingsDialog.get(),
            SLOT(on_updateBaudRate(int)));
    connect(searchDialog.get(), SIGNAL(updateId(int)), this, SLOT(on_updateId(int)));

    if (!restoreGeometry(settings->value(geometryKey, QByteArray()).toByteArray()))
        fitIntoScreen();
    restoreState(settings->value(windowStateKey, QByteArray()).toByteArray());

    ui->statusBar->showMessage(tr("Disconnected"));
}

MainWindow::~MainWindow()
{
    delete ui;
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    settings->setValue(geometryKey, saveGeometry());
    settings->setValue(windowStateKey, saveState());
    QMainWindow::closeEvent(event);
}

void MainWindow::on_idSpinBoxValueChanged(int value)
{
    settings->setValue(servoIdKey, value);
}

void MainWindow::on_pollingIntervalSpinBoxValueChanged(int value)
{
    settings->setValue(pollingIntervalKey, value);
}

void MainWindow::on_updateId(int value)
{
    idSpinBox->setValue(value);
}

// The form is taller than many screens; without a stored geometry, keep the status bar in view.
void MainWindow::fitIntoScreen()
{
    if (const QScreen *screen = QGuiApplication::primaryScreen())
        resize(size().boundedTo(screen->availableGeometry().size()));
}

// The values are restored before anyone listens, so a start writes nothing back.
void MainWindow::fillToolBar()
{
    pollingIntervalLabel = std::make_shared<QLabel>(tr("Polling interval (ms): "));
    pollingIntervalLabel->setObjectName(QStringLiteral("pollingIntervalLabel"));
    ui->toolBar->addWidget(pollingIntervalLabel.get());

    pollingIntervalSpinBox = std::make_shared<QSpinBox>();
    pollingIntervalSpinBox->setObjectName(QStringLiteral("pollingIntervalSpinBox"));
    pollingIntervalSpinBox->setMinimum(10);
    pollingIntervalSpinBox->setMaximum(5000);
    pollingIntervalSpinBox->setSingleStep(10);
    pollingIntervalSpinBox->setValue(settings->value(pollingIntervalKey, 500).toInt());
    ui->toolBar->addWidget(pollingIntervalSpinBox.get());

    ui->toolBar->addSeparator();

    idLabel = std::make_shared<QLabel>(tr("Servo address: "));
    idLabel->setObjectName(QStringLiteral("idLabel"));
    ui->toolBar->addWidget(idLabel.get());

    idSpinBox = std::make_shared<QSpinBox>();
    idSpinBox->setObjectName(QStringLiteral("idSpinBox"));
    idSpinBox->setMinimum(0);
    idSpinBox->setMaximum(253);
    idSpinBox->setSingleStep(1);
    idSpinBox->setValue(settings->value(servoIdKey, 0).toInt());
    ui->toolBar->addWidget(idSpinBox.get());
}
