// Makes the README's pictures from the real windows: the program connected to servo 1 on
// the Virtual bus with each tab in front, the settings dialog, and the search dialog after
// a scan. Run it under a real X server, from the repository's root (scripts/screenshots
// does both); with a language, e.g. de, to see whether translated texts fit:
//
//   xvfb-run -a -s "-screen 0 1600x1200x24" build/test/bench/bench_readmescreenshots [DIR [LANG]]
//
// The user's own settings stay untouched: the program runs with a settings folder of its own.

#include "app/mainwindow.h"
#include "search/searchdialog.h"
#include "settings/settingsdialog.h"
#include "simulator/virtualbusportprovider.h"
#include "translations/translationinstaller.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QPushButton>
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
    const QPixmap picture = widget->grab();
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

    // Servo 1, in wheel mode at 1,000,000 baud, polled every 100 ms.
    QSettings store(QStringLiteral("Ostravel"), QStringLiteral("Zelvar Servo Manager"));
    store.setValue(QStringLiteral("port settings/serialPortName"),
                   VirtualBusPortProvider::PortName);
    store.setValue(QStringLiteral("port settings/baudRate"), 1000000);
    store.setValue(QStringLiteral("main window settings/servoId"), 1);
    store.setValue(QStringLiteral("main window settings/pollingInterval"), 100);
    store.sync();

    VirtualBusPortProvider::installProcessBus();
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
