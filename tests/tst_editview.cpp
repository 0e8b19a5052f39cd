#include "ui_editview.h"

#include "datacolumns.h"
#include "device/fieldhelper.h"
#include "device/statushelper.h"
#include "device/uiregisterhelper.h"
#include "editformfixture.h"
#include "settings/settings.h"
#include "settings/settingsdialog.h"
#include "views/editview.h"
#include "widgets/uigrouphelper.h"

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
        addColumns<QString, QString, QString>({"name", "className", "text"});

        // Per class, name=text entries. A unit label's caption is followed by its unit; a combo
        // box lists its items, the current one in brackets; a spin box gives the form's limits.
        const std::pair<const char *, const char *> classes[] = {
            {"QScrollArea", "scrollArea"},
            {"ZelvarParametersGroupBox", "realtimeInformationGroupBox=Realtime information;"
                                         "versionInfoGroupBox=Version information;"
                                         "zelvarHardwareErrorGroupBox=Hardware error status;"
                                         "zelvarPacketStatusGroupBox=Status packet information;"
                                         "nonVolatileParamsGroupBox=Parameters (non-volatile);"
                                         "volatileParamsGroupBox=Parameters (volatile)"},
            {"ZelvarUnitLabel",
             "positionLabel=Position;angularVelocityLabel=Angular velocity;torqueLabel=Torque;"
             "voltageLabel=Voltage;quadratureCurrentLabel=Phase current (Iq);"
             "temperatureLabel=Temperature;idLabel=ID;"
             "ackResponseTimeLabel=Acknowledge response time;"
             "clockwiseAngleLimitLabel=Clockwise angle limit;"
             "counterClockwiseAngleLimitLabel=Counter-clockwise angle limit;"
             "upperTemperatureLimitLabel=Temperature limit;minVoltageLimitLabel=Minimum voltage;"
             "maxVoltageLimitLabel=Maximum voltage;"
             "quadratureCurrentLimitLabel=Phase current (Iq) limit:;"
             "angularVelocityLimitLabel=Angular velocity limit;"
             "accelerationLimitLabel=Acceleration limit;"
             "hornPositionOffsetLabel=Home position offset;movingThresholdLabel=Moving threshold;"
             "defAngularVelocityProfileLabel=Angular velocity profile:;"
             "defAccelerationProfileLabel=Acceleration profile:;"
             "targetPositionLabel=Target position;targetAngularVelocityLabel=Target velocity;"
             "targetTorqueLabel=Target torque;"
             "angularVelocityProfileLabel=Angular velocity profile:;"
             "accelerationProfileLabel=Acceleration profile:"},
            {"ZelvarLineEdit",
             "actualPositionLineEdit;actualAngularVelocityLineEdit;actualTorqueLineEdit;"
             "actualVoltageLineEdit;actualQuadratureCurrentLineEdit;actualTemperatureLineEdit;"
             "modelNumberLineEdit;firmwareVersionLineEdit"},
            {"ZelvarCheckBox",
             "isMovingCheckBox=Is moving:;enableMotorCheckBox=Enable motor;"
             "pendingShadowInstructionCheckBox=Pending shadow instruction:;"
             "overheatingStatusCheckBox=Overheating error;"
             "angleLimitStatusCheckBox=Angle limit error;"
             "inputVoltageStatusCheckBox=Input voltage error;encoderStatusCheckBox=Encoder error;"
             "hallStatusCheckBox=Hall sensor error"},
            {"QLabel",
             "modelNumberLabel=Model number:;firmwareVersionLabel=Firmware version;"
             "baudRateLabel=Baud rate:;operatingModeLabel=Operating mode:;label_6=Limits;"
             "label_7=Adjustments;label_9=Default control parameters;label=Position;"
             "label_2=Angular velocity;label_3=Torque;label_4=Profile;label_5=Miscellaneous"},
            {"ZelvarBaudRateComboBox", "baudRateComboBox=9600|19200|38400|57600|115200|200000|"
                                       "250000|400000|500000|1000000|2000000|[-]"},
            {"ZelvarSpinBox", "idSpinBox=max 253;ackResponseTimeSpinBox=max 508"},
            {"ZelvarComboBox",
             "operatingModeComboBox=[Torque]|Wheel|Joint|Multi-turn|Stepper|-;"
             "inputModeComboBox=[Trajectory]|Position|-;"
             "targetAngularVelocityDirectionComboBox=Counter-clockwise|Clockwise|[-];"
             "targetTorqueDirectionComboBox=Counter-clockwise|Clockwise|[-]"},
            {"ZelvarLabel", "inputModeLabel=Input mode:;"
                            "defPositionProportionalTermLabel=Position proportional term:;"
                            "defVelocityFeedforwardTermLabel=Velocity feedforward term:;"
                            "defVelocityProportionalTermLabel=Velocity proportional term:;"
                            "defVelocityIntegralTermLabel=Velocity integral term:;"
                            "defCurrentFeedforwardTermLabel=Current feedforward term:;"
                            "positionProportionalTermLabel=Proportional term:;"
                            "velocityFeedforwardTermLabel=Velocity feedforward term:;"
                            "targetAngularVelocityDirectionLabel=Direction:;"
                            "velocityProportionalTermLabel=Proportional term:;"
                            "velocityIntegralTermLabel=Integral term:;"
                            "currentFeedforwardTermLabel=Current feedforward term:;"
                            "targetTorqueDirectionLabel=Direction:"},
            {"ZelvarDoubleSpinBox",
             "clockwiseLimitDoubleSpinBox;counterClockwiseLimitDoubleSpinBox;"
             "temperatureLimitDoubleSpinBox;minVoltageLimitDoubleSpinBox;"
             "maxVoltageLimitDoubleSpinBox;quadratureCurrentLimitDoubleSpinBox;"
             "angularVelocityLimitDoubleSpinBox;accelerationLimitDoubleSpinBox;"
             "hornPositionOffsetDoubleSpinBox;movingThresholdDoubleSpinBox;"
             "defPositionProportionalTermDoubleSpinBox=max 31.87;"
             "defVelocityFeedforwardTermDoubleSpinBox=max 1.02 step 0.01;"
             "defVelocityProportionalTermDoubleSpinBox=max 31.87;"
             "defVelocityIntegralTermDoubleSpinBox=max 124.5;"
             "defCurrentFeedforwardTermDoubleSpinBox=max 1.02 step 0.01;"
             "defAngularVelocityProfileDoubleSpinBox;defAccelerationProfileDoubleSpinBox;"
             "targetPositionDoubleSpinBox;positionProportionalTermDoubleSpinBox=max 31.87;"
             "velocityFeedforwardTermDoubleSpinBox=max 1.02 step 0.01;"
             "targetAngularVelocityDoubleSpinBox;velocityProportionalTermDoubleSpinBox=max 31.87;"
             "velocityIntegralTermDoubleSpinBox=max 124.5;"
             "currentFeedforwardTermDoubleSpinBox=max 1.02 step 0.01;targetTorqueDoubleSpinBox;"
             "angularVelocityProfileDoubleSpinBox;accelerationProfileDoubleSpinBox"},
            {"ZelvarGroupToolButton",
             "nvParamsCancelToolButton=Cancel;nvParamsEditSaveToolButton=Edit;"
             "vParamsCancelToolButton=Cancel;vParamsEditSaveToolButton=Edit"},
            {"ZelvarStatusCheckBox",
             "overloadStatusCheckBox=Overload error;processStatusCheckBox=Process failure;"
             "instructionStatusCheckBox=Instruction error;checksumStatusCheckBox=Checksum error;"
             "rangeStatusCheckBox=Data range error;dataLengthStatusCheckBox=Data length error;"
             "dataLimitStatusCheckBox=Data limit error;accessStatusCheckBox=Access error;"
             "alertStatusCheckBox=Alert"},
        };
        for (const auto &[className, entries] : classes)
            for (const QString &entry : QString(entries).split(';')) {
                const QString name = entry.section('=', 0, 0);
                QTest::newRow(qPrintable(name)) << name << className << entry.section('=', 1);
            }
    }
    void widgets()
    {
        QFETCH(QString, name);
        QFETCH(QString, className);
        QFETCH(QString, text);

        QWidget *found = view->findChild<QWidget *>(name);
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

    // The groups have fixed sizes; the form's own font keeps every caption inside them, units
    // included, whatever the desktop's font. Shown values and the device's ranges widen the
    // spin boxes, leaving captions less room; minus signs must still fit.
    void captionsAreNotClipped()
    {
        view->resize(1120, 860);
        view->show();
        QVERIFY(QTest::qWaitForWindowExposed(view.get()));
        for (const bool loaded : {false, true}) {
            if (loaded) {
                const auto groups = view->findChildren<ZelvarParametersGroupBox *>();
                connectAll(QList<QObject *>(groups.begin(), groups.end()));
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
        }
        view->hide();
    }

    // Register 107 reaches the bit boxes through the poll map; the decoding itself is the
    // status helper's.
    void hardwareStatusReachesTheBitBoxes()
    {
        auto *overheating = view->findChild<QCheckBox *>("overheatingStatusCheckBox");
        auto *hall = view->findChild<QCheckBox *>("hallStatusCheckBox");
        connectAll({overheating, hall});
        deliver(107, 0x04);
        QVERIFY(overheating->isChecked());
        QVERIFY(!hall->isChecked());
    }

    void secondViewSharesTheHelpers()
    {
        const auto status = StatusHelper::instance();
        auto *firstMoving = view->findChild<QCheckBox *>("isMovingCheckBox");
        connectAll({firstMoving});
        deliver(99, 0);
        {
            EditView second;
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
        QVERIFY(view->findChild<QCheckBox *>("alertStatusCheckBox")->isChecked());
    }
};

QTEST_MAIN(TestEditView)
#include "tst_editview.moc"
