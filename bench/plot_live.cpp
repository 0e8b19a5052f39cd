// The whole program on the in-process virtual bus at 1,000,000 baud, polled every 10 ms,
// both tabs painted in turn, the "Plot" dock showing six channels and a recording running
// (--no-plot, --no-recording or --bare for neither). Run it on a real X server (xvfb-run).
// Prints the process's CPU share and the load average, the plot's redraw times (scales and
// canvas paint) and frame rate, resident memory at the first minute and at the end, and
// checks the recording against the replies the monitor handed out.
//
//   bench_plot_live [seconds (default 60)] [--no-plot] [--no-recording] [--bare]

#include "app/mainwindow.h"
#include "monitor/linkmonitor.h"
#include "plot/plotdock.h"
#include "plot/recordingcontroller.h"
#include "settings/settingsdialog.h"
#include "simulator/servoregisters.h"
#include "simulator/virtualbus.h"
#include "simulator/virtualbusportprovider.h"
#include "simulator/virtualservo.h"

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QScreen>
#include <QSpinBox>
#include <QStatusBar>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTimer>
#include <QToolBar>
#include <algorithm>
#include <cstdio>
#include <sys/resource.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr quint8 servoId = 1;
constexpr int baudRate = 1000000;
constexpr int pollingIntervalMs = 10;

double processorSeconds()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return double(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
           double(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

// Total and anonymous resident memory in kB, from the kernel's account of this process.
std::pair<long, long> residentKilobytes()
{
    QFile status("/proc/self/status");
    status.open(QIODevice::ReadOnly);
    long total = 0, anonymous = 0;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith("VmRSS:"))
            total = line.mid(6).trimmed().split(' ').first().toLong();
        if (line.startsWith("RssAnon:"))
            anonymous = line.mid(8).trimmed().split(' ').first().toLong();
    }
    return {total, anonymous};
}

double percentile(std::vector<qint64> values, double fraction)
{
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    return double(values[std::min(values.size() - 1, size_t(fraction * double(values.size())))]);
}

void checkRecording(const QString &path, long replies)
{
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    long rows = 0, unordered = 0;
    double last = -1, widest = 0;
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (line.isEmpty() || line.startsWith('#') || line.startsWith("time"))
            continue;
        const double t = line.left(line.indexOf(',')).toDouble();
        if (last >= 0) {
            unordered += t <= last ? 1 : 0;
            widest = std::max(widest, t - last);
        }
        last = t;
        ++rows;
    }
    std::printf("recording: %ld rows for %ld replies handed out (%s), %ld times not increasing, "
                "widest step %.1f ms, %.1f s long\n",
                rows, replies, rows == replies ? "one row each" : "MISMATCH", unordered,
                widest * 1000, last);
}

} // namespace

