#include "app/mainwindow.h"
#include "bridgeprocess.h"
#include "datacolumns.h"
#include "device/devicehelper.h"
#include "link/serialhelper.h"
#include "messageboxanswerer.h"
#include "scriptedportprovider.h"
#include "settings/settings.h"
#include "settings/settingsdialog.h"
#include "simulator/servoregisters.h"
#include "simulator/virtualbus.h"
#include "simulator/virtualbusportprovider.h"
#include "simulator/virtualservo.h"
#include "views/registerview.h"
#include "windowdriver.h"

#include <QtTest>
#include <QtWidgets>

namespace {

constexpr quint8 jointServoId = 3;
constexpr int jointServoBaudRate = 57600;
// Served only for the factory reset, which may give a servo another id.
constexpr quint8 resetServoId = 9;
// Its input voltage lies outside its limits, so every reply carries the alert bit.
constexpr quint8 alarmedServoId = 10;
constexpr quint8 absentServoId = 77;
// Given a new id or baud rate by a save, one each.
constexpr quint8 movedServoIds[] = {20, 22, 24};
// A port listed but never opened, as an adapter that is busy elsewhere.
const char refusingPort[] = "ttyREFUSING";
// A whole-table reply takes about 25 ms at 57,600 baud: the next tick must not overtake it.
constexpr int pollingIntervalMs = 100;
// Generous: only there to end a hang.
constexpr int patienceMs = 20000;

} // namespace

// The whole program against simulated servos: in-process, and through our library and a
// pseudo-terminal to the zelvar-virtual-bus bridge.
class TestEndToEnd : public QObject
{
    Q_OBJECT

    const QString bridgeName = QString("end-to-end-%1").arg(QCoreApplication::applicationPid());
    std::unique_ptr<BridgeProcess> bridge;
    // Its one servo is given a new id and baud rate through the pseudo-terminal.
    const QString movingBridgeName = bridgeName + "-moving";
    std::unique_ptr<BridgeProcess> movingBridge;
    std::shared_ptr<VirtualBus> bus;
    std::shared_ptr<ScriptedPortProvider> scriptedPorts = std::make_shared<ScriptedPortProvider>();
    std::unique_ptr<MainWindow> window;
    MessageBoxAnswerer answerer;
    QStringList &boxes = answerer.boxes;
    QStringList &questions = answerer.questions;
    bool &confirmQuestions = answerer.confirm;

    template<typename T>
    T *find(const char *name) const
    {
        T *found = window->centralWidget()->findChild<T *>(QLatin1String(name));
        if (!found)
            qFatal("no %s", name);
        return found;
    }
    QAction *action(const char *name) const { return WindowDriver::action(*window, name); }
    QString status() const { return WindowDriver::status(*window); }
    double shown(const char *lineEdit) const
    {
        return QLocale().toDouble(find<QLineEdit>(lineEdit)->text());
    }
    std::shared_ptr<VirtualServo> jointServo() const
    {
        for (const auto &servo : bus->servos()) {
            if (servo->id() == jointServoId)
                return servo;
        }
        return nullptr;
    }

    void choosePort(const QString &portName, quint8 servoId)
    {
        WindowDriver::choosePort(*window, portName, jointServoBaudRate, servoId);
    }

    // What the window lets the user do, linked or not.
    void verifyLinkActions(bool linked)
    {
        for (const char *name :
             {"actionConnect", "actionSettings", "actionSearch", "actionReboot", "actionReset"})
            QVERIFY2(action(name)->isEnabled() == !linked, name);
        QCOMPARE(action("actionDisconnect")->isEnabled(), linked);
        for (auto *spinBox : window->findChild<QToolBar *>()->findChildren<QSpinBox *>())
            QCOMPARE(spinBox->isEnabled(), !linked);
    }

    void connectToServo()
    {
        QVERIFY(WindowDriver::connectWithOneRetry(*window));
        verifyLinkActions(true);
        QTRY_VERIFY_WITH_TIMEOUT(!find<QLineEdit>("actualPositionLineEdit")->text().isEmpty(),
                                 patienceMs);
    }

