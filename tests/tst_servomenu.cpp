#include "app/mainwindow.h"
#include "bridgefolder.h"
#include "settings/settingsdialog.h"
#include "simulator/busfault.h"
#include "simulator/servoregisters.h"
#include "simulator/virtualbus.h"
#include "simulator/virtualbusportprovider.h"
#include "simulator/virtualservo.h"
#include "views/loadparametersdialog.h"

#include <QtTest>
#include <QtWidgets>

Q_DECLARE_METATYPE(BusFault)

namespace {

constexpr quint8 servoId = 3;
constexpr int baudRate = 57600;
constexpr int pollingIntervalMs = 100;
// Generous: only there to end a hang.
constexpr int patienceMs = 20000;

} // namespace

// Parameter files through the "Servo" menu, against a servo on the in-process virtual bus.
class TestServoMenu : public QObject
{
    Q_OBJECT

    const QString bridgeName = QString("servo-menu-%1").arg(QCoreApplication::applicationPid());
    QProcess bridge;
    std::shared_ptr<VirtualBus> bus;
    std::shared_ptr<VirtualServo> servo;
    std::unique_ptr<MainWindow> window;
    QTemporaryDir folder;
    // Every dialog is answered as a user would: file dialogs with `chosenFile`, the load
    // dialog by `onLoadDialog`, message boxes with OK, kept here as "title: text".
    QString chosenFile;
    std::function<void(LoadParametersDialog *)> onLoadDialog;
    QStringList boxes;
    // The load dialog's rows as "register | servo | file | ticked".
    QStringList rows;
    QTimer answerer;

    QAction *action(const char *name) const
    {
        return window->findChild<QAction *>(QLatin1String(name));
    }

    void answerDialogs()
    {
        QWidget *modal = QApplication::activeModalWidget();
        if (auto *box = qobject_cast<QMessageBox *>(modal)) {
            boxes << box->windowTitle() + ": " + box->text();
            box->done(QMessageBox::Ok);
        } else if (auto *files = qobject_cast<QFileDialog *>(modal)) {
            files->selectFile(chosenFile);
            QMetaObject::invokeMethod(files, "accept");
        } else if (auto *load = qobject_cast<LoadParametersDialog *>(modal)) {
            auto *table = load->findChild<QTableWidget *>("differencesTableWidget");
            rows.clear();
            for (int row = 0; row < table->rowCount(); ++row)
                rows << QStringList{table->item(row, 0)->text(), table->item(row, 1)->text(),
                                    table->item(row, 2)->text(),
                                    table->item(row, 0)->checkState() == Qt::Checked ? "ticked"
                                                                                     : "unticked"}
                            .join(" | ");
            if (onLoadDialog)
                onLoadDialog(load);
            else
                load->reject();
        }
    }

    void connectTo(const QString &port)
    {
        if (action("actionDisconnect")->isEnabled())
            action("actionDisconnect")->trigger();
        QVERIFY(!action("actionLoadParameters")->isEnabled());
        window->findChild<QToolBar *>()->findChild<QSpinBox *>("idSpinBox")->setValue(servoId);
        SettingsDialog *settings = SettingsDialog::instance();
        auto *ports = settings->findChild<QComboBox *>("serialPortInfoListBox");
        QVERIFY(ports->findText(port) >= 0);
        ports->setCurrentText(port);
        settings->findChild<QComboBox *>("baudRateBox")->setCurrentText(QString::number(baudRate));
        settings->findChild<QPushButton *>("okButton")->click();
        // The port closes a moment after a disconnect.
        QTest::qWait(300);
        action("actionConnect")->trigger();
        QTRY_COMPARE_WITH_TIMEOUT(window->statusBar()->currentMessage(), QString("Connected"),
                                  patienceMs);
        QVERIFY(action("actionSaveParameters")->isEnabled());
        QVERIFY(action("actionLoadParameters")->isEnabled());
    }

    QString lastBox()
    {
        if (!QTest::qWaitFor([this] { return !boxes.isEmpty(); }, patienceMs))
            return QString();
        return boxes.takeLast();
    }

    QString save(const QString &name)
    {
        chosenFile = folder.filePath(name);
        // The file dialog would ask before overwriting.
        QFile::remove(chosenFile);
        action("actionSaveParameters")->trigger();
        return lastBox();
    }

    QString load(const QString &path)
    {
        chosenFile = path;
        action("actionLoadParameters")->trigger();
        return lastBox();
    }

    // What a load may change: the writable registers.
    QByteArray writableRegisters() const { return servo->controlTable().mid(3, 83); }

