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

class TestMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void startsDisconnected();
    void actions_data();
    void actions();
    void menusAndToolBar();
    void tabsHoldTheViews();
    void toolBarSpinBoxes_data();
    void toolBarSpinBoxes();
    void emptyStoreRestoresDefaultsAndWritesNothing();
    void storedValuesAreRestored();
    void spinBoxChangePersistsAtOnce_data();
    void spinBoxChangePersistsAtOnce();
    void updateIdMovesAndPersistsServoAddress();
    void firstStartFitsIntoScreen();
    void closingPersistsGeometry();
    void quitClosesWindow();
    void settingsActionShowsDialog();

private:
    static QVariant stored(const QString &key);
};

namespace {
const QString group = QStringLiteral("main window settings");

bool isInside(const QObject *object, const QObject *ancestor)
{
    for (; object; object = object->parent()) {
        if (object == ancestor)
            return true;
    }
    return false;
}

// The tool bar and the edit view both have an idLabel and an idSpinBox: a child outside
// the tabs is the window's own and comes first.
template<typename T>
T *child(const MainWindow &window, const char *name)
{
    const QList<T *> found = window.findChildren<T *>(QLatin1String(name));
    if (found.isEmpty())
        qFatal("no child %s", name);
    const QObject *tabs = window.findChild<QObject *>(QStringLiteral("tabWidget"));
    for (T *candidate : found) {
        if (!isInside(candidate, tabs))
            return candidate;
    }
    return found.first();
}
} // namespace

QVariant TestMainWindow::stored(const QString &key)
{
    QSettings store(QStringLiteral("Ostravel"), QStringLiteral("Zelvar Servo Manager"));
    store.beginGroup(group);
    return store.value(key);
}

void TestMainWindow::initTestCase()
{
    Q_INIT_RESOURCE(resources);
}

void TestMainWindow::init()
{
    QSettings store(QStringLiteral("Ostravel"), QStringLiteral("Zelvar Servo Manager"));
    store.clear();
}

void TestMainWindow::startsDisconnected()
{
    MainWindow window;
    QCOMPARE(window.objectName(), QStringLiteral("MainWindow"));
    QCOMPARE(window.windowTitle(), QStringLiteral("Zelvar Servo Manager"));
    QVERIFY(!window.windowIcon().isNull());
    QCOMPARE(child<QStatusBar>(window, "statusBar")->currentMessage(),
             QStringLiteral("Disconnected"));
}

void TestMainWindow::actions_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("toolTip");
    QTest::addColumn<QString>("shortcut");
    QTest::addColumn<bool>("hasIcon");
    QTest::addColumn<bool>("enabled");

    // An action without a tool tip of its own shows its text without the mnemonic.
    QTest::newRow("actionConnect") << "C&onnect"
                                   << "Connect"
                                   << "Ctrl+O" << true << true;
    QTest::newRow("actionDisconnect") << "Disconnect"
                                      << "Disconnect"
                                      << "Ctrl+D" << true << false;
    QTest::newRow("actionSettings") << "Settings"
                                    << "Settings"
                                    << "" << true << true;
    QTest::newRow("actionQuit") << "&Quit"
                                << "Quit"
                                << "Ctrl+C" << true << true;
    QTest::newRow("actionAbout") << "About"
                                 << "About"
                                 << "" << false << true;
    QTest::newRow("actionSearch") << "Search"
                                  << "Search"
                                  << "Shift+S" << true << true;
    QTest::newRow("actionReboot") << "&Reboot"
                                  << "Reboot"
                                  << "Ctrl+R" << true << true;
    QTest::newRow("actionReset") << "Reset"
                                 << "&Factory reset"
                                 << "Ctrl+F" << true << true;
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
    QCOMPARE(action->icon().isNull(), !hasIcon);
    if (hasIcon)
        QVERIFY(!action->icon().pixmap(32, 32).isNull());
    QCOMPARE(action->isEnabled(), enabled);
}

void TestMainWindow::menusAndToolBar()
{
    MainWindow window;
    const auto names = [](const QList<QAction *> &actions) {
        QStringList result;
        for (const QAction *action : actions)
            result << (action->isSeparator() ? QStringLiteral("|") : action->objectName());
        return result;
    };

    const auto *connections = child<QMenu>(window, "menuConnections");
    QCOMPARE(connections->title(), QStringLiteral("Connections"));
    QCOMPARE(names(connections->actions()),
             (QStringList{"actionConnect", "actionDisconnect", "actionQuit"}));
    const auto *help = child<QMenu>(window, "menuHelp");
    QCOMPARE(help->title(), QStringLiteral("Help"));
    QCOMPARE(names(help->actions()), QStringList{"actionAbout"});

    auto *toolBar = child<QToolBar>(window, "toolBar");
    QCOMPARE(window.toolBarArea(toolBar), Qt::TopToolBarArea);
    QStringList widgets;
    for (QAction *action : toolBar->actions()) {
        QWidget *widget = toolBar->widgetForAction(action);
        widgets << (qobject_cast<QSpinBox *>(widget) || qobject_cast<QLabel *>(widget)
                        ? widget->objectName()
                        : names({action}).first());
    }
    QCOMPARE(widgets,
             (QStringList{"actionConnect", "actionDisconnect", "actionSettings", "actionSearch",
                          "actionReboot", "actionReset", "|", "pollingIntervalLabel",
                          "pollingIntervalSpinBox", "|", "idLabel", "idSpinBox"}));
    QCOMPARE(child<QLabel>(window, "pollingIntervalLabel")->text(),
             QStringLiteral("Polling interval (ms): "));
    QCOMPARE(child<QLabel>(window, "idLabel")->text(), QStringLiteral("Servo address: "));
}