    void disconnectFromServo()
    {
        action("actionDisconnect")->trigger();
        QCOMPARE(status(), QStringLiteral("Disconnected"));
        verifyLinkActions(false);
        QCOMPARE(find<QComboBox>("operatingModeComboBox")->currentText(), QStringLiteral("-"));
        verifyPortClosed();
    }

    // Identification needs an open port: refused, it shows the close timer has done its work.
    void verifyPortClosed()
    {
        QTRY_VERIFY_WITH_TIMEOUT(!DeviceHelper::instance()->identify(absentServoId), patienceMs);
    }

    void editGroup(const char *editSaveButton, const std::function<void()> &edit)
    {
        auto *button = find<QToolButton>(editSaveButton);
        QTRY_VERIFY_WITH_TIMEOUT(button->isEnabled(), patienceMs);
        button->click();
        QVERIFY(button->isChecked());
        edit();
        QTRY_VERIFY_WITH_TIMEOUT(button->isEnabled(), patienceMs);
        button->click();
        QVERIFY(!button->isChecked());
    }

private slots:
    void initTestCase()
    {
        bus = VirtualBusPortProvider::installProcessBus();
        bus->addServo(resetServoId, jointServoBaudRate);
        bus->addServo(alarmedServoId, jointServoBaudRate)
            ->setValue(ServoRegister::MinVoltageLimit, 1, 200);
        for (const quint8 id : movedServoIds)
            bus->addServo(id, jointServoBaudRate);

        scriptedPorts->addPort(refusingPort, [](ScriptedPortBackend &port) {
            port.refusesRate = [](int) { return true; };
        });
        PortProvider::install(scriptedPorts);

        // Started before the window, so the settings dialog lists them.
        bridge = std::make_unique<BridgeProcess>(ZELVAR_VIRTUAL_BUS_PATH, bridgeName);
        QVERIFY(bridge->started);
        movingBridge = std::make_unique<BridgeProcess>(
            ZELVAR_VIRTUAL_BUS_PATH, movingBridgeName,
            QStringList{"--servo", QString("%1@%2").arg(movedServoIds[0]).arg(jointServoBaudRate)});
        QVERIFY(movingBridge->started);

        window = std::make_unique<MainWindow>();
        window->show();
        window->findChild<QToolBar *>()
            ->findChild<QSpinBox *>("pollingIntervalSpinBox")
            ->setValue(pollingIntervalMs);
        // Degrees and rpm; raw registers in hex, whatever an earlier run left in the settings.
        SettingsDialog *dialog = SettingsDialog::instance();
        for (const char *button :
             {"degreesRadioButton", "revsPerMinuteRadioButton", "hexRadioButton"})
            dialog->findChild<QRadioButton *>(button)->setChecked(true);
        dialog->findChild<QPushButton *>("okButton")->click();
    }

    void cleanupTestCase()
    {
        window.reset();
        movingBridge.reset();
        bridge.reset();
    }

    void cleanup()
    {
        questions.clear();
        confirmQuestions = true;
        for (const QString &box : boxes)
            qWarning("box %s", qPrintable(box));
        boxes.clear();
        bus->clearFaults();
        if (action("actionDisconnect")->isEnabled())
            disconnectFromServo();
    }

