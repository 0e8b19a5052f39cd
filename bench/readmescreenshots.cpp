// Makes the README's pictures from the real windows: the program connected to servo 1 on
// the Virtual bus with each tab in front, the "Plot" dock with that wheel servo turning,
// the settings dialog, and the search dialog after a scan. Run it under a real X server,
// from the repository's root (scripts/screenshots does both); with a language, e.g. de, to
// see whether translated texts fit, which also draws the "Activity" log and the axes dialog:
//
//   xvfb-run -a -s "-screen 0 1600x1200x24" build/test/bench/bench_readmescreenshots [DIR [LANG]]
//
// The user's own settings stay untouched: the program runs with a settings folder of its own.

#include "app/mainwindow.h"
#include "plot/axisrangedialog.h"
#include "plot/plotdock.h"
#include "search/searchdialog.h"
#include "settings/settingsdialog.h"
#include "simulator/servoregisters.h"
#include "simulator/virtualbus.h"
#include "simulator/virtualbusportprovider.h"
#include "simulator/virtualservo.h"
#include "translations/translationinstaller.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QCursor>
#include <QDir>
#include <QDockWidget>
#include <QElapsedTimer>
#include <QImage>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QScreen>
#include <QSettings>
#include <QSpinBox>
#include <QStatusBar>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTreeWidget>

#include <cstdio>
#include <functional>

namespace {

bool waitFor(const std::function<bool()> &done, int timeoutMs)
{
    QElapsedTimer clock;
    clock.start();
    while (!done()) {
        if (clock.elapsed() > timeoutMs)
            return false;
        QApplication::processEvents(QEventLoop::AllEvents, 20);
    }
    return true;
}

// Lets a few polls land, so the picture shows live values rather than the first ones.
void settle(int ms)
{
    QElapsedTimer clock;
    clock.start();
    waitFor([&clock, ms] { return clock.elapsed() >= ms; }, ms + 1000);
}

bool save(QWidget *widget, const QString &path)
{
    // A window has far fewer than 256 colours; so few keep the README's pictures small.
    const QImage picture = widget->grab().toImage().convertToFormat(
        QImage::Format_Indexed8, Qt::ThresholdDither | Qt::AvoidDither);
    if (!picture.save(path)) {
        std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
        return false;
    }
    std::printf("%s  %dx%d\n", qPrintable(path), picture.width(), picture.height());
    return true;
}

template<typename T>
T *child(QObject *parent, const char *name)
{
    T *found = parent->findChild<T *>(QLatin1String(name));
    if (!found)
        qFatal("no child %s", name);
    return found;
}

} // namespace

