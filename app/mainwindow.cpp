#include "app/mainwindow.h"
#include "ui_mainwindow.h"

#include "app/parameterfileactions.h"
#include "app/repaintpacer.h"
#include "device/devicehelper.h"
#include "device/idevice.h"
#include "device/physicalquantities.h"
#include "device/uiregisterhelper.h"
#include "link/serialhelper.h"
#include "link/uischeduler.h"
#include "monitor/linkmonitor.h"
#include "plot/plotdock.h"
#include "plot/recordingcontroller.h"
#include "plot/recordingindicator.h"
#include "search/searchdialog.h"
#include "settings/settings.h"
#include "settings/settingsdialog.h"
#include "telemetry/registercatalogue.h"
#include "telemetry/telemetrydecoder.h"
#include "trace/tracecatalogue.h"
#include "views/activitydock.h"
#include "views/linkindicator.h"
#include "views/registerview.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QLocale>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QSpinBox>
#include <QTimer>
#include <QTimerEvent>

namespace {
const QString geometryKey = QStringLiteral("geometry");
const QString windowStateKey = QStringLiteral("windowState");
const QString pollingIntervalKey = QStringLiteral("pollingInterval");
const QString servoIdKey = QStringLiteral("servoId");

// Room for a title bar and borders, more than most window managers draw.
const QSize windowDecoration(16, 48);
// What the plot shows until the user picks: the position against its target, and the
// current on its own axis.
const QStringList defaultPlotChannels = {"position", "target-position", "current"};
const QStringList defaultRightAxisChannels = {"current"};

// Leaves an exchange already under way time to finish before the port goes.
constexpr int closeDelayMs = 100;
// Long enough for a whole-table read ahead of a write, and the write, at 9,600 baud.
constexpr int baudRateChangeDelayMs = 300;

// The reply to a reboot or a factory reset: the servo's id and its error byte.
constexpr int replyIdByte = 2;
constexpr int replyErrorByte = 4;

quint8 replyByte(const QByteArray &reply, int index)
{
    return index < reply.size() ? quint8(reply.at(index)) : 0;
}
} // namespace

struct MainWindow::ServoOperation
{
    bool (DeviceHelper::*send)(uint8_t servoId, std::function<void(QByteArray)> callback);
    const char *refused;
    const char *failed;
    const char *succeeded;
    const char *unanswered;
};

// clang-format off
const MainWindow::ServoOperation MainWindow::rebootOperation = {
    &DeviceHelper::reboot,
    QT_TRANSLATE_NOOP("MainWindow", "Error occurred during reboot operation"),
    QT_TRANSLATE_NOOP("MainWindow", "Error during reboot of Zelvar servo id:%1"),
    QT_TRANSLATE_NOOP("MainWindow", "Zelvar servo id:%1 was rebooted successfully"),
    QT_TRANSLATE_NOOP("MainWindow", "No reply from Zelvar servo id:%1 to the reboot"),
};
const MainWindow::ServoOperation MainWindow::factoryResetOperation = {
    &DeviceHelper::factoryReset,
    QT_TRANSLATE_NOOP("MainWindow", "Error occurred during factory reset operation"),
    QT_TRANSLATE_NOOP("MainWindow", "Error during factory reset of Zelvar servo id:%1"),
    QT_TRANSLATE_NOOP("MainWindow", "Factory reset of Zelvar servo id:%1 was successful"),
    QT_TRANSLATE_NOOP("MainWindow", "No reply from Zelvar servo id:%1 to the factory reset"),
};
// clang-format on

