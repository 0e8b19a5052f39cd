#include "ui_editview.h"

#include "device/fieldhelper.h"
#include "device/statushelper.h"
#include "device/uiregisterhelper.h"
#include "editformfixture.h"
#include "settings/settings.h"
#include "settings/settingsdialog.h"
#include "views/editview.h"
#include "widgets/iconnectinfo.h"
#include "widgets/uigrouphelper.h"
#include "widgets/zelvargrouptoolbutton.h"
#include "widgets/zelvarparametersgroupbox.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QtTest>

namespace {

// Brings the widgets up as a connection does, with a servo of our own identified.
void connectAll(const QList<QObject *> &widgets)
{
    for (QObject *widget : widgets)
        dynamic_cast<IConnectInfo *>(widget)->connected();
    loadDevice();
}

// What the scheduler does with one register of a reply.
void deliver(uint8_t address, int32_t value)
{
    UiRegisterHelper::instance()->item(address).callback(value);
}

} // namespace

class TestEditView : public QObject
{
    Q_OBJECT

    template<typename T = QWidget>
    T *widget(const QString &name) const
    {
        return view->findChild<T *>(name);
    }

    std::unique_ptr<SettingsDialog> settingsDialog;
    std::unique_ptr<EditView> view;

private slots:
    void initTestCase()
    {
        Q_INIT_RESOURCE(resources);
        // The longest unit names, so that the captions are measured at their widest.
        Settings units(QStringLiteral("units settings"));
        for (const char *quantity : {"angle", "torque", "current"})
            units.setValue(QString(quantity), 1);
        settingsDialog = std::make_unique<SettingsDialog>();
        deviceHelper();
        view = std::make_unique<EditView>();
    }

    void widgets_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("className");
        // A unit label's caption is followed by its unit; a combo box lists its items, the
        // current one in brackets; a spin box gives the form's own limits.
        QTest::addColumn<QString>("text");

