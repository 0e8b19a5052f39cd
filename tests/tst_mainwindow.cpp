#include "app/mainwindow.h"
#include "datacolumns.h"
#include "settings/settingsdialog.h"
#include "views/editview.h"
#include "views/registerview.h"

#include <QtTest>
#include <QtWidgets>

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

// What the user meets: an action's text, tool tip, shortcut, icon and state; a spin box's
// value, range and step; a label's or status bar's text; a menu's title and entries, or a
// tool bar's entries, by object name.
QString describe(QObject *object)
{
    if (const auto *action = qobject_cast<QAction *>(object))
        return QStringList{action->text(), action->toolTip(), action->shortcut().toString(),
                           action->icon().pixmap(32, 32).isNull() ? "no icon" : "icon",
                           action->isEnabled() ? "enabled" : "disabled"}
            .join(" | ");
    if (const auto *spinBox = qobject_cast<QSpinBox *>(object))
        return QString("%1 in %2..%3 by %4")
            .arg(spinBox->value())
            .arg(spinBox->minimum())
            .arg(spinBox->maximum())
            .arg(spinBox->singleStep());
    if (const auto *label = qobject_cast<QLabel *>(object))
        return label->text();
    if (const auto *statusBar = qobject_cast<QStatusBar *>(object))
        return statusBar->currentMessage();
    const auto *toolBar = qobject_cast<QToolBar *>(object);
    const auto *menu = qobject_cast<QMenu *>(object);
    QStringList result{(menu ? menu->title() : QString()) + ':'};
    for (QAction *action : qobject_cast<QWidget *>(object)->actions()) {
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

    void layout()
    {
        MainWindow window;
        QCOMPARE(window.windowTitle(), QStringLiteral("Zelvar Servo Manager"));
        QVERIFY(!window.windowIcon().isNull());
        QCOMPARE(window.toolBarArea(child<QToolBar>(window, "toolBar")), Qt::TopToolBarArea);
        const auto *tabs = child<QTabWidget>(window, "tabWidget");
        QCOMPARE(tabs->count(), 2);
        QCOMPARE(tabs->currentIndex(), 0);
        QCOMPARE(tabs->tabText(0) + '/' + tabs->tabText(1),
                 QStringLiteral("Unit fields/Register fields"));
        QVERIFY(tabs->widget(0)->isAncestorOf(child<EditView>(window, "editView")));
        QVERIFY(tabs->widget(1)->isAncestorOf(child<RegisterView>(window, "registerView")));
    }

    void freshWindow_data()
    {
        QTest::addColumn<QString>("shown");
        // An action without a tool tip of its own shows its text without the mnemonic.
        // clang-format off
        QTest::newRow("actionConnect") << "C&onnect | Connect | Ctrl+O | icon | enabled";
        QTest::newRow("actionDisconnect") << "Disconnect | Disconnect | Ctrl+D | icon | disabled";
        QTest::newRow("actionSettings") << "Settings | Settings |  | icon | enabled";
        QTest::newRow("actionQuit") << "&Quit | Quit | Ctrl+C | icon | enabled";
        QTest::newRow("actionAbout") << "About | About |  | no icon | enabled";
        QTest::newRow("actionSearch") << "Search | Search | Shift+S | icon | enabled";
        QTest::newRow("actionReboot") << "&Reboot | Reboot | Ctrl+R | icon | enabled";
        QTest::newRow("actionReset") << "Reset | &Factory reset | Ctrl+F | icon | enabled";
        QTest::newRow("pollingIntervalSpinBox") << "500 in 10..5000 by 10";
        QTest::newRow("idSpinBox") << "0 in 0..253 by 1";
        QTest::newRow("pollingIntervalLabel") << "Polling interval (ms): ";
        QTest::newRow("idLabel") << "Servo address: ";
        QTest::newRow("statusBar") << "Disconnected";
        QTest::newRow("menuConnections") << "Connections: actionConnect actionDisconnect actionQuit";
        QTest::newRow("menuHelp") << "Help: actionAbout";
        QTest::newRow("toolBar") << ": actionConnect actionDisconnect actionSettings actionSearch actionReboot actionReset | pollingIntervalLabel pollingIntervalSpinBox | idLabel idSpinBox";
        // clang-format on
    }
    void freshWindow()
    {
        MainWindow window;
        QTEST(describe(child<QObject>(window, QTest::currentDataTag())), "shown");
    }

    // Two actions on one key leave Qt unable to pick either: neither would ever fire.
    void everyShortcutIsItsActionsAlone()
    {
        MainWindow window;
        QMap<QString, QString> owners;
        for (const QAction *action : window.findChildren<QAction *>()) {
            for (const QKeySequence &key : action->shortcuts()) {
                const QString text = key.toString();
                QVERIFY2(!owners.contains(text), qPrintable(text + " is " + owners.value(text) +
                                                            " and " + action->objectName()));
                owners.insert(text, action->objectName());
            }
        }
    }

    void toolBarSpinBoxesPersist_data()
    {
        addColumns<QString, int>({"key", "restored"});
        QTest::newRow("pollingIntervalSpinBox") << "pollingInterval" << 1230;
        QTest::newRow("idSpinBox") << "servoId" << 253;
    }
    void toolBarSpinBoxesPersist()
    {
        QFETCH(QString, key);
        QFETCH(int, restored);
        {
            MainWindow window;
            auto *spinBox = child<QSpinBox>(window, QTest::currentDataTag());
            // Restoring the defaults writes nothing.
            QVERIFY(rawStore().allKeys().isEmpty());
            // Every change is stored at once, clamped to the range.
            spinBox->setValue(spinBox->maximum() + 1);
            QCOMPARE(stored(key).toInt(), spinBox->maximum());
            spinBox->setValue(spinBox->minimum() - 1);
            QCOMPARE(stored(key).toInt(), spinBox->minimum());
        }
        rawStore().clear();
        rawStore().setValue("main window settings/" + key, restored);
        MainWindow window;
        QCOMPARE(child<QSpinBox>(window, QTest::currentDataTag())->value(), restored);
        QCOMPARE(rawStore().allKeys(), QStringList{"main window settings/" + key});
    }

    void geometryFitsScreenAndPersistsOnClose()
    {
        {
            MainWindow window;
            // The whole window and a title bar above it fit the screen.
            const QRect available = QGuiApplication::primaryScreen()->availableGeometry();
            window.show();
            QVERIFY(available.contains(window.frameGeometry()));
            QVERIFY(window.frameGeometry().height() + 32 <= available.height());
            QVERIFY(window.height() > available.height() / 2);
            window.resize(640, 480);
            QVERIFY(window.close());
        }
        QVERIFY(!stored(QStringLiteral("geometry")).toByteArray().isEmpty());
        QVERIFY(!stored(QStringLiteral("windowState")).toByteArray().isEmpty());
        QCOMPARE(MainWindow().size(), QSize(640, 480));
    }

    void quitAndSettingsActions()
    {
        MainWindow window;
        window.show();
        SettingsDialog *dialog = SettingsDialog::instance();
        QVERIFY(dialog && !dialog->isVisible());
        child<QAction>(window, "actionSettings")->trigger();
        QVERIFY(dialog->isVisible());
        dialog->hide();
        child<QAction>(window, "actionQuit")->trigger();
        QVERIFY(!window.isVisible());
    }
};

QTEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
