#pragma once

#include <QByteArray>
#include <QMainWindow>
#include <QString>
#include <memory>

class ActivityDock;
class LinkIndicator;
class LinkMonitor;
class PlotDock;
class QCloseEvent;
class QLabel;
class QSpinBox;
class QTimerEvent;
class ParameterFileActions;
class SearchDialog;
class SerialHelper;
class RecordingController;
class Settings;
class SettingsDialog;
class TelemetryDecoder;
class UiRegisterHelper;
class UiScheduler;

namespace Ui {
class MainWindow;
}

// The program's single window: owns every long-lived object, the toolbar, menus,
// status bar and the two tabs.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(QWidget *parent = nullptr);
    ~MainWindow() override;

    // The one monitor of this window's link; features that watch the link listen to it.
    LinkMonitor *linkMonitor() const;
    PlotDock *plotDock() const { return plot; }
    RecordingController *recordingController() const { return recording; }

protected:
    void closeEvent(QCloseEvent *event) override;
    // The close timer: the port closes a moment after a disconnect.
    void timerEvent(QTimerEvent *event) override;

private slots:
    void on_actionConnect_triggered();
    void on_actionDisconnect_triggered();
    void on_idSpinBoxValueChanged(int value);
    void on_pollingIntervalSpinBoxValueChanged(int value);
    void on_updateId(int value);
    void on_actionReboot_triggered();
    void on_actionReset_triggered();
    void on_servoMoving(int id, int baudRate);
    void on_unitsApplied();

private:
    // A one-shot servo command and the texts that report it.
    struct ServoOperation;
    static const ServoOperation rebootOperation;
    static const ServoOperation factoryResetOperation;

    void fillToolBar();
    void setupLinkFeedback();
    void startLinkMonitor();
    void setupPlot();
    // The plot and the recorder follow the monitor's started(), stopped(), lost() and
    // tableReplied().
    void followLink(QObject *linkMonitor);
    void loadTraceChannels();
    void fitIntoScreen();
    void onDeviceLoaded();
    void setLinkActions(bool linked);
    bool openSerialPort();
    bool confirmFactoryReset();
    void reopenAtNewBaudRate();
    void runServoOperation(const ServoOperation &operation);
    void showOperationResult(const ServoOperation &operation, const QByteArray &reply);

    Ui::MainWindow *ui;
    std::shared_ptr<Settings> settings;
    std::shared_ptr<SettingsDialog> settingsDialog;
    std::shared_ptr<SearchDialog> searchDialog;
    std::shared_ptr<QLabel> idLabel;
    std::shared_ptr<QSpinBox> idSpinBox;
    std::shared_ptr<QLabel> pollingIntervalLabel;
    std::shared_ptr<QSpinBox> pollingIntervalSpinBox;
    std::shared_ptr<UiRegisterHelper> registerHelper;
    std::shared_ptr<SerialHelper> serialHelper;
    std::shared_ptr<UiScheduler> scheduler;
    std::shared_ptr<ParameterFileActions> parameterFiles;
    int closeTimerId = 0;
    std::shared_ptr<LinkMonitor> monitor;
    LinkIndicator *linkIndicator = nullptr;
    ActivityDock *activityDock = nullptr;
    std::shared_ptr<const TelemetryDecoder> decoder;
    PlotDock *plot = nullptr;
    RecordingController *recording = nullptr;
};
