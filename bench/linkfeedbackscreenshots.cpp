// Renders the main window with the link indicator in each of its states, and the
// activity log, into PNG files; prints each file, the indicator's text, and whether the
// window, status bar included, fits the screen's available area. Run it on a real X
// server (xvfb-run) to see the window as a user would.
//
//   bench_linkfeedbackscreenshots [output folder]

#include "app/mainwindow.h"
#include "monitor/linkmonitor.h"
#include "settings/settingsdialog.h"
#include "simulator/busfault.h"
#include "simulator/servoregisters.h"
#include "simulator/virtualbus.h"
#include "simulator/virtualbusportprovider.h"
#include "simulator/virtualservo.h"
#include "widgets/uigrouphelper.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QDockWidget>
#include <QElapsedTimer>
#include <QLabel>
#include <QProcess>
#include <QPushButton>
#include <QScreen>
#include <QSpinBox>
#include <QStatusBar>
#include <QTableView>
#include <QTemporaryDir>
#include <QToolBar>

#include <cstdio>
#include <functional>

namespace {

constexpr int baudRate = 57600;
constexpr quint8 jointServoId = 3;
constexpr quint8 alarmedServoId = 10;

MainWindow *window = nullptr;
QDir folder;

void waitFor(const std::function<bool()> &done, int ms = 5000)
{
    QElapsedTimer clock;
    clock.start();
    while (!done() && clock.elapsed() < ms)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
}

void wait(int ms)
{
    waitFor([] { return false; }, ms);
}

QLabel *indicator()
{
    return window->findChild<QLabel *>("linkIndicator");
}

void save(const QString &name)
{
    wait(300);
    const QString path = folder.filePath(name + ".png");
    const bool saved = window->grab().save(path);
    std::printf("%s %s: \"%s\"\n", saved ? "wrote" : "FAILED to write", qPrintable(path),
                qPrintable(indicator()->text()));
}

void connectTo(const QString &portName, quint8 id)
{
    window->findChild<QAction *>("actionDisconnect")->trigger();
    wait(150);
    SettingsDialog::instance()->on_updatePortName(portName);
    SettingsDialog::instance()->on_updateBaudRate(baudRate);
    window->findChild<QToolBar *>()->findChild<QSpinBox *>("idSpinBox")->setValue(id);
    window->findChild<QAction *>("actionConnect")->trigger();
    waitFor([] { return window->statusBar()->currentMessage() == "Connected"; }, 1500);
}

std::shared_ptr<VirtualServo> servo(VirtualBus &bus, quint8 id)
{
    for (const auto &servo : bus.servos()) {
        if (servo->id() == id)
            return servo;
    }
    return nullptr;
}

void startBridge(QProcess &bridge, const QStringList &arguments, const QByteArray &runtime)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("XDG_RUNTIME_DIR", QString::fromLocal8Bit(runtime));
    bridge.setProcessEnvironment(environment);
    bridge.start(ZELVAR_VIRTUAL_BUS_PATH, arguments);
    bridge.waitForStarted();
    bridge.waitForReadyRead();
    bridge.readLine();
}

void reportFit()
{
    const QRect available = window->screen()->availableGeometry();
    const QRect frame = window->frameGeometry();
    const QRect statusBar(window->statusBar()->mapToGlobal(QPoint(0, 0)),
                          window->statusBar()->size());
    std::printf("screen available %dx%d at %d,%d; window frame %dx%d at %d,%d; status bar "
                "bottom %d: %s\n",
                available.width(), available.height(), available.x(), available.y(), frame.width(),
                frame.height(), frame.x(), frame.y(), statusBar.bottom(),
                available.contains(frame) ? "fits" : "DOES NOT FIT");
}

} // namespace

int main(int argc, char *argv[])
{
    QTemporaryDir home;
    qputenv("XDG_CONFIG_HOME", home.path().toLocal8Bit());
    // The program's runtime folder, where it looks for bridges.
    QTemporaryDir runtime;
    QFile::setPermissions(runtime.path(),
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    qputenv("XDG_RUNTIME_DIR", runtime.path().toLocal8Bit());
    Q_INIT_RESOURCE(resources);
    QApplication application(argc, argv);
    folder.setPath(argc > 1 ? argv[1] : "screenshots");
    folder.mkpath(".");

    auto bus = VirtualBusPortProvider::installProcessBus();
    bus->addServo(alarmedServoId, baudRate)->setValue(ServoRegister::MinVoltageLimit, 1, 200);

    MainWindow mainWindow;
    window = &mainWindow;
    mainWindow.show();
    wait(300);
    reportFit();
    mainWindow.findChild<QToolBar *>()
        ->findChild<QSpinBox *>("pollingIntervalSpinBox")
        ->setValue(100);
    save("01-disconnected");

    // A bridge whose registration the program cannot see stands for a real adapter.
    QTemporaryDir hiddenRuntime;
    const QString adapter = hiddenRuntime.filePath("ttyUSB0");
    QProcess realLooking;
    startBridge(realLooking, {"--link", adapter}, hiddenRuntime.path().toLocal8Bit());
    connectTo(adapter, jointServoId);
    save("02-answering");

    connectTo(VirtualBusPortProvider::PortName, jointServoId);
    save("03-answering-simulated");

    connectTo(VirtualBusPortProvider::PortName, 42);
    wait(1100);
    save("04-no-answer");

    connectTo(VirtualBusPortProvider::PortName, jointServoId);
    bus->setFaultProbability(jointServoId, BusFault::Drop, 1.0);
    wait(2200);
    save("05-stopped-answering");
    bus->clearFaults();

    connectTo(VirtualBusPortProvider::PortName, jointServoId);
    servo(*bus, jointServoId)->setValue(ServoRegister::ControlEnable, 1, 1);
    emit UiGroupHelper::instance()->addQueueRequest(ServoRegister::TemperatureLimit,
                                                    QByteArray(1, char(70)));
    save("06-refused");
    servo(*bus, jointServoId)->setValue(ServoRegister::ControlEnable, 1, 0);

    connectTo(VirtualBusPortProvider::PortName, alarmedServoId);
    save("07-hardware-alert");

    connectTo(adapter, jointServoId);
    realLooking.kill();
    realLooking.waitForFinished();
    save("08-lost");

    connectTo(VirtualBusPortProvider::PortName, jointServoId);
    servo(*bus, jointServoId)->setValue(ServoRegister::ControlEnable, 1, 1);
    wait(500);
    emit UiGroupHelper::instance()->addQueueRequest(ServoRegister::TemperatureLimit,
                                                    QByteArray(1, char(70)));
    wait(500);
    servo(*bus, jointServoId)->setValue(ServoRegister::ControlEnable, 1, 0);
    indicator()->setFocus();
    auto *dock = mainWindow.findChild<QDockWidget *>("activityDock");
    dock->show();
    auto *table = dock->findChild<QTableView *>();
    wait(500);
    table->selectRow(table->model()->rowCount() - 1);
    save("09-activity-log");
    dock->findChild<QCheckBox *>("hidePollsCheckBox")->setChecked(true);
    table->selectRow(1);
    save("10-activity-log-without-polls");
    mainWindow.findChild<QAction *>("actionDisconnect")->trigger();
    wait(200);
    return 0;
}