int main(int argc, char *argv[])
{
    QTemporaryDir home;
    qputenv("XDG_CONFIG_HOME", home.path().toLocal8Bit());
    Q_INIT_RESOURCE(resources);
    QApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    const bool plotting = !arguments.contains("--bare") && !arguments.contains("--no-plot");
    const bool recording = !arguments.contains("--bare") && !arguments.contains("--no-recording");
    int seconds = 60;
    for (const QString &argument : arguments.mid(1)) {
        if (argument.toInt() > 0)
            seconds = argument.toInt();
    }

    auto bus = VirtualBusPortProvider::installProcessBus();
    for (const auto &servo : bus->servos()) {
        if (servo->id() == servoId) {
            servo->setValue(ServoRegister::ControlEnable, 1, 1);
            servo->setValue(ServoRegister::TargetVelocity, 2, 1500);
        }
    }

    MainWindow window;
    window.resize(1400, 1150);
    window.show();
    SettingsDialog::instance()->on_updatePortName(VirtualBusPortProvider::PortName);
    SettingsDialog::instance()->on_updateBaudRate(baudRate);
    auto *toolBar = window.findChild<QToolBar *>("toolBar");
    toolBar->findChild<QSpinBox *>("idSpinBox")->setValue(servoId);
    toolBar->findChild<QSpinBox *>("pollingIntervalSpinBox")->setValue(pollingIntervalMs);
    window.findChild<QAction *>("actionConnect")->trigger();
    QElapsedTimer waited;
    waited.start();
    while (window.statusBar()->currentMessage() != "Connected" && waited.elapsed() < 10000)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
    if (window.statusBar()->currentMessage() != "Connected") {
        std::fprintf(stderr, "the servo did not answer\n");
        return 1;
    }

    PlotDock &plot = *window.plotDock();
    long replies = 0;
    QObject::connect(window.linkMonitor(), &LinkMonitor::tableReplied, [&replies] { ++replies; });
    QTemporaryDir recordings;
    const QString recordingFile = recordings.filePath("live.csv");
    if (plotting) {
        plot.show();
        plot.setSelectedChannels(
            {"position", "target-position", "velocity", "current", "voltage", "temperature"});
        plot.setRightAxisChannels({"current", "voltage", "temperature"});
    }
    if (recording)
        window.recordingController()->startRecording(recordingFile);
    replies = 0;
    plot.takeFrameTimes();

    auto *tabs = window.findChild<QTabWidget *>("tabWidget");
    QTimer flick;
    QObject::connect(&flick, &QTimer::timeout,
                     [tabs] { tabs->setCurrentIndex(1 - tabs->currentIndex()); });
    flick.start(1000);

    std::pair<long, long> atMinute{0, 0};
    QTimer::singleShot(std::min(seconds, 60) * 1000,
                       [&atMinute] { atMinute = residentKilobytes(); });
    // The resident size minute by minute shows when growth stops, and what fills up first.
    std::vector<long> minutes;
    QTimer minuteTimer;
    QObject::connect(&minuteTimer, &QTimer::timeout,
                     [&minutes] { minutes.push_back(residentKilobytes().first); });
    minuteTimer.start(60'000);
    const double processorBefore = processorSeconds();
    QElapsedTimer wall;
    wall.start();
    std::printf("pid %d: %s, %s for %d s\n", int(getpid()),
                plotting ? "six channels plotted" : "plot hidden",
                recording ? "recording" : "no recording", seconds);
    std::fflush(stdout);
    QTimer::singleShot(seconds * 1000, &application, &QCoreApplication::quit);
    application.exec();
    const double wallSeconds = double(wall.nsecsElapsed()) / 1e9;
    const double processor = processorSeconds() - processorBefore;
    const std::vector<qint64> frames = plot.takeFrameTimes();
    const std::pair<long, long> atEnd = residentKilobytes();
    window.recordingController()->linkStopped();

    const QScreen *screen = QGuiApplication::primaryScreen();
    std::printf("run: %.1f s, %ld replies (%.1f per s)\n", wallSeconds, replies,
                double(replies) / wallSeconds);
    QFile loadAverage("/proc/loadavg");
    loadAverage.open(QIODevice::ReadOnly);
    // Others' work on the machine shows in the redraw times; the load says how much there was.
    std::printf("cpu: %.1f %% of one core (load average %s)\n", 100.0 * processor / wallSeconds,
                loadAverage.readAll().split(' ').mid(0, 3).join(' ').constData());
    std::printf("plot: %zu frames (%.1f per s, screen %.0f Hz), redraw median %.0f us, p99 %.0f "
                "us, max %.0f us\n",
                frames.size(), double(frames.size()) / wallSeconds,
                screen ? screen->refreshRate() : 0.0, percentile(frames, 0.5),
                percentile(frames, 0.99), percentile(frames, 1.0));
    std::printf("rss: %.1f MB at %d s, %.1f MB at the end (growth %.2f MB); anonymous %.1f MB at "
                "the end\n",
                atMinute.first / 1024.0, std::min(seconds, 60), atEnd.first / 1024.0,
                (atEnd.first - atMinute.first) / 1024.0, atEnd.second / 1024.0);
    if (!minutes.empty()) {
        std::printf("rss by minute (MB):");
        for (long kilobytes : minutes)
            std::printf(" %.1f", kilobytes / 1024.0);
        std::printf("\n");
    }
    if (recording)
        checkRecording(recordingFile, replies);
    return 0;
}