    static void writeFile(const QString &path, const QByteArray &text)
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

private slots:
    void initTestCase()
    {
        bus = VirtualBusPortProvider::installProcessBus();
        // The bus comes with a joint-mode servo at this id and rate.
        for (const auto &candidate : bus->servos()) {
            if (candidate->id() == servoId)
                servo = candidate;
        }
        QVERIFY(servo);
        connect(&answerer, &QTimer::timeout, this, &TestServoMenu::answerDialogs);
        answerer.start(5);

        // Started before the window, so the settings dialog lists it.
        bridge.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        bridge.start(ZELVAR_VIRTUAL_BUS_PATH, {"--name", bridgeName});
        QVERIFY(bridge.waitForStarted(patienceMs));
        QVERIFY(bridge.waitForReadyRead(patienceMs));

        window = std::make_unique<MainWindow>();
        window->show();
        window->findChild<QToolBar *>()
            ->findChild<QSpinBox *>("pollingIntervalSpinBox")
            ->setValue(pollingIntervalMs);
        SettingsDialog::instance()
            ->findChild<QRadioButton *>("degreesRadioButton")
            ->setChecked(true);
        connectTo(VirtualBusPortProvider::PortName);
    }

    void cleanupTestCase()
    {
        action("actionDisconnect")->trigger();
        QVERIFY(!action("actionLoadParameters")->isEnabled());
        window.reset();
        bridge.kill();
        bridge.waitForFinished(patienceMs);
        // Killed, the bridge leaves its registration for us to remove.
        QFile::remove(BridgeFolder::path() + '/' + bridgeName);
        QFile::remove(BridgeFolder::path() + '/' + bridgeName + ".pid");
    }

    void cleanup()
    {
        onLoadDialog = nullptr;
        rows.clear();
        for (const QString &box : boxes)
            qWarning("box %s", qPrintable(box));
        boxes.clear();
    }

    void saveChangeLoadReadBack()
    {
        const QString path = folder.filePath("servo.json");
        QCOMPARE(save("servo.json"),
                 QString("Success: The parameters of servo id:3 were saved to %1.").arg(path));
        const QByteArray saved = writableRegisters();

        // Changed on the servo as another tool would, with the motor left running.
        servo->setValue(ServoRegister::ClockwiseLimit, 2, -1000);
        servo->setValue(ServoRegister::TemperatureLimit, 1, 60);
        servo->setValue(ServoRegister::PositionP, 2, 1234);
        servo->setValue(ServoRegister::TargetPosition, 4, 2048);
        servo->setValue(ServoRegister::ControlEnable, 1, 1);

        bool writeEnabledBeforeSwitch = true;
        onLoadDialog = [&writeEnabledBeforeSwitch](LoadParametersDialog *dialog) {
            auto *write = dialog->findChild<QPushButton *>("writeButton");
            writeEnabledBeforeSwitch = write->isEnabled();
            dialog->findChild<QCheckBox *>("switchMotorOffCheckBox")->setChecked(true);
            write->click();
        };
        QCOMPARE(load(path), QString("Success: Servo id:3 took all 3 ticked registers of "
                                     "servo.json."));
        QCOMPARE(rows, (QStringList{
                           "CW angle limit | -87.93 degrees | -180.00 degrees | ticked",
                           "Upper temperature limit | 60 °C | 80 °C | ticked",
                           "Control enable | 1 | 0 | unticked",
                           "Position proportional gain | 123.4 | 40.0 | ticked",
                           "Target position | 180.00 degrees | 0.00 degrees | unticked",
                       }));
        QVERIFY2(!writeEnabledBeforeSwitch, "non-volatile rows with the motor on");

        // The unticked target stays; the motor was switched off for the non-volatile rows.
        QByteArray expected = saved;
        expected.replace(ServoRegister::TargetPosition - 3, 4, QByteArray::fromHex("00080000"));
        QCOMPARE(writableRegisters().toHex(), expected.toHex());
        QCOMPARE(servo->value(ServoRegister::ControlEnable, 1), 0u);
    }

    // Why a file is refused is the codec's to say; here the window must write nothing.
    void refusedWritesNothing()
    {
        QFile saved(folder.filePath("servo.json"));
        QVERIFY(saved.open(QIODevice::ReadOnly));
        const QByteArray text = saved.readAll().left(int(saved.size() / 2));
        const QString broken = folder.filePath("broken.json");
        writeFile(broken, text);
        servo->setValue(ServoRegister::TemperatureLimit, 1, 61);
        const QByteArray before = writableRegisters();

        QCOMPARE(load(broken),
                 QString("Error: broken.json was not loaded. The file is damaged: unterminated "
                         "object at character %1. Nothing was written.")
                     .arg(text.size()));
        QVERIFY(rows.isEmpty());
        QTest::qWait(5 * pollingIntervalMs);
        QCOMPARE(writableRegisters().toHex(), before.toHex());
    }