        const QVector<std::array<const char *, 3>> rows = {
            {"scrollArea", "QScrollArea", ""},
            {"realtimeInformationGroupBox", "ZelvarParametersGroupBox", "Realtime information"},
            {"versionInfoGroupBox", "ZelvarParametersGroupBox", "Version information"},
            {"zelvarHardwareErrorGroupBox", "ZelvarParametersGroupBox", "Hardware error status"},
            {"zelvarPacketStatusGroupBox", "ZelvarParametersGroupBox", "Status packet information"},
            {"nonVolatileParamsGroupBox", "ZelvarParametersGroupBox", "Parameters (non-volatile)"},
            {"volatileParamsGroupBox", "ZelvarParametersGroupBox", "Parameters (volatile)"},
            {"positionLabel", "ZelvarUnitLabel", "Position"},
            {"angularVelocityLabel", "ZelvarUnitLabel", "Angular velocity"},
            {"torqueLabel", "ZelvarUnitLabel", "Torque"},
            {"voltageLabel", "ZelvarUnitLabel", "Voltage"},
            {"quadratureCurrentLabel", "ZelvarUnitLabel", "Phase current (Iq)"},
            {"temperatureLabel", "ZelvarUnitLabel", "Temperature"},
            {"actualPositionLineEdit", "ZelvarLineEdit", ""},
            {"actualAngularVelocityLineEdit", "ZelvarLineEdit", ""},
            {"actualTorqueLineEdit", "ZelvarLineEdit", ""},
            {"actualVoltageLineEdit", "ZelvarLineEdit", ""},
            {"actualQuadratureCurrentLineEdit", "ZelvarLineEdit", ""},
            {"actualTemperatureLineEdit", "ZelvarLineEdit", ""},
            {"isMovingCheckBox", "ZelvarCheckBox", "Is moving:"},
            {"modelNumberLabel", "QLabel", "Model number:"},
            {"modelNumberLineEdit", "ZelvarLineEdit", ""},
            {"firmwareVersionLabel", "QLabel", "Firmware version"},
            {"firmwareVersionLineEdit", "ZelvarLineEdit", ""},
            {"baudRateLabel", "QLabel", "Baud rate:"},
            {"baudRateComboBox", "ZelvarBaudRateComboBox",
             "9600|19200|38400|57600|115200|200000|250000|400000|500000|1000000|2000000|[-]"},
            {"idLabel", "ZelvarUnitLabel", "ID"},
            {"idSpinBox", "ZelvarSpinBox", "max 253"},
            {"ackResponseTimeLabel", "ZelvarUnitLabel", "Acknowledge response time"},
            {"ackResponseTimeSpinBox", "ZelvarSpinBox", "max 508"},
            {"operatingModeLabel", "QLabel", "Operating mode:"},
            {"operatingModeComboBox", "ZelvarComboBox",
             "[Torque]|Wheel|Joint|Multi-turn|Stepper|-"},
            {"inputModeLabel", "ZelvarLabel", "Input mode:"},
            {"inputModeComboBox", "ZelvarComboBox", "[Trajectory]|Position|-"},
            {"label_6", "QLabel", "Limits"},
            {"clockwiseAngleLimitLabel", "ZelvarUnitLabel", "Clockwise angle limit"},
            {"clockwiseLimitDoubleSpinBox", "ZelvarDoubleSpinBox", ""},
            {"counterClockwiseAngleLimitLabel", "ZelvarUnitLabel", "Counter-clockwise angle limit"},
            {"counterClockwiseLimitDoubleSpinBox", "ZelvarDoubleSpinBox", ""},
            {"upperTemperatureLimitLabel", "ZelvarUnitLabel", "Temperature limit"},
            {"temperatureLimitDoubleSpinBox", "ZelvarDoubleSpinBox", ""},
            {"minVoltageLimitLabel", "ZelvarUnitLabel", "Minimum voltage"},
            {"minVoltageLimitDoubleSpinBox", "ZelvarDoubleSpinBox", ""},
            {"maxVoltageLimitLabel", "ZelvarUnitLabel", "Maximum voltage"},
            {"maxVoltageLimitDoubleSpinBox", "ZelvarDoubleSpinBox", ""},
            {"quadratureCurrentLimitLabel", "ZelvarUnitLabel", "Phase current (Iq) limit:"},
            {"quadratureCurrentLimitDoubleSpinBox", "ZelvarDoubleSpinBox", ""},
            {"angularVelocityLimitLabel", "ZelvarUnitLabel", "Angular velocity limit"},
            {"angularVelocityLimitDoubleSpinBox", "ZelvarDoubleSpinBox", ""},
            {"accelerationLimitLabel", "ZelvarUnitLabel", "Acceleration limit"},
            {"accelerationLimitDoubleSpinBox", "ZelvarDoubleSpinBox", ""},
            {"label_7", "QLabel", "Adjustments"},
            {"hornPositionOffsetLabel", "ZelvarUnitLabel", "Home position offset"},
            {"hornPositionOffsetDoubleSpinBox", "ZelvarDoubleSpinBox", ""},
            {"movingThresholdLabel", "ZelvarUnitLabel", "Moving threshold"},
            {"movingThresholdDoubleSpinBox", "ZelvarDoubleSpinBox", ""},
            {"label_9", "QLabel", "Default control parameters"},
            {"defPositionProportionalTermLabel", "ZelvarLabel", "Position proportional term:"},
            {"defPositionProportionalTermDoubleSpinBox", "ZelvarDoubleSpinBox", "max 31.87"},
            {"defVelocityFeedforwardTermLabel", "ZelvarLabel", "Velocity feedforward term:"},
            {"defVelocityFeedforwardTermDoubleSpinBox", "ZelvarDoubleSpinBox",
             "max 1.02 step 0.01"},
            {"defVelocityProportionalTermLabel", "ZelvarLabel", "Velocity proportional term:"},
            {"defVelocityProportionalTermDoubleSpinBox", "ZelvarDoubleSpinBox", "max 31.87"},
            {"defVelocityIntegralTermLabel", "ZelvarLabel", "Velocity integral term:"},
            {"defVelocityIntegralTermDoubleSpinBox", "ZelvarDoubleSpinBox", "max 124.5"},
            {"defCurrentFeedforwardTermLabel", "ZelvarLabel", "Current feedforward term:"},
            {"defCurrentFeedforwardTermDoubleSpinBox", "ZelvarDoubleSpinBox", "max 1.02 step 0.01"},
            {"defAngularVelocityProfileLabel", "ZelvarUnitLabel", "Angular velocity profile:"},
            {"defAngularVelocityProfileDoubleSpinBox", "ZelvarDoubleSpinBox", ""},
            {"defAccelerationProfileLabel", "ZelvarUnitLabel", "Acceleration profile:"},
            {"defAccelerationProfileDoubleSpinBox", "ZelvarDoubleSpinBox", ""},
            {"nvParamsCancelToolButton", "ZelvarGroupToolButton", "Cancel"},
            {"nvParamsEditSaveToolButton", "ZelvarGroupToolButton", "Edit"},
            {"label", "QLabel", "Position"},
            {"targetPositionLabel", "ZelvarUnitLabel", "Target position"},
            {"targetPositionDoubleSpinBox", "ZelvarDoubleSpinBox", ""},
            {"positionProportionalTermLabel", "ZelvarLabel", "Proportional term:"},
            {"positionProportionalTermDoubleSpinBox", "ZelvarDoubleSpinBox", "max 31.87"},
            {"velocityFeedforwardTermLabel", "ZelvarLabel", "Velocity feedforward term:"},
            {"velocityFeedforwardTermDoubleSpinBox", "ZelvarDoubleSpinBox", "max 1.02 step 0.01"},
            {"label_2", "QLabel", "Angular velocity"},
            {"targetAngularVelocityLabel", "ZelvarUnitLabel", "Target velocity"},
            {"targetAngularVelocityDoubleSpinBox", "ZelvarDoubleSpinBox", ""},
            {"targetAngularVelocityDirectionLabel", "ZelvarLabel", "Direction:"},
            {"targetAngularVelocityDirectionComboBox", "ZelvarComboBox",
             "Counter-clockwise|Clockwise|[-]"},
            {"velocityProportionalTermLabel", "ZelvarLabel", "Proportional term:"},
            {"velocityProportionalTermDoubleSpinBox", "ZelvarDoubleSpinBox", "max 31.87"},
            {"velocityIntegralTermLabel", "ZelvarLabel", "Integral term:"},
            {"velocityIntegralTermDoubleSpinBox", "ZelvarDoubleSpinBox", "max 124.5"},
            {"currentFeedforwardTermLabel", "ZelvarLabel", "Current feedforward term:"},
            {"currentFeedforwardTermDoubleSpinBox", "ZelvarDoubleSpinBox", "max 1.02 step 0.01"},
            {"label_3", "QLabel", "Torque"},
            {"targetTorqueLabel", "ZelvarUnitLabel", "Target torque"},
            {"targetTorqueDoubleSpinBox", "ZelvarDoubleSpinBox", ""},
            {"targetTorqueDirectionLabel", "ZelvarLabel", "Direction:"},
            {"targetTorqueDirectionComboBox", "ZelvarComboBox", "Counter-clockwise|Clockwise|[-]"},
            {"label_4", "QLabel", "Profile"},
            {"angularVelocityProfileLabel", "ZelvarUnitLabel", "Angular velocity profile:"},
            {"angularVelocityProfileDoubleSpinBox", "ZelvarDoubleSpinBox", ""},
            {"accelerationProfileLabel", "ZelvarUnitLabel", "Acceleration profile:"},
            {"accelerationProfileDoubleSpinBox", "ZelvarDoubleSpinBox", ""},
            {"label_5", "QLabel", "Miscellaneous"},
            {"enableMotorCheckBox", "ZelvarCheckBox", "Enable motor"},
            {"pendingShadowInstructionCheckBox", "ZelvarCheckBox", "Pending shadow instruction:"},
            {"vParamsCancelToolButton", "ZelvarGroupToolButton", "Cancel"},
            {"vParamsEditSaveToolButton", "ZelvarGroupToolButton", "Edit"},
            {"overloadStatusCheckBox", "ZelvarStatusCheckBox", "Overload error"},
            {"overheatingStatusCheckBox", "ZelvarCheckBox", "Overheating error"},
            {"angleLimitStatusCheckBox", "ZelvarCheckBox", "Angle limit error"},
            {"inputVoltageStatusCheckBox", "ZelvarCheckBox", "Input voltage error"},
            {"encoderStatusCheckBox", "ZelvarCheckBox", "Encoder error"},
            {"hallStatusCheckBox", "ZelvarCheckBox", "Hall sensor error"},
            {"processStatusCheckBox", "ZelvarStatusCheckBox", "Process failure"},
            {"instructionStatusCheckBox", "ZelvarStatusCheckBox", "Instruction error"},
            {"checksumStatusCheckBox", "ZelvarStatusCheckBox", "Checksum error"},
            {"rangeStatusCheckBox", "ZelvarStatusCheckBox", "Data range error"},
            {"dataLengthStatusCheckBox", "ZelvarStatusCheckBox", "Data length error"},
            {"dataLimitStatusCheckBox", "ZelvarStatusCheckBox", "Data limit error"},
            {"accessStatusCheckBox", "ZelvarStatusCheckBox", "Access error"},
            {"alertStatusCheckBox", "ZelvarStatusCheckBox", "Alert"},
        };
        for (const auto &row : rows)
            QTest::newRow(row[0]) << row[0] << row[1] << row[2];
    }
    void widgets()
    {
        QFETCH(QString, name);
        QFETCH(QString, className);
        QFETCH(QString, text);

        QWidget *found = widget(name);
        QVERIFY(found);
        QCOMPARE(found->metaObject()->className(), className);
        QString shown =
            found->property(qobject_cast<QGroupBox *>(found) ? "title" : "text").toString();
        if (auto *combo = qobject_cast<QComboBox *>(found)) {
            QStringList items;
            for (int i = 0; i < combo->count(); ++i)
                items << (i == combo->currentIndex() ? '[' + combo->itemText(i) + ']'
                                                     : combo->itemText(i));
            shown = items.join('|');
        } else if (found->inherits("QAbstractSpinBox")) {
            const double step = found->property("singleStep").toDouble();
            shown = "max " + QString::number(found->property("maximum").toDouble()) +
                    (step == 1 ? "" : " step " + QString::number(step));
        }
        if (className == "ZelvarUnitLabel")
            QVERIFY2(shown.startsWith(text), qPrintable(shown));
        else if (!text.isEmpty())
            QCOMPARE(shown, text);
        if (name.startsWith("actual"))
            QVERIFY(found->property("readOnly").toBool());
        if (auto *button = qobject_cast<ZelvarGroupToolButton *>(found)) {
            QCOMPARE(button->role, text == "Cancel" ? 1 : 0);
            QCOMPARE(button->isCheckable(), text == "Edit");
            QVERIFY(!button->icon().pixmap(16).isNull());
        }
        // Status boxes only show; the user never ticks them.
        if (className == "ZelvarStatusCheckBox")
            QVERIFY(!found->isEnabled());
    }

    void captionsAreNotClipped_data()
    {
        QTest::addColumn<bool>("loaded");
        QTest::newRow("disconnected") << false;
        // Shown values and the device's ranges widen the spin boxes, leaving captions less
        // room; minus signs must still fit.
        QTest::newRow("values shown") << true;
    }
    // The groups have fixed sizes; the form's own font keeps every caption inside them,
    // units included, whatever the desktop's font.
    void captionsAreNotClipped()
    {
        QFETCH(bool, loaded);
        view->resize(1120, 860);
        view->show();
        QVERIFY(QTest::qWaitForWindowExposed(view.get()));
        if (loaded) {
            QList<QObject *> groups;
            for (auto *group : view->findChildren<ZelvarParametersGroupBox *>())
                groups << group;
            connectAll(groups);
            // The new ranges are laid out before the first poll brings values.
            QCoreApplication::processEvents();
            for (const auto &item : UiRegisterHelper::instance()->pollMap())
                deliver(item.first, 0);
            deliver(7, -2047);  // clockwise limit, -180 degrees
            deliver(20, -4096); // home offset, a turn back
            QCoreApplication::processEvents();
        }
        for (const QLabel *label : view->findChildren<QLabel *>()) {
            const int needed = label->fontMetrics().horizontalAdvance(label->text());
            QVERIFY2(label->contentsRect().width() >= needed, qPrintable(label->objectName()));
        }
        for (const QAbstractSpinBox *spinBox : view->findChildren<QAbstractSpinBox *>()) {
            // The editor keeps two pixels each side for the cursor.
            const auto *editor = spinBox->findChild<QLineEdit *>();
            const int needed = editor->fontMetrics().horizontalAdvance(editor->text());
            QVERIFY2(editor->contentsRect().width() - 4 >= needed,
                     qPrintable(spinBox->objectName()));
        }
        view->hide();
    }

    // Register 107 reaches the bit boxes through the poll map; the decoding itself is the
    // status helper's.
    void hardwareStatusReachesTheBitBoxes()
    {
        auto *overheating = widget<QCheckBox>("overheatingStatusCheckBox");
        auto *hall = widget<QCheckBox>("hallStatusCheckBox");
        connectAll({overheating, hall});
        deliver(107, 0x04);
        QVERIFY(overheating->isChecked());
        QVERIFY(!hall->isChecked());
    }

    void secondViewSharesTheHelpers()
    {
        const auto groups = UiGroupHelper::instance();
        const auto status = StatusHelper::instance();
        const auto fields = FieldHelper::instance();
        QVERIFY(groups && status && fields);

        auto *firstMoving = widget<QCheckBox>("isMovingCheckBox");
        connectAll({firstMoving});
        deliver(99, 0);
        {
            EditView second;
            QCOMPARE(UiGroupHelper::instance(), groups);
            QCOMPARE(StatusHelper::instance(), status);
            QCOMPARE(FieldHelper::instance(), fields);

            // The second view's fields replace the first's under the same names.
            auto *secondMoving = second.findChild<QCheckBox *>("isMovingCheckBox");
            connectAll({secondMoving});
            deliver(99, 1);
            QVERIFY(secondMoving->isChecked());
            QVERIFY(!firstMoving->isChecked());
        }
        // A value for a field whose view is gone goes nowhere.
        deliver(99, 1);
        QVERIFY(!firstMoving->isChecked());

        // The status helper stays with the first view's form.
        status->updateStatusPacket(int8_t(0x80));
        QVERIFY(widget<QCheckBox>("alertStatusCheckBox")->isChecked());
    }
};

QTEST_MAIN(TestEditView)
#include "tst_editview.moc"