    void liveSession_data()
    {
        QTest::addColumn<bool>("inProcess");
        QTest::newRow("virtual bus") << true;
        QTest::newRow("pseudo-terminal") << false;
    }
    void liveSession()
    {
        QFETCH(bool, inProcess);
        choosePort(inProcess ? QString(VirtualBusPortProvider::PortName) : bridgeName,
                   jointServoId);
        connectToServo();

        // Both tabs live: the register view shows the servo's id register.
        QTableWidget *bank1 = RegisterView::instance()->bankTable(0);
        QTRY_VERIFY_WITH_TIMEOUT(bank1->item(3, 1), patienceMs);
        QCOMPARE(bank1->item(3, 1)->text(), QStringLiteral("0x03"));

        // Motor off, as the servo starts: the non-volatile group opens, and its edit lands.
        auto *temperatureLimit = find<QDoubleSpinBox>("temperatureLimitDoubleSpinBox");
        const double newLimit = temperatureLimit->value() == 70.0 ? 71.0 : 70.0;
        editGroup("nvParamsEditSaveToolButton",
                  [temperatureLimit, newLimit] { temperatureLimit->setValue(newLimit); });
        QTRY_COMPARE_WITH_TIMEOUT(bank1->item(11, 1) ? bank1->item(11, 1)->text() : QString(),
                                  QStringLiteral("0x%1").arg(int(newLimit), 2, 16, QChar('0')),
                                  patienceMs);
        if (inProcess)
            QCOMPARE(jointServo()->value(ServoRegister::TemperatureLimit, 1), uint(newLimit));

        // Motor on, a quarter turn further: the servo gets there, so the target went out in
        // the servo's counts (its conversion is proven in tst_units).
        const double target = shown("actualPositionLineEdit") + 90.0;
        editGroup("vParamsEditSaveToolButton", [this, target] {
            find<QCheckBox>("enableMotorCheckBox")->setChecked(true);
            find<QDoubleSpinBox>("targetPositionDoubleSpinBox")->setValue(target);
        });
        if (inProcess)
            QTRY_COMPARE_WITH_TIMEOUT(jointServo()->value(ServoRegister::ControlEnable, 1), 1u,
                                      patienceMs);
        QTRY_VERIFY_WITH_TIMEOUT(qAbs(shown("actualPositionLineEdit") - target) < 2.0, patienceMs);
        // The motor as the servo reports it, on a fresh connection, locks the non-volatile group.
        disconnectFromServo();
        connectToServo();
        QTRY_VERIFY_WITH_TIMEOUT(find<QCheckBox>("enableMotorCheckBox")->isChecked(), patienceMs);
        QVERIFY(!find<QToolButton>("nvParamsEditSaveToolButton")->isEnabled());

        action("actionDisconnect")->trigger();
        // The port stays open for an exchange under way, and closes a moment later.
        QVERIFY(DeviceHelper::instance()->identify(absentServoId));
        verifyPortClosed();
        QVERIFY(find<QLineEdit>("actualPositionLineEdit")->text().isEmpty());
        QCOMPARE(bank1->rowCount(), 0);
    }

    // A connect the port refused must not keep the units of its time: the next connect
    // shows the units chosen since.
    void unitsChosenAfterRefusedConnect()
    {
        SettingsDialog *dialog = SettingsDialog::instance();
        const auto chooseTemperatureUnit = [dialog](const char *radioButton) {
            dialog->findChild<QRadioButton *>(radioButton)->setChecked(true);
            dialog->findChild<QPushButton *>("okButton")->click();
        };
        chooseTemperatureUnit("centigradeRadioButton");
        choosePort(refusingPort, jointServoId);
        action("actionConnect")->trigger();
        QTRY_COMPARE_WITH_TIMEOUT(boxes.size(), 1, patienceMs);
        QVERIFY2(boxes.takeFirst().startsWith("Error: "), "no box for the refused port");

        chooseTemperatureUnit("fahrenheitRadioButton");
        choosePort(VirtualBusPortProvider::PortName, jointServoId);
        connectToServo();
        const double celsius = jointServo()->value(ServoRegister::ActualTemperature, 1);
        QCOMPARE(shown("actualTemperatureLineEdit"), celsius * 9.0 / 5.0 + 32.0);
        disconnectFromServo();
        chooseTemperatureUnit("centigradeRadioButton");
    }