    // The servo refuses a mode it does not have: the block of that register is reported,
    // the others take, and the unticked new id is never sent.
    void reportsWhatDidNotTake()
    {
        QFile saved(folder.filePath("servo.json"));
        QVERIFY(saved.open(QIODevice::ReadOnly));
        QJsonObject file = QJsonDocument::fromJson(saved.readAll()).object();
        QJsonArray registers = file["registers"].toArray();
        for (int i = 0; i < registers.size(); ++i) {
            QJsonObject item = registers[i].toObject();
            if (item["description"] == "Operating mode")
                item["raw"] = 9;
            if (item["description"] == "ID")
                item["raw"] = 5;
            registers[i] = item;
        }
        file["registers"] = registers;
        const QString path = folder.filePath("modes.json");
        writeFile(path, QJsonDocument(file).toJson());
        servo->setValue(ServoRegister::TargetPosition, 4, 0);
        servo->setValue(ServoRegister::TemperatureLimit, 1, 61);

        onLoadDialog = [](LoadParametersDialog *dialog) {
            dialog->findChild<QPushButton *>("writeButton")->click();
        };
        QCOMPARE(load(path), QString("Error: Servo id:3 did not take 1 register(s) of modes.json:\n"
                                     "Operating mode: servo 2, file 9"));
        QCOMPARE(rows, (QStringList{
                           "ID | 3 | 5 | unticked",
                           "Operating mode | 2 | 9 | ticked",
                           "Upper temperature limit | 61 °C | 80 °C | ticked",
                       }));
        QCOMPARE(servo->value(ServoRegister::TemperatureLimit, 1), 80u);
        QCOMPARE(servo->id(), servoId);
    }

    // A servo that stops answering, or answers garbled, ends the wait with a message.
    void unansweredTable_data()
    {
        QTest::addColumn<BusFault>("fault");
        QTest::newRow("no reply") << BusFault::Drop;
        QTest::newRow("garbled replies") << BusFault::Corrupt;
    }

    void unansweredTable()
    {
        QFETCH(BusFault, fault);

        bus->setFaultProbability(servoId, fault, 1.0);
        QCOMPARE(save("unanswered.json"),
                 QString("Error: Servo id:3 did not answer; nothing was saved."));
        QVERIFY(!QFile::exists(folder.filePath("unanswered.json")));
        QCOMPARE(load(folder.filePath("servo.json")),
                 QString("Error: Servo id:3 did not answer; nothing was written."));
        bus->clearFaults();
        QVERIFY(save("answered.json").startsWith("Success: "));
    }

    // Through our library and a pseudo-terminal: a file changed by hand is loaded, and the
    // servo's settings saved afterwards are the file's.
    void roundTripThroughTheBridge()
    {
        connectTo(bridgeName);
        const QString before = folder.filePath("bridge-before.json");
        QVERIFY(save("bridge-before.json").startsWith("Success: "));
        QFile saved(before);
        QVERIFY(saved.open(QIODevice::ReadOnly));
        QJsonObject file = QJsonDocument::fromJson(saved.readAll()).object();
        const QJsonArray original = file["registers"].toArray();
        QJsonArray registers = original;
        for (int i = 0; i < registers.size(); ++i) {
            QJsonObject item = registers[i].toObject();
            if (item["description"] == "CW angle limit" || item["description"] == "Target position")
                item["raw"] = item["raw"].toInt() + 100;
            if (item["description"] == "Velocity integral gain")
                item["raw"] = 777;
            item.remove("value");
            registers[i] = item;
        }
        file["registers"] = registers;
        const QString changed = folder.filePath("bridge-changed.json");
        writeFile(changed, QJsonDocument(file).toJson());

        onLoadDialog = [](LoadParametersDialog *dialog) {
            dialog->findChild<QPushButton *>("writeButton")->click();
        };
        QCOMPARE(load(changed), QString("Success: Servo id:3 took all 2 ticked registers of "
                                        "bridge-changed.json."));
        QCOMPARE(rows.size(), 3);
        QVERIFY(save("bridge-after.json").startsWith("Success: "));
        QFile after(folder.filePath("bridge-after.json"));
        QVERIFY(after.open(QIODevice::ReadOnly));
        QJsonArray read = QJsonDocument::fromJson(after.readAll()).object()["registers"].toArray();
        QCOMPARE(read.size(), registers.size());
        for (int i = 0; i < read.size(); ++i) {
            const QString name = read[i].toObject()["description"].toString();
            // The unticked target keeps the servo's own value.
            const QJsonArray &wanted = name == "Target position" ? original : registers;
            QVERIFY2(read[i].toObject()["raw"] == wanted[i].toObject()["raw"], qPrintable(name));
        }
    }
};

QTEST_MAIN(TestServoMenu)
#include "tst_servomenu.moc"
