// A live connection to the in-process virtual bus at 1,000,000 baud, polled every 10 ms,
// with the whole window up (offscreen). The servo turns in wheel mode, so its position,
// speed and load change from reply to reply. Prints how many ticks were answered, what
// one reply costs the program from its arrival until every control and register cell
// shows it, and what the process used. With "log" after the seconds, the activity log is
// on screen with its polls showing.
//
//   bench_live_polling [seconds] [log]
#include "app/mainwindow.h"
#include "device/uiregisterhelper.h"
#include "link/uischeduler.h"
#include "settings/settingsdialog.h"
#include "simulator/replyqueue.h"
#include "simulator/servoregisters.h"
#include "simulator/virtualbus.h"
#include "simulator/virtualbusportprovider.h"
#include "simulator/virtualservo.h"
#include "views/registerview.h"
#include "widgets/iunitdatafield.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDockWidget>
#include <QElapsedTimer>
#include <QPushButton>
#include <QSpinBox>
#include <QStatusBar>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTimer>
#include <QToolBar>
#include <algorithm>
#include <cstdio>
#include <sys/resource.h>
#include <vector>

namespace {

// Standing in wheel mode on the standard bus.
constexpr int servoId = 1;
// 1.5 rad/s, below the servo's speed limit.
constexpr int targetVelocity = 1500;
constexpr int baudRate = 1000000;
constexpr int pollingIntervalMs = 10;
constexpr int defaultSeconds = 30;

// Times every event the program handles; an event during which a reply reached the
// register view is the handling of that reply, from its bytes arriving to the last cell.
class TimedApplication : public QApplication
{
public:
    using QApplication::QApplication;

    bool notify(QObject *receiver, QEvent *event) override
    {
        const bool tick = event->type() == QEvent::Timer && qobject_cast<UiScheduler *>(receiver);
        // The count starts on a tick, so that no reply to a request sent before it is counted.
        if (tick && armed)
            measuring = true;
        if (!measuring)
            return QApplication::notify(receiver, event);
        if (tick)
            ++ticks;
        const bool outer = depth++ == 0;
        if (outer)
            replyHandled = false;
        const qint64 wireNanoseconds = outer ? busSleep(receiver, event) : 0;
        QElapsedTimer clock;
        clock.start();
        const bool result = QApplication::notify(receiver, event);
        const qint64 elapsed = clock.nsecsElapsed();
        --depth;
        if (outer && replyHandled)
            replyNanoseconds.push_back(std::max<qint64>(0, elapsed - wireNanoseconds));
        return result;
    }

    // The in-process bus sleeps out the last stretch of a reply's wire time in the event
    // that then hands the reply over; that stretch is the wire's, not the program's. A
    // sleep that overshoots still counts against the program.
    static qint64 busSleep(QObject *receiver, QEvent *event)
    {
        if (event->type() != QEvent::Timer)
            return 0;
        const auto *queue = qobject_cast<ReplyQueue *>(receiver->parent());
        return queue ? std::max<qint64>(0, queue->nanosecondsToNext()) : 0;
    }

    bool armed = false;
    bool measuring = false;
    bool replyHandled = false;
    int depth = 0;
    long ticks = 0;
    std::vector<qint64> replyNanoseconds;
};

// Sits between the poll binder and the model number box, the first field of a reply, to
// tell the bench that a reply is being handed out; the box still gets every call.
class ReplyMarker : public QObject, public IUnitDataField
{
public:
    ReplyMarker(IUnitDataField *box, bool &seen)
        : box(box)
        , seen(seen)
    {}

