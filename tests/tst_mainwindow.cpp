#include "app/mainwindow.h"
#include "settings/settingsdialog.h"
#include "views/editview.h"
#include "views/registerview.h"

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QScreen>
#include <QSettings>
#include <QSpinBox>
#include <QStatusBar>
#include <QTabWidget>
#include <QToolBar>
#include <QtTest>

namespace {
QSettings rawStore()
{
    return QSettings(QStringLiteral("Ostravel"), QStringLiteral("Zelvar Servo Manager"));
}

QVariant stored(const QString &key)
{
    return rawStore().value("main window settings/" + key);
}

// The tool bar and the edit view both have an idLabel and an idSpinBox: a child outside
// the tabs is the window's own and comes first.
template<typename T>
T *child(const MainWindow &window, const QString &name)
{
    const QList<T *> found = window.findChildren<T *>(name);
    if (found.isEmpty())
        qFatal("no child %s", qPrintable(name));
    const auto *tabs = window.findChild<QWidget *>(QStringLiteral("tabWidget"));
    for (T *candidate : found) {
        const auto *widget = qobject_cast<QWidget *>(candidate);
        if (!widget || !tabs->isAncestorOf(widget))
            return candidate;
    }
    return found.first();
}

// A menu's title and actions, or a tool bar's actions and widgets, by object name.
QString names(QWidget *holder)
{
    const auto *toolBar = qobject_cast<QToolBar *>(holder);
    const auto *menu = qobject_cast<QMenu *>(holder);
    QStringList result{(menu ? menu->title() : QString()) + ':'};
    for (QAction *action : holder->actions()) {
        const QWidget *widget = toolBar ? toolBar->widgetForAction(action) : nullptr;
        const bool bound =
            qobject_cast<const QSpinBox *>(widget) || qobject_cast<const QLabel *>(widget);
        result << (action->isSeparator() ? "|"
                   : bound               ? widget->objectName()
                                         : action->objectName());
    }
    return result.join(' ');
}
} // namespace

class TestMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // The store is cleared: only in the settings folder that CTest gives this test.
        if (!qEnvironmentVariable("XDG_CONFIG_HOME").contains(QLatin1String("/tests/home/")))
            QSKIP("Run it through ctest, which gives it a settings folder of its own.");
        Q_INIT_RESOURCE(resources);
    }
    void init() { rawStore().clear(); }

    void layout();
    void actions_data();
    void actions();
    void toolBarSpinBoxes_data();
    void toolBarSpinBoxes();
    void geometryFitsScreenAndPersistsOnClose();
    void quitAndSettingsActions();
};

void TestMainWindow::layout()
{
    MainWindow window;
    QCOMPARE(window.windowTitle(), QStringLiteral("Zelvar Servo Manager"));
    QVERIFY(!window.windowIcon().isNull());
    QCOMPARE(child<QStatusBar>(window, "statusBar")->currentMessage(),
             QStringLiteral("Disconnected"));

    QCOMPARE(names(child<QMenu>(window, "menuConnections")),
             QStringLiteral("Connections: actionConnect actionDisconnect actionQuit"));
    QCOMPARE(names(child<QMenu>(window, "menuHelp")), QStringLiteral("Help: actionAbout"));
    auto *toolBar = child<QToolBar>(window, "toolBar");
    QCOMPARE(window.toolBarArea(toolBar), Qt::TopToolBarArea);
    QCOMPARE(names(toolBar),
             QStringLiteral(
                 ": actionConnect actionDisconnect actionSettings actionSearch actionReboot "
                 "actionReset | pollingIntervalLabel pollingIntervalSpinBox | idLabel idSpinBox"));
    QCOMPARE(child<QLabel>(window, "pollingIntervalLabel")->text(),
             QStringLiteral("Polling interval (ms): "));
    QCOMPARE(child<QLabel>(window, "idLabel")->text(), QStringLiteral("Servo address: "));

    const auto *tabs = child<QTabWidget>(window, "tabWidget");
    QCOMPARE(tabs->count(), 2);
    QCOMPARE(tabs->currentIndex(), 0);
    QCOMPARE(tabs->tabText(0) + '/' + tabs->tabText(1),
             QStringLiteral("Unit fields/Register fields"));
    QVERIFY(tabs->widget(0)->isAncestorOf(child<EditView>(window, "editView")));
    QVERIFY(tabs->widget(1)->isAncestorOf(child<RegisterView>(window, "registerView")));
}