    void servoOperationsReportTheirId_data()
    {
        addColumns<QString, int, QString>({"actionName", "servoId", "box"});
        // clang-format off
        QTest::newRow("reboot") << "actionReboot" << int(jointServoId) << "Success: Zelvar servo id:3 was rebooted successfully";
        QTest::newRow("factory reset") << "actionReset" << int(resetServoId) << "Success: Factory reset of Zelvar servo id:9 was successful";
        QTest::newRow("reboot, alert") << "actionReboot" << int(alarmedServoId) << "Error: Error during reboot of Zelvar servo id:10";
        QTest::newRow("factory reset, alert") << "actionReset" << int(alarmedServoId) << "Error: Error during factory reset of Zelvar servo id:10";
        QTest::newRow("reboot, absent") << "actionReboot" << int(absentServoId) << "Error: No reply from Zelvar servo id:77 to the reboot";
        QTest::newRow("factory reset, absent") << "actionReset" << int(absentServoId) << "Error: No reply from Zelvar servo id:77 to the factory reset";
        // clang-format on
    }
    void servoOperationsReportTheirId()
    {
        QFETCH(QString, actionName);
        QFETCH(int, servoId);
        QFETCH(QString, box);
        choosePort(VirtualBusPortProvider::PortName, quint8(servoId));
        boxes.clear();
        action(qPrintable(actionName))->trigger();
        if (box.isEmpty()) {
            verifyPortClosed();
            QTest::qWait(100);
        }
        QTRY_COMPARE_WITH_TIMEOUT(boxes, box.isEmpty() ? QStringList() : QStringList(box),
                                  patienceMs);
        boxes.clear();
        QCOMPARE(status(), QStringLiteral("Disconnected"));
        verifyPortClosed();
    }

    // A save that gives the servo a new id or baud rate takes the program along: the toolbar
    // and the settings follow, and polling goes on there (the register view shows the
    // servo's new id and baud-rate code, which only a poll at the new ones can bring).
    void followsServoToNewIdAndBaudRate_data()
    {
        addColumns<bool, int, int, int, int>(
            {"inProcess", "servoId", "newId", "newBaudRateIndex", "newBaudRate"});
        QTest::newRow("new id") << true << int(movedServoIds[0]) << 21 << -1 << jointServoBaudRate;
        QTest::newRow("new baud rate") << true << int(movedServoIds[1]) << 22 << 4 << 115200;
        QTest::newRow("both") << true << int(movedServoIds[2]) << 25 << 9 << 1000000;
        QTest::newRow("both, pseudo-terminal")
            << false << int(movedServoIds[0]) << 27 << 4 << 115200;
    }
    void followsServoToNewIdAndBaudRate()
    {
        QFETCH(bool, inProcess);
        QFETCH(int, servoId);
        QFETCH(int, newId);
        QFETCH(int, newBaudRateIndex);
        QFETCH(int, newBaudRate);
        choosePort(inProcess ? QString(VirtualBusPortProvider::PortName) : movingBridgeName,
                   quint8(servoId));
        connectToServo();
        editGroup("nvParamsEditSaveToolButton", [&] {
            find<QSpinBox>("idSpinBox")->setValue(newId);
            if (newBaudRateIndex >= 0)
                find<QComboBox>("baudRateComboBox")->setCurrentIndex(newBaudRateIndex);
        });

        QTableWidget *bank1 = RegisterView::instance()->bankTable(0);
        const auto shownRegister = [bank1](int row) {
            return bank1->item(row, 1) ? bank1->item(row, 1)->text() : QString();
        };
        // 34 is 57,600 baud.
        const int code =
            newBaudRateIndex >= 0 ? SerialHelper::baudRateRegisterValue(newBaudRateIndex) : 34;
        QTRY_COMPARE_WITH_TIMEOUT(shownRegister(3), QString::asprintf("0x%02x", newId), 2000);
        QTRY_COMPARE_WITH_TIMEOUT(shownRegister(4), QString::asprintf("0x%02x", code), 2000);
        QCOMPARE(status(), QStringLiteral("Connected"));
        QCOMPARE(window->findChild<QToolBar *>()->findChild<QSpinBox *>("idSpinBox")->value(),
                 newId);
        QCOMPARE(Settings("main window settings").value("servoId", -1).toInt(), newId);
        QCOMPARE(Settings("port settings").value("baudRate", -1).toInt(), newBaudRate);
        QCOMPARE(SettingsDialog::instance()->portSettings().baudRate, newBaudRate);
    }