int main(int argc, char *argv[])
{
    QTemporaryDir home;
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(home.path()));
    Q_INIT_RESOURCE(resources);
    QApplication application(argc, argv);
    if (QGuiApplication::platformName() != QLatin1String("xcb")) {
        std::fprintf(stderr, "Run me on an X server, e.g. under xvfb-run; the pictures are "
                             "of real windows.\n");
        return 2;
    }
    const QString folder = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("docs");
    if (argc > 2 && !TranslationInstaller::install(QLocale(QString::fromLocal8Bit(argv[2])))) {
        std::fprintf(stderr, "no translation for %s\n", argv[2]);
        return 2;
    }
    if (!QDir().mkpath(folder)) {
        std::fprintf(stderr, "cannot create %s\n", qPrintable(folder));
        return 1;
    }

    // Servo 1, in wheel mode at 1,000,000 baud, polled every 20 ms: often enough for a
    // smooth plot.
    QSettings store(QStringLiteral("Ostravel"), QStringLiteral("Zelvar Servo Manager"));
    store.setValue(QStringLiteral("port settings/serialPortName"),
                   VirtualBusPortProvider::PortName);
    store.setValue(QStringLiteral("port settings/baudRate"), 1000000);
    store.setValue(QStringLiteral("main window settings/servoId"), 1);
    store.setValue(QStringLiteral("main window settings/pollingInterval"), 20);
    store.sync();

    // Turning at 1.5 rad/s, so that the live values and the plot move.
    std::shared_ptr<VirtualServo> wheel;
    for (const auto &servo : VirtualBusPortProvider::installProcessBus()->servos()) {
        if (servo->id() == 1)
            wheel = servo;
    }
    if (!wheel) {
        std::fprintf(stderr, "the Virtual bus has no servo 1\n");
        return 1;
    }
    wheel->setValue(ServoRegister::ControlEnable, 1, 1);
    wheel->setValue(ServoRegister::TargetVelocity, 2, 1500);
    MainWindow window;
    window.resize(1280, 900);
    window.show();
    child<QAction>(&window, "actionConnect")->trigger();
    // Told by its first values rather than by the status text, which may be translated.
    const auto *voltage = child<QLineEdit>(&window, "actualVoltageLineEdit");
    if (!waitFor([voltage] { return !voltage->text().isEmpty(); }, 5000)) {
        std::fprintf(stderr, "the program did not connect to servo 1 on the Virtual bus: %s\n",
                     qPrintable(window.statusBar()->currentMessage()));
        return 1;
    }
    settle(1500);

    auto *tabs = child<QTabWidget>(&window, "tabWidget");
    bool saved = true;
    tabs->setCurrentIndex(0);
    settle(300);
    saved &= save(&window, folder + "/screenshot-unit-fields.png");
    tabs->setCurrentIndex(1);
    settle(300);
    saved &= save(&window, folder + "/screenshot-register-fields.png");

    // Ten seconds of the wheel, sped up halfway; the pointer is kept off the plot, whose
    // cursor would follow it.
    tabs->setCurrentIndex(0);
    QCursor::setPos(window.geometry().bottomRight() + QPoint(100, 100));
    window.resize(1280, 1100);
    PlotDock *plot = window.plotDock();
    plot->setSelectedChannels({"position", "velocity", "target-velocity", "current"});
    plot->setRightAxisChannels({"velocity", "target-velocity"});
    plot->show();
    settle(5000);
    wheel->setValue(ServoRegister::TargetVelocity, 2, 2000);
    settle(5500);
    saved &= save(&window, folder + "/screenshot-plot.png");
    if (argc > 2) {
        AxisRangeDialog axes(plot);
        axes.setRanges({true, 0.0, 1.0}, {false, -2.5, 2.5});
        axes.show();
        settle(300);
        saved &= save(&axes, folder + "/screenshot-axes.png");
        plot->hide();
        auto *activity = child<QDockWidget>(&window, "activityDock");
        activity->show();
        settle(1000);
        saved &= save(&window, folder + "/screenshot-activity.png");
        activity->hide();
        // A menu is a window of its own: the screen shows it beside its menu bar.
        for (const char *name : {"menuConnections", "menuView", "menuServo"}) {
            auto *menu = child<QMenu>(&window, name);
            window.menuBar()->setActiveAction(menu->menuAction());
            settle(300);
            const QString path = folder + "/screenshot-" + name + ".png";
            const QImage picture =
                QGuiApplication::primaryScreen()->grabWindow(0, 0, 0, 700, 300).toImage();
            saved &= picture.save(path);
            std::printf("%s\n", qPrintable(path));
            menu->hide();
        }
    }
    plot->hide();

    // The dialogs need the port to themselves.
    child<QAction>(&window, "actionDisconnect")->trigger();
    settle(300);
    SettingsDialog *settings = SettingsDialog::instance();
    settings->show();
    settle(300);
    saved &= save(settings, folder + "/screenshot-settings.png");
    settings->hide();
    SearchDialog *search = SearchDialog::instance();
    search->show();
    auto *ports = child<QComboBox>(search, "serialPortInfoListBox");
    ports->setCurrentText(VirtualBusPortProvider::PortName);
    child<QSpinBox>(search, "lowerSearchRangeSpinBox")->setValue(0);
    child<QSpinBox>(search, "upperSearchRangeSpinBox")->setValue(10);
    for (const char *rate : {"baudRate57600CheckBox", "baudRate1000000CheckBox"})
        child<QCheckBox>(search, rate)->setChecked(true);
    auto *scan = child<QPushButton>(search, "scanPushButton");
    scan->click();
    if (!waitFor([scan] { return scan->isEnabled(); }, 20000)) {
        std::fprintf(stderr, "the scan did not end\n");
        return 1;
    }
    child<QTreeWidget>(search, "servoTreeWidget")->expandAll();
    settle(300);
    saved &= save(search, folder + "/screenshot-search.png");
    return saved ? 0 : 1;
}