    QString objectName() const override { return box->objectName(); }
    void setLocked(bool lock) override { box->setLocked(lock); }
    int32_t fieldId() const override { return box->fieldId(); }
    void setValue(int raw) override
    {
        seen = true;
        box->setValue(raw);
    }
    int value() override { return box->value(); }
    void setObjectName(const QString &name) override { box->setObjectName(name); }
    void applyDependency() override { box->applyDependency(); }

private:
    IUnitDataField *box;
    bool &seen;
};

void startTurning(VirtualBus &bus)
{
    for (const auto &servo : bus.servos()) {
        if (servo->id() == servoId) {
            servo->setValue(ServoRegister::ControlEnable, 1, 1);
            servo->setValue(ServoRegister::TargetVelocity, 2, targetVelocity);
        }
    }
}

double processorSeconds()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return double(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
           double(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

long peakResidentKilobytes()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

double percentileMicroseconds(std::vector<qint64> values, double fraction)
{
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    const size_t index = std::min(values.size() - 1, size_t(fraction * double(values.size())));
    return double(values[index]) / 1000.0;
}

} // namespace

int main(int argc, char *argv[])
{
    // Offscreen, and with settings of its own, so a user's settings stay untouched.
    QTemporaryDir home;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("XDG_CONFIG_HOME", home.path().toLocal8Bit());
    Q_INIT_RESOURCE(resources);

    TimedApplication application(argc, argv);
    const int seconds = argc > 1 ? std::max(1, atoi(argv[1])) : defaultSeconds;
    const bool logShown = argc > 2 && QByteArray(argv[2]) == "log";
    startTurning(*VirtualBusPortProvider::installProcessBus());

    MainWindow window;
    window.show();
    SettingsDialog *settings = SettingsDialog::instance();
    settings->findChild<QComboBox *>("serialPortInfoListBox")
        ->setCurrentText(VirtualBusPortProvider::PortName);
    settings->findChild<QComboBox *>("baudRateBox")->setCurrentText(QString::number(baudRate));
    settings->findChild<QPushButton *>("okButton")->click();
    auto *toolBar = window.findChild<QToolBar *>();
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

    auto *modelNumber =
        dynamic_cast<IUnitDataField *>(window.findChild<QObject *>("modelNumberLineEdit"));
    ReplyMarker marker(modelNumber, application.replyHandled);
    UiRegisterHelper::instance()->registerWidget(modelNumber->objectName(), &marker);
    // Both tabs are painted in turn, as a user flicking between them would have them.
    auto *tabs = window.findChild<QTabWidget *>("tabWidget");
    QTimer flick;
    QObject::connect(&flick, &QTimer::timeout,
                     [tabs] { tabs->setCurrentIndex(1 - tabs->currentIndex()); });
    flick.start(1000);
    if (logShown)
        window.findChild<QDockWidget *>("activityDock")->show();

    const double processorBefore = processorSeconds();
    QElapsedTimer wall;
    wall.start();
    application.armed = true;
    QTimer::singleShot(seconds * 1000, &application, &QCoreApplication::quit);
    application.exec();
    application.armed = application.measuring = false;
    const double wallSeconds = double(wall.nsecsElapsed()) / 1e9;
    const double processor = processorSeconds() - processorBefore;

    const auto replies = long(application.replyNanoseconds.size());
    std::printf("run: %.1f s at %d baud, polling every %d ms, servo %d turning, activity log %s\n",
                wallSeconds, baudRate, pollingIntervalMs, servoId, logShown ? "shown" : "hidden");
    std::printf("ticks: %ld\n", application.ticks);
    std::printf("replies completed: %ld (%.2f %% of ticks)\n", replies,
                application.ticks ? 100.0 * double(replies) / double(application.ticks) : 0.0);
    std::printf("processing per reply: median %.0f us, p99 %.0f us, max %.0f us\n",
                percentileMicroseconds(application.replyNanoseconds, 0.5),
                percentileMicroseconds(application.replyNanoseconds, 0.99),
                percentileMicroseconds(application.replyNanoseconds, 1.0));
    std::printf("cpu: %.1f %% of one core\n", 100.0 * processor / wallSeconds);
    std::printf("peak rss: %.1f MB\n", double(peakResidentKilobytes()) / 1024.0);
    return 0;
}
