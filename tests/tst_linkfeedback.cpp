#include "app/mainwindow.h"
#include "bridgeprocess.h"
#include "datacolumns.h"
#include "messageboxanswerer.h"
#include "monitor/linkmonitor.h"
#include "search/searchdialog.h"
#include "settings/settingsdialog.h"
#include "simulator/busfault.h"
#include "simulator/servoregisters.h"
#include "simulator/virtualbus.h"
#include "simulator/virtualbusportprovider.h"
#include "simulator/virtualservo.h"
#include "views/activitydock.h"
#include "widgets/uigrouphelper.h"
#include "windowdriver.h"

#include <QtTest>
#include <QtWidgets>
#include <memory>

namespace {

constexpr quint8 jointServoId = 3;
constexpr int baudRate = 57600;
// Every reply of this one carries the hardware alert: its voltage is outside its limits.
constexpr quint8 alarmedServoId = 10;
constexpr int pollingIntervalMs = 100;
constexpr int patienceMs = 20000;

const QColor red(0xC6, 0x28, 0x28);
const QColor simulatedPurple(0x6A, 0x1B, 0x9A);

} // namespace

// The link indicator and the activity log through the whole program, on the in-process
// virtual bus and on the bridge with faults.
class TestLinkFeedback : public QObject
{
    Q_OBJECT

    std::shared_ptr<VirtualBus> bus;
    std::unique_ptr<MainWindow> window;
    MessageBoxAnswerer answerer;
    QStringList &boxes = answerer.boxes;

    QAction *action(const char *name) const { return WindowDriver::action(*window, name); }
    QLabel *indicator() const { return window->findChild<QLabel *>("linkIndicator"); }
    ActivityDock *dock() const { return window->findChild<ActivityDock *>("activityDock"); }
    QColor indicatorColour() const
    {
        const QImage image = indicator()->grab().toImage();
        return image.pixelColor(1, image.height() / 2);
    }
    std::shared_ptr<VirtualServo> servo(quint8 id) const
    {
        for (const auto &servo : bus->servos()) {
            if (servo->id() == id)
                return servo;
        }
        return nullptr;
    }

    void choosePort(const QString &portName, quint8 servoId)
    {
        WindowDriver::choosePort(*window, portName, baudRate, servoId);
    }

    void connectToServo(bool answers = true)
    {
        if (answers)
            QVERIFY2(WindowDriver::connectWithOneRetry(*window), qPrintable(indicator()->text()));
        else
            action("actionConnect")->trigger();
    }

private slots:
    void initTestCase()
    {
        bus = VirtualBusPortProvider::installProcessBus();
        bus->addServo(alarmedServoId, baudRate)->setValue(ServoRegister::MinVoltageLimit, 1, 200);
        window = std::make_unique<MainWindow>();
        window->show();
        window->findChild<QToolBar *>()
            ->findChild<QSpinBox *>("pollingIntervalSpinBox")
            ->setValue(pollingIntervalMs);
    }

    void cleanupTestCase() { window.reset(); }

    void cleanup()
    {
        bus->clearFaults();
        servo(jointServoId)->setValue(ServoRegister::ControlEnable, 1, 0);
        if (action("actionDisconnect")->isEnabled())
            action("actionDisconnect")->trigger();
        QTest::qWait(150);
        boxes.clear();
    }