MainWindow::MainWindow(QWidget *parent)
    : QMainWindow(parent)
    , ui(new Ui::MainWindow)
    , settings(std::make_shared<Settings>(QStringLiteral("main window settings")))
    , settingsDialog(std::make_shared<SettingsDialog>())
    , searchDialog(std::make_shared<SearchDialog>())
    , serialHelper(std::make_shared<SerialHelper>())
    , monitor(std::make_shared<LinkMonitor>())
{
    ui->setupUi(this);
    new RepaintPacer(this);
    ui->tabWidget->setAutoFillBackground(true);
    setupLinkFeedback();
    parameterFiles = std::make_shared<ParameterFileActions>(this, ui->menuHelp->menuAction());

    // The helper outlives this window; a window that is gone is told nothing.
    QPointer<MainWindow> self(this);
    DeviceHelper::instance(serialHelper, [self] {
        if (self)
            self->onDeviceLoaded();
    });
    registerHelper = UiRegisterHelper::instance();

    ui->actionConnect->setEnabled(true);
    ui->actionQuit->setEnabled(true);
    ui->actionSettings->setEnabled(true);
    ui->actionSearch->setEnabled(true);
    ui->actionReboot->setEnabled(true);
    ui->actionReset->setEnabled(true);
    ui->actionDisconnect->setEnabled(false);

    fillToolBar();
    setupPlot();

    connect(pollingIntervalSpinBox.get(), SIGNAL(valueChanged(int)), this,
            SLOT(on_pollingIntervalSpinBoxValueChanged(int)));
    connect(idSpinBox.get(), SIGNAL(valueChanged(int)), this, SLOT(on_idSpinBoxValueChanged(int)));
    connect(ui->actionQuit, SIGNAL(triggered()), this, SLOT(close()));
    connect(ui->actionSettings, SIGNAL(triggered()), settingsDialog.get(), SLOT(show()));
    connect(ui->actionSearch, SIGNAL(triggered()), searchDialog.get(), SLOT(show()));
    connect(searchDialog.get(), SIGNAL(updateBaudRate(int)), settingsDialog.get(),
            SLOT(on_updateBaudRate(int)));
    connect(searchDialog.get(), SIGNAL(updateId(int)), this, SLOT(on_updateId(int)));
    connect(searchDialog.get(), SIGNAL(updatePortName(QString)), settingsDialog.get(),
            SLOT(on_updatePortName(QString)));
    connect(settingsDialog.get(), SIGNAL(unitsApplied()), this, SLOT(on_unitsApplied()));

    if (!restoreGeometry(settings->value(geometryKey, QByteArray()).toByteArray()))
        fitIntoScreen();
    restoreState(settings->value(windowStateKey, QByteArray()).toByteArray());

    ui->statusBar->showMessage(tr("Disconnected"));
}

MainWindow::~MainWindow()
{
    // The helper may outlive this window (the device helper shares it).
    serialHelper->setTransactionObserver(nullptr);
    // They read the monitor, which goes before the window's children do.
    delete activityDock;
    delete linkIndicator;
    delete ui;
}

LinkMonitor *MainWindow::linkMonitor() const
{
    return monitor.get();
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    recording->recorder().stop();
    settings->setValue(geometryKey, saveGeometry());
    settings->setValue(windowStateKey, saveState());
    QMainWindow::closeEvent(event);
}

void MainWindow::timerEvent(QTimerEvent *event)
{
    serialHelper->closeSerialPort();
    killTimer(closeTimerId);
    // Two disconnects within the delay leave an older timer whose id was overwritten; it
    // would otherwise close the port every 100 ms from then on, under the next connection.
    if (event->timerId() != closeTimerId)
        killTimer(event->timerId());
    closeTimerId = 0;
}

void MainWindow::on_actionConnect_triggered()
{
    if (!openSerialPort())
        return;
    startLinkMonitor();
    const auto servoId = uint8_t(idSpinBox->value());
    // The answer comes through the event loop, after the register view and the scheduler
    // below are ready for it.
    DeviceHelper::instance()->identify(servoId);
    ui->registerView->connectDevice();
    scheduler = std::make_shared<UiScheduler>(servoId, serialHelper);
    connect(scheduler.get(), SIGNAL(servoMoving(int, int)), this, SLOT(on_servoMoving(int, int)));
    setLinkActions(true);
}

void MainWindow::onDeviceLoaded()
{
    // An identification that answers after a disconnect starts nothing.
    if (!scheduler || !ui->actionDisconnect->isEnabled())
        return;
    ui->statusBar->showMessage(tr("Connected"));
    loadTraceChannels();
    scheduler->timerId = scheduler->startTimer(pollingIntervalSpinBox->value(), Qt::CoarseTimer);
    parameterFiles->setLink(scheduler, DeviceHelper::instance()->device(),
                            uint8_t(idSpinBox->value()), pollingIntervalSpinBox->value());
}

void MainWindow::on_actionDisconnect_triggered()
{
    if (scheduler) {
        scheduler->killTimer(scheduler->timerId);
        scheduler->timerId = 0;
    }
    parameterFiles->clearLink();
    ui->registerView->disconnectDevice();
    monitor->stop();
    setLinkActions(false);
    closeTimerId = startTimer(closeDelayMs);
    ui->statusBar->showMessage(tr("Disconnected"));
}

// A save gave the servo a new id or baud rate: the program follows it there, and keeps
// both for the next start, rather than polling a servo that is no longer at the old ones.
void MainWindow::on_servoMoving(int id, int baudRate)
{
    if (!scheduler)
        return;
    idSpinBox->setValue(id);
    scheduler->setServoId(uint8_t(id));
    if (baudRate <= 0 || baudRate == settingsDialog->portSettings().baudRate)
        return;
    settingsDialog->on_updateBaudRate(baudRate);
    // The servo answers the write at the old rate; the port changes once that is over.
    scheduler->killTimer(scheduler->timerId);
    scheduler->timerId = 0;
    QTimer::singleShot(baudRateChangeDelayMs, this, [this] { reopenAtNewBaudRate(); });
}