void TestMainWindow::actions_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("toolTip");
    QTest::addColumn<QString>("shortcut");
    QTest::addColumn<bool>("hasIcon");
    QTest::addColumn<bool>("enabled");

    // An action without a tool tip of its own shows its text without the mnemonic.
    // clang-format off
    QTest::newRow("actionConnect") << "C&onnect" << "Connect" << "Ctrl+O" << true << true;
    QTest::newRow("actionDisconnect") << "Disconnect" << "Disconnect" << "Ctrl+D" << true << false;
    QTest::newRow("actionSettings") << "Settings" << "Settings" << "" << true << true;
    QTest::newRow("actionQuit") << "&Quit" << "Quit" << "Ctrl+C" << true << true;
    QTest::newRow("actionAbout") << "About" << "About" << "" << false << true;
    QTest::newRow("actionSearch") << "Search" << "Search" << "Shift+S" << true << true;
    QTest::newRow("actionReboot") << "&Reboot" << "Reboot" << "Ctrl+R" << true << true;
    QTest::newRow("actionReset") << "Reset" << "&Factory reset" << "Ctrl+F" << true << true;
    // clang-format on
}

void TestMainWindow::actions()
{
    QFETCH(QString, text);
    QFETCH(QString, toolTip);
    QFETCH(QString, shortcut);
    QFETCH(bool, hasIcon);
    QFETCH(bool, enabled);

    MainWindow window;
    const QAction *action = child<QAction>(window, QTest::currentDataTag());
    QCOMPARE(action->text(), text);
    QCOMPARE(action->toolTip(), toolTip);
    QCOMPARE(action->shortcut(), QKeySequence(shortcut));
    QCOMPARE(!action->icon().pixmap(32, 32).isNull(), hasIcon);
    QCOMPARE(action->isEnabled(), enabled);
}

void TestMainWindow::toolBarSpinBoxes_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("initial");
    QTest::addColumn<int>("minimum");
    QTest::addColumn<int>("maximum");
    QTest::addColumn<int>("step");
    QTest::addColumn<int>("restored");

    QTest::newRow("pollingIntervalSpinBox") << "pollingInterval" << 500 << 10 << 5000 << 10 << 1230;
    QTest::newRow("idSpinBox") << "servoId" << 0 << 0 << 253 << 1 << 253;
}

void TestMainWindow::toolBarSpinBoxes()
{
    QFETCH(QString, key);
    QFETCH(int, initial);
    QFETCH(int, minimum);
    QFETCH(int, maximum);
    QFETCH(int, step);
    QFETCH(int, restored);

    {
        MainWindow window;
        auto *spinBox = child<QSpinBox>(window, QTest::currentDataTag());
        QCOMPARE(spinBox->value(), initial);
        QCOMPARE(spinBox->singleStep(), step);
        // Restoring the defaults writes nothing.
        QVERIFY(rawStore().allKeys().isEmpty());
        // Every change is stored at once, clamped to the range.
        spinBox->setValue(maximum + 1);
        QCOMPARE(stored(key).toInt(), maximum);
        spinBox->setValue(minimum - 1);
        QCOMPARE(stored(key).toInt(), minimum);
    }
    rawStore().clear();
    rawStore().setValue("main window settings/" + key, restored);
    MainWindow window;
    QCOMPARE(child<QSpinBox>(window, QTest::currentDataTag())->value(), restored);
    QCOMPARE(rawStore().allKeys(), QStringList{"main window settings/" + key});
}

void TestMainWindow::geometryFitsScreenAndPersistsOnClose()
{
    {
        MainWindow window;
        const QSize available = QGuiApplication::primaryScreen()->availableGeometry().size();
        QCOMPARE(window.size(), QSize(1192, 1428).boundedTo(available));
        window.show();
        window.resize(640, 480);
        QVERIFY(window.close());
    }
    QVERIFY(!stored(QStringLiteral("geometry")).toByteArray().isEmpty());
    QVERIFY(!stored(QStringLiteral("windowState")).toByteArray().isEmpty());
    QCOMPARE(MainWindow().size(), QSize(640, 480));
}

void TestMainWindow::quitAndSettingsActions()
{
    MainWindow window;
    window.show();
    SettingsDialog *dialog = SettingsDialog::instance();
    QVERIFY(dialog && !dialog->isVisible());
    child<QAction>(window, "actionSettings")->trigger();
    QVERIFY(dialog->isVisible());
    QVERIFY(dialog->isModal());
    dialog->hide();
    child<QAction>(window, "actionQuit")->trigger();
    QVERIFY(!window.isVisible());
}

QTEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