    // Ctrl+C is Quit, except in a field with selected text, which it copies: the field
    // takes the shortcut over, while polling too.
    void ctrlCCopiesInAField_data()
    {
        addColumns<bool, QString, bool>({"linked", "field", "quits"});
        QTest::newRow("polling interval") << false << "pollingIntervalSpinBox" << false;
        QTest::newRow("voltage limit while polling")
            << true << "maxVoltageLimitDoubleSpinBox" << false;
        QTest::newRow("no field") << false << QString() << true;
    }
    void ctrlCCopiesInAField()
    {
        QFETCH(bool, linked);
        QFETCH(QString, field);
        QApplication::setQuitOnLastWindowClosed(false);
        if (linked) {
            choosePort(VirtualBusPortProvider::PortName, jointServoId);
            connectToServo();
            auto *edit = find<QToolButton>("nvParamsEditSaveToolButton");
            QTRY_VERIFY_WITH_TIMEOUT(edit->isEnabled(), patienceMs);
            edit->click();
        }
        window->activateWindow();
        QWidget *focused = window.get();
        if (!field.isEmpty()) {
            auto *box = window->findChild<QAbstractSpinBox *>(field);
            box->setFocus();
            box->selectAll();
            focused = box->findChild<QLineEdit *>();
        } else if (QWidget *old = QApplication::focusWidget()) {
            old->clearFocus();
        }
        QApplication::clipboard()->clear();
        QSignalSpy quits(action("actionQuit"), SIGNAL(triggered()));
        QTest::keyClick(focused, Qt::Key_C, Qt::ControlModifier);
        if (linked)
            QTest::qWait(3 * pollingIntervalMs);

        QTEST(!quits.isEmpty(), "quits");
        if (!field.isEmpty())
            QCOMPARE(QApplication::clipboard()->text(),
                     window->findChild<QAbstractSpinBox *>(field)->text());
        window->show();
        if (linked)
            find<QToolButton>("nvParamsCancelToolButton")->click();
    }

    // A factory reset names the servo and waits for a yes; Cancel, the default, sends nothing.
    void factoryResetAsksFirst_data()
    {
        addColumns<bool, QStringList>({"confirm", "reported"});
        QTest::newRow("cancelled") << false << QStringList();
        QTest::newRow("confirmed")
            << true << QStringList{"Success: Factory reset of Zelvar servo id:9 was successful"};
    }
    void factoryResetAsksFirst()
    {
        QFETCH(bool, confirm);
        std::shared_ptr<VirtualServo> servo;
        for (const auto &candidate : bus->servos()) {
            if (candidate->id() == resetServoId)
                servo = candidate;
        }
        QVERIFY(servo);
        servo->setValue(ServoRegister::TemperatureLimit, 1, 55);
        choosePort(VirtualBusPortProvider::PortName, resetServoId);
        confirmQuestions = confirm;
        action("actionReset")->trigger();
        QTRY_COMPARE_WITH_TIMEOUT(questions.size(), 1, patienceMs);
        QCOMPARE(questions.first(),
                 QStringLiteral("Factory reset: Reset servo 9 on Virtual bus at %1 baud to its "
                                "factory settings?")
                     .arg(QLocale().toString(jointServoBaudRate)));
        QFETCH(QStringList, reported);
        if (!confirm)
            QTest::qWait(100);
        QTRY_COMPARE_WITH_TIMEOUT(boxes, reported, patienceMs);
        boxes.clear();
        QCOMPARE(servo->value(ServoRegister::TemperatureLimit, 1) == 55, !confirm);
    }

    void quickReconnectKeepsThePortOpen()
    {
        choosePort(VirtualBusPortProvider::PortName, jointServoId);
        // Two close timers pending at once: both must be gone once they have fired.
        for (int i = 0; i < 2; ++i) {
            action("actionConnect")->trigger();
            action("actionDisconnect")->trigger();
        }
        QTest::qWait(250);
        connectToServo();
        QTest::qWait(300);
        QVERIFY(DeviceHelper::instance()->identify(absentServoId));
    }
};

QTEST_MAIN(TestEndToEnd)
#include "tst_endtoend.moc"