void MainWindow::reopenAtNewBaudRate()
{
    // Disconnected meanwhile: nothing to follow.
    if (!scheduler || !ui->actionDisconnect->isEnabled())
        return;
    serialHelper->closeSerialPort();
    if (!openSerialPort()) {
        on_actionDisconnect_triggered();
        return;
    }
    scheduler->timerId = scheduler->startTimer(pollingIntervalSpinBox->value(), Qt::CoarseTimer);
}

void MainWindow::on_actionReboot_triggered()
{
    runServoOperation(rebootOperation);
}

void MainWindow::on_actionReset_triggered()
{
    if (confirmFactoryReset())
        runServoOperation(factoryResetOperation);
}

// Asked first, unlike a reboot: a reset cannot be undone, and its shortcut is Find's in
// most programs.
bool MainWindow::confirmFactoryReset()
{
    const SettingsDialog::PortSettings port = settingsDialog->portSettings();
    QMessageBox question(QMessageBox::Warning, tr("Factory reset"),
                         tr("Reset servo %1 on %2 at %3 baud to its factory settings?")
                             .arg(idSpinBox->value())
                             .arg(port.portName, QLocale().toString(port.baudRate)),
                         QMessageBox::Cancel, this);
    question.setInformativeText(tr("Every parameter except the servo's ID and baud rate goes "
                                   "back to its factory value. This cannot be undone."));
    const QPushButton *reset = question.addButton(tr("Reset"), QMessageBox::DestructiveRole);
    question.setDefaultButton(QMessageBox::Cancel);
    question.exec();
    return question.clickedButton() == reset;
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
// The window manager's title bar and borders come on top of the window's own size and are
// unknown until it is shown, so room is left for them.
void MainWindow::fitIntoScreen()
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    if (!screen)
        return;
    const QRect available = screen->availableGeometry();
    resize(size().boundedTo(available.size() - windowDecoration));
    move(available.topLeft());
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

void MainWindow::setupLinkFeedback()
{
    serialHelper->setTransactionObserver(monitor.get());
    linkIndicator = new LinkIndicator(monitor.get(), ui->statusBar);
    ui->statusBar->addPermanentWidget(linkIndicator);
    activityDock = new ActivityDock(monitor.get(), this);
    addDockWidget(Qt::BottomDockWidgetArea, activityDock);
    activityDock->hide();
    ui->menuView->addAction(activityDock->toggleViewAction());
    connect(linkIndicator, SIGNAL(clicked()), activityDock, SLOT(show()));
    connect(linkIndicator, SIGNAL(clicked()), activityDock, SLOT(raise()));
}

void MainWindow::startLinkMonitor()
{
    LinkMonitor::Target target;
    target.portName = settingsDialog->portSettings().portName;
    target.baudRate = settingsDialog->portSettings().baudRate;
    target.servoId = quint8(idSpinBox->value());
    target.pollIntervalMs = pollingIntervalSpinBox->value();
    target.simulated =
        LinkMonitor::isSimulatedPort(target.portName, serialHelper->getSerialPortList());
    monitor->start(target);
}

void MainWindow::setupPlot()
{
    plot = new PlotDock(this);
    addDockWidget(Qt::BottomDockWidgetArea, plot);
    plot->hide();
    QAction *showPlot = plot->toggleViewAction();
    showPlot->setObjectName(QStringLiteral("actionPlot"));
    showPlot->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_P));
    ui->menuView->addAction(showPlot);

    QPointer<MainWindow> self(this);
    auto info = [self](const QByteArray &lastReply) {
        RecordingInfo info;
        info.programVersion = QStringLiteral(ZELVAR_VERSION);
        if (!self)
            return info;
        const SettingsDialog::PortSettings port = self->settingsDialog->portSettings();
        info.portName = port.portName;
        info.baudRate = port.baudRate;
        info.servoId = self->idSpinBox->value();
        if (self->decoder && !lastReply.isEmpty()) {
            const QByteArray table = TelemetryDecoder::tableOfReply(lastReply);
            const RegisterCatalogue &catalogue = self->decoder->catalogue();
            if (const CatalogueEntry *model = catalogue.find(QStringLiteral("Model number")))
                info.modelNumber = int(TelemetryDecoder::rawValue(table, model->span).value_or(0));
            if (const CatalogueEntry *firmware = catalogue.find(QStringLiteral("Firmware version")))
                info.firmwareVersion =
                    int(TelemetryDecoder::rawValue(table, firmware->span).value_or(0));
        }
        return info;
    };
    auto columns = [self] {
        QVector<TraceChannel> columns;
        if (!self || !self->decoder)
            return columns;
        QStringList registers;
        for (const QString &key : self->plot->selectedChannels()) {
            if (key.startsWith(TraceCatalogue::registerKeyPrefix))
                registers.append(key);
        }
        return TraceCatalogue(self->decoder).recordingColumns(registers);
    };
    recording = new RecordingController(this, info, columns);
    ui->menuView->addAction(recording->action());
    plot->addToolBarAction(recording->action());
    ui->statusBar->addPermanentWidget(new RecordingIndicator(recording->recorder()));
    followLink(monitor.get());
}