void TestMainWindow::tabsHoldTheViews()
{
    MainWindow window;
    const auto *tabs = child<QTabWidget>(window, "tabWidget");
    QCOMPARE(tabs->count(), 2);
    QCOMPARE(tabs->currentIndex(), 0);
    QVERIFY(tabs->autoFillBackground());
    QCOMPARE(tabs->tabText(0), QStringLiteral("Unit fields"));
    QCOMPARE(tabs->tabText(1), QStringLiteral("Register fields"));
    QVERIFY(tabs->widget(0)->isAncestorOf(child<EditView>(window, "editView")));
    QVERIFY(tabs->widget(1)->isAncestorOf(child<RegisterView>(window, "registerView")));
}

void TestMainWindow::toolBarSpinBoxes_data()
{
    QTest::addColumn<int>("minimum");
    QTest::addColumn<int>("maximum");
    QTest::addColumn<int>("step");

    QTest::newRow("pollingIntervalSpinBox") << 10 << 5000 << 10;
    QTest::newRow("idSpinBox") << 0 << 253 << 1;
}

void TestMainWindow::toolBarSpinBoxes()
{
    QFETCH(int, minimum);
    QFETCH(int, maximum);
    QFETCH(int, step);

    MainWindow window;
    auto *spinBox = child<QSpinBox>(window, QTest::currentDataTag());
    QCOMPARE(spinBox->minimum(), minimum);
    QCOMPARE(spinBox->maximum(), maximum);
    QCOMPARE(spinBox->singleStep(), step);
    QVERIFY(spinBox->isEnabled());

    spinBox->setValue(maximum + 1);
    QCOMPARE(spinBox->value(), maximum);
    spinBox->setValue(minimum - 1);
    QCOMPARE(spinBox->value(), minimum);
}

void TestMainWindow::emptyStoreRestoresDefaultsAndWritesNothing()
{
    MainWindow window;
    QCOMPARE(child<QSpinBox>(window, "pollingIntervalSpinBox")->value(), 500);
    QCOMPARE(child<QSpinBox>(window, "idSpinBox")->value(), 0);

    QSettings store(QStringLiteral("Ostravel"), QStringLiteral("Zelvar Servo Manager"));
    QVERIFY(store.allKeys().isEmpty());
}

void TestMainWindow::storedValuesAreRestored()
{
    {
        QSettings store(QStringLiteral("Ostravel"), QStringLiteral("Zelvar Servo Manager"));
        store.beginGroup(group);
        store.setValue(QStringLiteral("pollingInterval"), 1230);
        store.setValue(QStringLiteral("servoId"), 253);
    }
    MainWindow window;
    QCOMPARE(child<QSpinBox>(window, "pollingIntervalSpinBox")->value(), 1230);
    QCOMPARE(child<QSpinBox>(window, "idSpinBox")->value(), 253);
}

void TestMainWindow::spinBoxChangePersistsAtOnce_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("value");

    QTest::newRow("pollingIntervalSpinBox") << "pollingInterval" << 20;
    QTest::newRow("idSpinBox") << "servoId" << 17;
}

void TestMainWindow::spinBoxChangePersistsAtOnce()
{
    QFETCH(QString, key);
    QFETCH(int, value);

    MainWindow window;
    child<QSpinBox>(window, QTest::currentDataTag())->setValue(value);
    QCOMPARE(stored(key).toInt(), value);
}

void TestMainWindow::updateIdMovesAndPersistsServoAddress()
{
    MainWindow window;
    QVERIFY(QMetaObject::invokeMethod(&window, "on_updateId", Q_ARG(int, 42)));
    QCOMPARE(child<QSpinBox>(window, "idSpinBox")->value(), 42);
    QCOMPARE(stored(QStringLiteral("servoId")).toInt(), 42);
}

void TestMainWindow::firstStartFitsIntoScreen()
{
    MainWindow window;
    const QSize available = QGuiApplication::primaryScreen()->availableGeometry().size();
    QVERIFY(available.width() < 1192 || available.height() < 1428);
    QCOMPARE(window.size(), QSize(1192, 1428).boundedTo(available));
}

void TestMainWindow::closingPersistsGeometry()
{
    {
        MainWindow window;
        window.show();
        window.resize(640, 480);
        QVERIFY(window.close());
    }
    QVERIFY(!stored(QStringLiteral("geometry")).toByteArray().isEmpty());
    QVERIFY(!stored(QStringLiteral("windowState")).toByteArray().isEmpty());

    MainWindow restored;
    QCOMPARE(restored.size(), QSize(640, 480));
}

void TestMainWindow::quitClosesWindow()
{
    MainWindow window;
    window.show();
    child<QAction>(window, "actionQuit")->trigger();
    QVERIFY(!window.isVisible());
}

void TestMainWindow::settingsActionShowsDialog()
{
    MainWindow window;
    SettingsDialog *dialog = SettingsDialog::instance();
    QVERIFY(dialog);
    QVERIFY(!dialog->isVisible());
    child<QAction>(window, "actionSettings")->trigger();
    QVERIFY(dialog->isVisible());
    QVERIFY(dialog->isModal());
}

QTEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
