// What watching the link costs: the monitor's share of each transaction (with its ring
// full), and one refresh of the activity log on screen in the main window at 10 ms
// polling (the new rows of a refresh, the view following the newest). Prints each per event and as
// a share of one core at 100 transactions a second.
//
//   xvfb-run -a -s "-screen 0 1600x1200x24" bench_link_monitor
#include "app/mainwindow.h"
#include "monitor/linkmonitor.h"
#include "views/activitydock.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <cstdio>

namespace {

constexpr int transactionsPerSecond = 100;
constexpr int refreshesPerSecond = 4;

BusTransaction poll(qint64 atNs)
{
    BusTransaction t;
    t.instruction = 0x02;
    t.id = 1;
    t.length = 118;
    t.outcome = BusTransaction::Outcome::Reply;
    t.handedOver = true;
    t.sentAtNs = atNs - 1500000;
    t.endedAtNs = atNs;
    t.request = QByteArray(14, '\x01');
    t.reply = QByteArray(129, '\x02');
    return t;
}

void report(const char *what, qint64 ns, long count, int perSecond)
{
    const double each = double(ns) / double(count) / 1000.0;
    std::printf("%s: %.2f us each, %.3f %% of one core at %d a second\n", what, each,
                each * perSecond / 1e4, perSecond);
}

} // namespace

int main(int argc, char *argv[])
{
    QTemporaryDir home;
    qputenv("XDG_CONFIG_HOME", home.path().toLocal8Bit());
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && qEnvironmentVariableIsEmpty("DISPLAY"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    Q_INIT_RESOURCE(resources);
    QApplication application(argc, argv);

    // The window's own monitor and log, at the window's first size.
    MainWindow window;
    LinkMonitor &monitor = *window.linkMonitor();
    LinkMonitor::Target target;
    target.portName = QStringLiteral("Virtual bus");
    target.baudRate = 1000000;
    target.servoId = 1;
    target.pollIntervalMs = 10;
    qint64 now = LinkMonitor::steadyNowNs();
    monitor.start(target, now);
    // Fill the ring, so every later transaction replaces the oldest.
    for (int i = 0; i < LinkMonitor::ringCapacity; ++i)
        monitor.transactionEnded(poll(now += 10000000));

    constexpr long transactions = 200000;
    QElapsedTimer clock;
    clock.start();
    for (long i = 0; i < transactions; ++i)
        monitor.transactionEnded(poll(now += 10000000));
    report("monitor, per transaction", clock.nsecsElapsed(), transactions, transactionsPerSecond);

    window.show();
    auto *dock = window.findChild<ActivityDock *>("activityDock");
    dock->show();
    QApplication::processEvents();

    constexpr long refreshes = 500;
    constexpr int rowsPerRefresh = transactionsPerSecond / refreshesPerSecond;
    qint64 refreshing = 0;
    qint64 drawing = 0;
    for (long i = 0; i < refreshes; ++i) {
        for (int row = 0; row < rowsPerRefresh; ++row)
            monitor.transactionEnded(poll(now += 10000000));
        clock.restart();
        QMetaObject::invokeMethod(dock, "on_refresh");
        refreshing += clock.nsecsElapsed();
        clock.restart();
        QApplication::processEvents();
        drawing += clock.nsecsElapsed();
    }
    report("activity log on screen, following the ring", refreshing, refreshes, refreshesPerSecond);
    report("activity log on screen, redrawing", drawing, refreshes, refreshesPerSecond);
    return 0;
}