void MainWindow::followLink(QObject *linkMonitor)
{
    connect(linkMonitor, SIGNAL(started()), plot, SLOT(clear()));
    connect(linkMonitor, SIGNAL(stopped()), plot, SLOT(freeze()));
    connect(linkMonitor, SIGNAL(lost(QString)), plot, SLOT(freeze()));
    connect(linkMonitor, SIGNAL(tableReplied(qint64, QByteArray)), plot,
            SLOT(addTableReply(qint64, QByteArray)));
    connect(linkMonitor, SIGNAL(started()), recording, SLOT(linkStarted()));
    connect(linkMonitor, SIGNAL(stopped()), recording, SLOT(linkStopped()));
    connect(linkMonitor, SIGNAL(lost(QString)), recording, SLOT(linkStopped()));
    connect(linkMonitor, SIGNAL(tableReplied(qint64, QByteArray)), recording,
            SLOT(addTableReply(qint64, QByteArray)));
}

// The channels of the model just identified, in the units chosen now.
void MainWindow::loadTraceChannels()
{
    const std::shared_ptr<IDevice> device = DeviceHelper::instance()->device();
    if (!device)
        return;
    auto units = std::make_shared<PhysicalQuantities>(settingsDialog->units());
    decoder =
        std::make_shared<TelemetryDecoder>(std::make_shared<RegisterCatalogue>(*device), units);
    plot->setAvailableChannels(TraceCatalogue(decoder).channels());
    if (plot->selectedChannels().isEmpty()) {
        plot->setSelectedChannels(defaultPlotChannels);
        plot->setRightAxisChannels(defaultRightAxisChannels);
    }
}

void MainWindow::on_unitsApplied()
{
    if (decoder)
        loadTraceChannels();
}

void MainWindow::setLinkActions(bool linked)
{
    ui->actionConnect->setEnabled(!linked);
    ui->actionSettings->setEnabled(!linked);
    ui->actionSearch->setEnabled(!linked);
    ui->actionReboot->setEnabled(!linked);
    ui->actionReset->setEnabled(!linked);
    ui->actionDisconnect->setEnabled(linked);
    idSpinBox->setEnabled(!linked);
    pollingIntervalSpinBox->setEnabled(!linked);
}

bool MainWindow::openSerialPort()
{
    const SettingsDialog::PortSettings port = settingsDialog->portSettings();
    const QString error = serialHelper->openSerialPort(port.portName, port.baudRate);
    if (error.isEmpty())
        return true;
    QMessageBox::critical(this, tr("Error"), error, QMessageBox::Ok);
    return false;
}

void MainWindow::runServoOperation(const ServoOperation &operation)
{
    if (!openSerialPort())
        return;
    // The reply arrives inside the library call; its box waits until that call is over,
    // so that no dialog runs its event loop in the middle of the library.
    QPointer<MainWindow> self(this);
    auto showResult = [self, &operation](QByteArray reply) {
        QTimer::singleShot(0, self, [self, &operation, reply] {
            if (self)
                self->showOperationResult(operation, reply);
        });
    };
    // The library waits for the reply inside the call, so a callback not made by its
    // return means the servo never answered.
    auto answered = std::make_shared<bool>(false);
    auto noteAnswer = [showResult, answered](QByteArray reply) {
        *answered = true;
        showResult(reply);
    };
    DeviceHelper &deviceHelper = *DeviceHelper::instance();
    const int servoId = idSpinBox->value();
    if (!(deviceHelper.*operation.send)(uint8_t(servoId), noteAnswer))
        QMessageBox::critical(this, tr("Error"), tr(operation.refused));
    else if (!*answered)
        QMessageBox::critical(this, tr("Error"), tr(operation.unanswered).arg(servoId));
}

void MainWindow::showOperationResult(const ServoOperation &operation, const QByteArray &reply)
{
    const QString id = QString::number(replyByte(reply, replyIdByte));
    if (replyByte(reply, replyErrorByte) != 0)
        QMessageBox::critical(this, tr("Error"), tr(operation.failed).arg(id));
    else
        QMessageBox::information(this, tr("Success"), tr(operation.succeeded).arg(id));
}