    void indicatorSaysWhatTheLinkDoes_data()
    {
        addColumns<QString, QStringList, int, QString, QString, QColor>(
            {"cause", "bridgeFaults", "servoId", "port", "text", "colour"});
        const QString virtualBus = VirtualBusPortProvider::PortName;
        const QString bridge =
            QStringLiteral("feedback-%1").arg(QCoreApplication::applicationPid());
        // clang-format off
        QTest::newRow("answering") << "" << QStringList() << int(jointServoId) << virtualBus
            << "Simulated servos · Virtual bus · 57,600 baud · servo 3 · " << simulatedPurple;
        QTest::newRow("absent id") << "" << QStringList() << 42 << virtualBus
            << "Simulated servos: No answer from servo 42 at 57,600 baud on Virtual bus. Check the servo address and baud rate, or search the bus." << red;
        QTest::newRow("stopped answering") << "drop" << QStringList() << int(jointServoId) << virtualBus
            << "Simulated servos: Servo 3 stopped answering (last reply " << red;
        QTest::newRow("write refused, motor on") << "refused write" << QStringList() << int(jointServoId) << virtualBus
            << "Simulated servos: Servo 3 refused the write: access error: the motor is enabled" << red;
        QTest::newRow("hardware alert") << "" << QStringList() << int(alarmedServoId) << virtualBus
            << "Simulated servos: Servo 10 reports a hardware alert" << red;
        QTest::newRow("bridge, all dropped") << "" << QStringList{"--fault", "3:drop:100%"} << int(jointServoId) << bridge
            << "Simulated servos: No answer from servo 3 at 57,600 baud on " + bridge + "." << red;
        QTest::newRow("bridge, all corrupt") << "" << QStringList{"--fault", "3:corrupt:100%"} << int(jointServoId) << bridge
            << "Simulated servos: No answer from servo 3 at 57,600 baud on " + bridge + "." << red;
        QTest::newRow("bridge killed") << "kill" << QStringList() << int(jointServoId) << bridge
            << "Simulated servos: Link lost: " << red;
        // clang-format on
    }
    void indicatorSaysWhatTheLinkDoes()
    {
        QFETCH(QString, cause);
        QFETCH(QStringList, bridgeFaults);
        QFETCH(int, servoId);
        QFETCH(QString, port);
        QFETCH(QString, text);
        QFETCH(QColor, colour);

        std::unique_ptr<BridgeProcess> bridge;
        if (port != VirtualBusPortProvider::PortName) {
            bridge = std::make_unique<BridgeProcess>(ZELVAR_VIRTUAL_BUS_PATH, port, bridgeFaults);
            QVERIFY(bridge->started);
        }
        choosePort(port, quint8(servoId));
        const bool answers = bridgeFaults.isEmpty() && servoId != 42;
        connectToServo(answers);

        if (cause == "drop") {
            bus->setFaultProbability(jointServoId, BusFault::Drop, 1.0);
        } else if (cause == "refused write") {
            servo(jointServoId)->setValue(ServoRegister::ControlEnable, 1, 1);
            // The temperature limit, written as the non-volatile group would write it.
            emit UiGroupHelper::instance()->addQueueRequest(ServoRegister::TemperatureLimit,
                                                            QByteArray(1, char(70)));
        } else if (cause == "kill") {
            bridge->kill();
        }

        QTRY_VERIFY2_WITH_TIMEOUT(indicator()->text().startsWith(text),
                                  qPrintable(indicator()->text()), patienceMs);
        QCOMPARE(indicatorColour(), colour);
        // The window's own states stay as they were.
        QCOMPARE(window->statusBar()->currentMessage(),
                 answers ? QStringLiteral("Connected") : QStringLiteral("Disconnected"));
        QVERIFY(action("actionDisconnect")->isEnabled());
        QVERIFY(boxes.isEmpty());
    }

