// Draws the "Plot" dock on a live virtual bus into PNG files: a wheel servo turning, and
// a joint servo stepping between two targets (live, then paused with the cursor's
// readout), plus the plot's own PNG and SVG export and the window with a recording under
// way. Prints each file and what the plot held. Run it on a real X server (xvfb-run).
//
//   bench_plotscreenshots [output folder]

#include "app/mainwindow.h"
#include "plot/axisrangedialog.h"
#include "plot/plotdock.h"
#include "plot/recordingcontroller.h"
#include "settings/settingsdialog.h"
#include "simulator/servoregisters.h"
#include "simulator/virtualbus.h"
#include "simulator/virtualbusportprovider.h"
#include "simulator/virtualservo.h"

#include <qwt_plot.h>
#include <qwt_plot_canvas.h>

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QMouseEvent>
#include <QSpinBox>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QToolBar>
#include <cstdio>
#include <functional>

namespace {

constexpr quint8 wheelServoId = 1;
constexpr quint8 jointServoId = 3;
// A quarter turn either way, in counts of 4096 per turn, inside the joint's limits.
constexpr int firstTarget = -1024;
constexpr int secondTarget = 1024;
constexpr int stepEveryMs = 2000;

MainWindow *window = nullptr;
QDir folder;

void waitFor(const std::function<bool()> &done, int ms)
{
    QElapsedTimer clock;
    clock.start();
    while (!done() && clock.elapsed() < ms)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 10);
}

void wait(int ms)
{
    waitFor([] { return false; }, ms);
}

void save(QWidget *widget, const QString &name)
{
    const QString path = folder.filePath(name + ".png");
    const bool saved = widget->grab().save(path);
    std::printf("%s %s\n", saved ? "wrote" : "FAILED to write", qPrintable(path));
}

bool connectTo(quint8 id, int baudRate)
{
    window->findChild<QAction *>("actionDisconnect")->trigger();
    wait(200);
    SettingsDialog::instance()->on_updatePortName(VirtualBusPortProvider::PortName);
    SettingsDialog::instance()->on_updateBaudRate(baudRate);
    auto *toolBar = window->findChild<QToolBar *>("toolBar");
    toolBar->findChild<QSpinBox *>("idSpinBox")->setValue(id);
    toolBar->findChild<QSpinBox *>("pollingIntervalSpinBox")->setValue(10);
    window->findChild<QAction *>("actionConnect")->trigger();
    waitFor([] { return window->statusBar()->currentMessage() == "Connected"; }, 3000);
    return window->statusBar()->currentMessage() == "Connected";
}

std::shared_ptr<VirtualServo> servo(VirtualBus &bus, quint8 id)
{
    for (const auto &servo : bus.servos()) {
        if (servo->id() == id)
            return servo;
    }
    return nullptr;
}

void report(const PlotDock &plot)
{
    const SampleBuffer &buffer = plot.buffer();
    std::printf("  %d rows, %.2f s to %.2f s; channels:", buffer.size(),
                buffer.size() ? buffer.time(0) : 0.0,
                buffer.size() ? buffer.time(buffer.size() - 1) : 0.0);
    for (const TraceChannel &channel : plot.selectedChannelList())
        std::printf(" \"%s\"", qPrintable(channel.title()));
    std::printf("\n");
}

// The cursor follows the mouse; a move over the canvas is what a user's hand would give.
void hover(QWidget *canvas, double fraction)
{
    const QPoint at(int(canvas->width() * fraction), canvas->height() / 3);
    QMouseEvent move(QEvent::MouseMove, at, canvas->mapToGlobal(at), Qt::NoButton, Qt::NoButton,
                     Qt::NoModifier);
    QApplication::sendEvent(canvas, &move);
}

} // namespace

int main(int argc, char *argv[])
{
    QTemporaryDir home;
    qputenv("XDG_CONFIG_HOME", home.path().toLocal8Bit());
    Q_INIT_RESOURCE(resources);
    QApplication application(argc, argv);
    folder.setPath(argc > 1 ? argv[1] : "screenshots");
    folder.mkpath(".");

    auto bus = VirtualBusPortProvider::installProcessBus();
    MainWindow mainWindow;
    window = &mainWindow;
    mainWindow.resize(1400, 1150);
    mainWindow.show();
    PlotDock &plot = *mainWindow.plotDock();
    plot.show();
    wait(300);

    // Wheel: 1.5 rad/s forward.
    auto wheel = servo(*bus, wheelServoId);
    wheel->setValue(ServoRegister::ControlEnable, 1, 1);
    wheel->setValue(ServoRegister::TargetVelocity, 2, 1500);
    if (!connectTo(wheelServoId, 1000000)) {
        std::fprintf(stderr, "the wheel servo did not answer\n");
        return 1;
    }
    plot.setSelectedChannels({"position", "velocity", "target-velocity", "current"});
    plot.setRightAxisChannels({"velocity", "target-velocity"});
    wait(6000);
    save(&plot, "01-wheel-turning");
    report(plot);

    // Joint: steps between two targets; the recording runs along.
    if (!connectTo(jointServoId, 57600)) {
        std::fprintf(stderr, "the joint servo did not answer\n");
        return 1;
    }
    plot.setSelectedChannels({"position", "target-position", "velocity", "current"});
    plot.setRightAxisChannels({"velocity"});
    auto joint = servo(*bus, jointServoId);
    joint->setValue(ServoRegister::ControlEnable, 1, 1);
    // As a user would, after the first replies: the comment line names the model from them.
    wait(300);
    mainWindow.recordingController()->startRecording(folder.filePath("joint.csv"));
    for (int step = 0; step < 4; ++step) {
        joint->setValue(ServoRegister::TargetPosition, 4, step % 2 ? secondTarget : firstTarget);
        wait(stepEveryMs);
    }
    save(&plot, "02-joint-stepping");
    report(plot);
    save(&mainWindow, "03-window-recording");

    plot.setPaused(true);
    QWidget *canvas = plot.plot()->canvas();
    hover(canvas, 0.55);
    wait(300);
    save(&plot, "04-joint-paused-cursor");
    std::printf("  cursor readout: %s\n", qPrintable(plot.readout(plot.plot()->invTransform(
                                              QwtPlot::xBottom, canvas->width() * 0.55))));
    for (const char *suffix : {"png", "svg"}) {
        const QString path = folder.filePath(QStringLiteral("05-export.") + suffix);
        std::printf("%s %s\n", plot.exportTo(path) ? "exported" : "FAILED to export",
                    qPrintable(path));
    }
    AxisRangeDialog axes(&plot);
    axes.setRanges({true, 0.0, 1.0}, {false, -2.5, 2.5});
    axes.show();
    wait(200);
    save(&axes, "06-axes-dialog");
    mainWindow.recordingController()->linkStopped();
    std::printf("recording: %s\n", qPrintable(folder.filePath("joint.csv")));
    return 0;
}