    // Polls, a refused write and their bytes, in a log opened from the indicator.
    void activityLogShowsTheTraffic()
    {
        QVERIFY(!dock()->isVisible());
        choosePort(VirtualBusPortProvider::PortName, jointServoId);
        connectToServo();
        servo(jointServoId)->setValue(ServoRegister::ControlEnable, 1, 1);
        emit UiGroupHelper::instance()->addQueueRequest(ServoRegister::TemperatureLimit,
                                                        QByteArray(1, char(70)));
        QTRY_VERIFY_WITH_TIMEOUT(indicator()->text().contains("refused"), patienceMs);

        QTest::mouseClick(indicator(), Qt::LeftButton);
        QVERIFY(dock()->isVisible());
        QCOMPARE(dock()->windowTitle(), QStringLiteral("Activity"));
        auto *table = dock()->findChild<QTableView *>("activityTableView");
        QTRY_VERIFY_WITH_TIMEOUT(table->model()->rowCount() > 3, patienceMs);
        const auto outcomes = [table] {
            QStringList texts;
            for (int row = 0; row < table->model()->rowCount(); ++row)
                texts << table->model()->index(row, 1).data().toString() + ' ' +
                             table->model()->index(row, 5).data().toString();
            return texts;
        };
        QVERIFY(outcomes().contains("read reply"));
        QVERIFY(outcomes().contains("write refused: access error: the motor is enabled"));

        // Without the polls, the write stands out: the identification and the write remain.
        dock()->findChild<QCheckBox *>("hidePollsCheckBox")->setChecked(true);
        QCOMPARE(outcomes(),
                 (QStringList{"read reply", "write refused: access error: the motor is enabled"}));

        // Ctrl+C in the log copies rows, with their bytes, and leaves the window open.
        table->setFocus();
        table->selectRow(1);
        QTest::keyClick(table, Qt::Key_C, Qt::ControlModifier);
        const QString copied = QApplication::clipboard()->text();
        QVERIFY2(copied.contains("\twrite\t3\t11\t1\t") && copied.contains("FF FF FD 00 03"),
                 qPrintable(copied));
        QVERIFY(window->isVisible());
        QVERIFY(dock()->findChild<QLabel *>("bytesLabel")->text().startsWith("Request: FF FF FD"));

        // Saved, the whole ring comes out, one line each under a header.
        QTemporaryDir folder;
        QVERIFY(dock()->saveTo(folder.filePath("log")));
        QFile saved(folder.filePath("log"));
        QVERIFY(saved.open(QIODevice::ReadOnly));
        QCOMPARE(saved.readAll().count('\n'), 1 + window->linkMonitor()->ring().size());
        dock()->findChild<QCheckBox *>("hidePollsCheckBox")->setChecked(false);
        dock()->hide();
    }

    // A bridge started after the program is in the settings' port list; a servo the search
    // found on another port is where the next Connect goes.
    void searchHandsOverItsPort()
    {
        BridgeProcess bridge(ZELVAR_VIRTUAL_BUS_PATH,
                             QStringLiteral("search-%1").arg(QCoreApplication::applicationPid()));
        QVERIFY(bridge.started);
        choosePort(bridge.name, 0);
        QCOMPARE(SettingsDialog::instance()->portSettings().portName, bridge.name);

        SearchDialog *search = SearchDialog::instance();
        search->show();
        auto *ports = search->findChild<QComboBox *>("serialPortInfoListBox");
        ports->setCurrentText(VirtualBusPortProvider::PortName);
        search->findChild<QSpinBox *>("lowerSearchRangeSpinBox")->setValue(jointServoId);
        search->findChild<QSpinBox *>("upperSearchRangeSpinBox")->setValue(jointServoId);
        for (auto *rate : search->findChildren<QCheckBox *>(QRegularExpression("^baudRate\\d+")))
            rate->setChecked(rate->objectName() == "baudRate57600CheckBox");
        search->scan();
        auto *tree = search->findChild<QTreeWidget *>("servoTreeWidget");
        QCOMPARE(tree->topLevelItemCount(), 1);
        tree->setCurrentItem(tree->topLevelItem(0)->child(0));
        // Another port chosen after the scan does not change where the servo was found.
        ports->addItem(QStringLiteral("ttyUSB9"));
        ports->setCurrentText(QStringLiteral("ttyUSB9"));
        search->select();
        connectToServo();
        QVERIFY2(indicator()->text().contains("Virtual bus · 57,600 baud · servo 3"),
                 qPrintable(indicator()->text()));
    }
};

QTEST_MAIN(TestLinkFeedback)
#include "tst_linkfeedback.moc"
