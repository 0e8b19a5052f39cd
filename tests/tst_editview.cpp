#include "views/editview.h"

#include "device/devicehelper.h"
#include "device/fieldhelper.h"
#include "device/statushelper.h"
#include "device/uiregisterhelper.h"
#include "settings/settings.h"
#include "settings/settingsdialog.h"
#include "widgets/iconnectinfo.h"
#include "widgets/uigrouphelper.h"
#include "widgets/zelvargrouptoolbutton.h"
#include "widgets/zelvarparametersgroupbox.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QScrollArea>
#include <QSpinBox>
#include <QtTest>

class TestEditView : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();

    void widgetClassAndText_data();
    void widgetClassAndText();
    void groupBoxes_data();
    void groupBoxes();
    void gridCells_data();
    void gridCells();
    void comboBoxItems_data();
    void comboBoxItems();
    void limits_data();
    void limits();
    void statusBoxes_data();
    void statusBoxes();
    void sectionHeadings_data();
    void sectionHeadings();
    void toolButtons_data();
    void toolButtons();
    void scrollArea();
    void tabOrder();
    void captionsAreNotClipped_data();
    void captionsAreNotClipped();
    void hardwareStatusReachesTheBitBoxes_data();
    void hardwareStatusReachesTheBitBoxes();
    void secondViewSharesTheHelpers();

private:
    template<typename T = QWidget>
    T *widget(const QString &name) const;

    std::unique_ptr<SettingsDialog> settingsDialog;
    std::unique_ptr<EditView> view;
};

template<typename T>
T *TestEditView::widget(const QString &name) const
{
    T *found = view->findChild<T *>(name);
    if (!found)
        qWarning("no %s named %s", T::staticMetaObject.className(), qPrintable(name));
    return found;
}

void TestEditView::initTestCase()
{
    Q_INIT_RESOURCE(resources);
    // The longest unit names, so that the captions are measured at their widest.
    Settings units(QStringLiteral("units settings"));
    units.setValue(QStringLiteral("angle"), 1);
    units.setValue(QStringLiteral("torque"), 1);
    units.setValue(QStringLiteral("current"), 1);
    settingsDialog = std::make_unique<SettingsDialog>();
    view = std::make_unique<EditView>();
}

void TestEditView::cleanupTestCase()
{
    view.reset();
    settingsDialog.reset();
}

void TestEditView::widgetClassAndText_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("className");
    QTest::addColumn<QString>("text"); // a unit label's caption is followed by its unit

    const QVector<std::array<const char *, 3>> rows = {
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
        {"baudRateComboBox", "ZelvarBaudRateComboBox", ""},
        {"idLabel", "ZelvarUnitLabel", "ID"},
        {"idSpinBox", "ZelvarSpinBox", ""},
        {"ackResponseTimeLabel", "ZelvarUnitLabel", "Acknowledge response time"},
        {"ackResponseTimeSpinBox", "ZelvarSpinBox", ""},
        {"operatingModeLabel", "QLabel", "Operating mode:"},
        {"operatingModeComboBox", "ZelvarComboBox", ""},
        {"inputModeLabel", "ZelvarLabel", "Input mode:"},
        {"inputModeComboBox", "ZelvarComboBox", ""},
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
        {"defPositionProportionalTermDoubleSpinBox", "ZelvarDoubleSpinBox", ""},
        {"defVelocityFeedforwardTermLabel", "ZelvarLabel", "Velocity feedforward term:"},
        {"defVelocityFeedforwardTermDoubleSpinBox", "ZelvarDoubleSpinBox", ""},
        {"defVelocityProportionalTermLabel", "ZelvarLabel", "Velocity proportional term:"},
        {"defVelocityProportionalTermDoubleSpinBox", "ZelvarDoubleSpinBox", ""},
        {"defVelocityIntegralTermLabel", "ZelvarLabel", "Velocity integral term:"},
        {"defVelocityIntegralTermDoubleSpinBox", "ZelvarDoubleSpinBox", ""},
        {"defCurrentFeedforwardTermLabel", "ZelvarLabel", "Current feedforward term:"},
        {"defCurrentFeedforwardTermDoubleSpinBox", "ZelvarDoubleSpinBox", ""},
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
        {"positionProportionalTermDoubleSpinBox", "ZelvarDoubleSpinBox", ""},
        {"velocityFeedforwardTermLabel", "ZelvarLabel", "Velocity feedforward term:"},
        {"velocityFeedforwardTermDoubleSpinBox", "ZelvarDoubleSpinBox", ""},
        {"label_2", "QLabel", "Angular velocity"},
        {"targetAngularVelocityLabel", "ZelvarUnitLabel", "Target velocity"},
        {"targetAngularVelocityDoubleSpinBox", "ZelvarDoubleSpinBox", ""},
        {"targetAngularVelocityDirectionLabel", "ZelvarLabel", "Direction:"},
        {"targetAngularVelocityDirectionComboBox", "ZelvarComboBox", ""},
        {"velocityProportionalTermLabel", "ZelvarLabel", "Proportional term:"},
        {"velocityProportionalTermDoubleSpinBox", "ZelvarDoubleSpinBox", ""},
        {"velocityIntegralTermLabel", "ZelvarLabel", "Integral term:"},
        {"velocityIntegralTermDoubleSpinBox", "ZelvarDoubleSpinBox", ""},
        {"currentFeedforwardTermLabel", "ZelvarLabel", "Current feedforward term:"},
        {"currentFeedforwardTermDoubleSpinBox", "ZelvarDoubleSpinBox", ""},
        {"label_3", "QLabel", "Torque"},
        {"targetTorqueLabel", "ZelvarUnitLabel", "Target torque"},
        {"targetTorqueDoubleSpinBox", "ZelvarDoubleSpinBox", ""},
        {"targetTorqueDirectionLabel", "ZelvarLabel", "Direction:"},
        {"targetTorqueDirectionComboBox", "ZelvarComboBox", ""},
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

void TestEditView::widgetClassAndText()
{
    QFETCH(QString, name);
    QFETCH(QString, className);
    QFETCH(QString, text);

    QWidget *found = widget(name);
    QVERIFY(found);
    QCOMPARE(found->metaObject()->className(), className);
    if (className == "ZelvarUnitLabel") {
        const QString shown = static_cast<QLabel *>(found)->text();
        QVERIFY2(shown.startsWith(text), qPrintable(shown));
    } else if (!text.isEmpty()) {
        QCOMPARE(found->property("text").toString(), text);
    }
}

void TestEditView::groupBoxes_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QRect>("geometry");
    QTest::addColumn<QString>("layout");

    QTest::newRow("realtime") << "realtimeInformationGroupBox"
                              << "Realtime information" << QRect(0, 0, 283, 241) << "gridLayout_5";
    QTest::newRow("version") << "versionInfoGroupBox"
                             << "Version information" << QRect(0, 250, 281, 91) << "gridLayout_3";
    QTest::newRow("hardware") << "zelvarHardwareErrorGroupBox"
                              << "Hardware error status" << QRect(0, 350, 281, 201) << "";
    QTest::newRow("packet") << "zelvarPacketStatusGroupBox"
                            << "Status packet information" << QRect(0, 560, 281, 261) << "";
    QTest::newRow("non-volatile") << "nonVolatileParamsGroupBox"
                                  << "Parameters (non-volatile)" << QRect(280, 0, 381, 821)
                                  << "gridLayout_9";
    QTest::newRow("volatile") << "volatileParamsGroupBox"
                              << "Parameters (volatile)" << QRect(680, 0, 381, 821)
                              << "gridLayout_12";
}

void TestEditView::groupBoxes()
{
    QFETCH(QString, name);
    QFETCH(QString, title);
    QFETCH(QRect, geometry);
    QFETCH(QString, layout);

    auto *group = widget<QGroupBox>(name);
    QVERIFY(group);
    QCOMPARE(group->metaObject()->className(), "ZelvarParametersGroupBox");
    QCOMPARE(group->parentWidget()->objectName(), QString("scrollAreaWidgetContents"));
    QCOMPARE(group->title(), title);
    QCOMPARE(group->geometry(), geometry);
    QVERIFY(group->styleSheet().contains("border: 1px solid #b8a692;"));
    QCOMPARE(group->layout() ? group->layout()->objectName() : QString(), layout);
}

void TestEditView::gridCells_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("layout");
    QTest::addColumn<QVector<int>>("cell"); // row, column, row span, column span

    const QVector<std::tuple<const char *, const char *, QVector<int>>> rows = {
        {"positionLabel", "gridLayout_5", {0, 0, 1, 1}},
        {"actualPositionLineEdit", "gridLayout_5", {0, 1, 1, 1}},
        {"temperatureLabel", "gridLayout_5", {5, 0, 1, 1}},
        {"actualTemperatureLineEdit", "gridLayout_5", {5, 1, 1, 1}},
        {"isMovingCheckBox", "gridLayout_5", {6, 0, 1, 2}},
        {"modelNumberLabel", "gridLayout_3", {0, 0, 1, 1}},
        {"firmwareVersionLineEdit", "gridLayout_3", {1, 1, 1, 1}},
        {"baudRateLabel", "gridLayout_9", {2, 0, 1, 1}},
        {"baudRateComboBox", "gridLayout_9", {2, 2, 1, 2}},
        {"idSpinBox", "gridLayout_9", {3, 3, 1, 1}},
        {"ackResponseTimeLabel", "gridLayout_9", {4, 0, 1, 1}},
        {"operatingModeComboBox", "gridLayout_9", {5, 2, 1, 2}},
        {"inputModeLabel", "gridLayout_9", {6, 0, 1, 1}},
        {"inputModeComboBox", "gridLayout_9", {6, 2, 1, 2}},
        {"clockwiseLimitDoubleSpinBox", "gridLayout_9", {8, 3, 1, 1}},
        {"accelerationLimitLabel", "gridLayout_9", {15, 0, 1, 1}},
        {"movingThresholdDoubleSpinBox", "gridLayout_9", {18, 3, 1, 1}},
        {"defAccelerationProfileDoubleSpinBox", "gridLayout_9", {26, 3, 1, 1}},
        {"targetPositionLabel", "gridLayout_12", {6, 0, 1, 2}},
        {"targetPositionDoubleSpinBox", "gridLayout_12", {6, 2, 1, 1}},
        {"velocityFeedforwardTermDoubleSpinBox", "gridLayout_12", {8, 2, 1, 1}},
        {"targetAngularVelocityDirectionLabel", "gridLayout_12", {12, 0, 1, 1}},
        {"targetAngularVelocityDirectionComboBox", "gridLayout_12", {12, 1, 1, 2}},
        {"targetTorqueDirectionLabel", "gridLayout_12", {18, 0, 1, 1}},
        {"targetTorqueDirectionComboBox", "gridLayout_12", {18, 1, 1, 2}},
        {"accelerationProfileDoubleSpinBox", "gridLayout_12", {21, 2, 1, 1}},
        {"enableMotorCheckBox", "gridLayout_12", {24, 0, 1, 3}},
        {"pendingShadowInstructionCheckBox", "gridLayout_12", {25, 0, 1, 3}},
    };
    for (const auto &[name, layout, cell] : rows)
        QTest::newRow(name) << name << layout << cell;
}

void TestEditView::gridCells()
{
    QFETCH(QString, name);
    QFETCH(QString, layout);
    QFETCH(QVector<int>, cell);

    QWidget *found = widget(name);
    QVERIFY(found);
    auto *grid = qobject_cast<QGridLayout *>(found->parentWidget()->layout());
    QVERIFY(grid);
    QCOMPARE(grid->objectName(), layout);
    const int index = grid->indexOf(found);
    QVERIFY(index >= 0);
    QVector<int> actual(4);
    grid->getItemPosition(index, &actual[0], &actual[1], &actual[2], &actual[3]);
    QCOMPARE(actual, cell);
}

void TestEditView::comboBoxItems_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("items");
    QTest::addColumn<QString>("currentText");

    const QStringList directions = {"Counter-clockwise", "Clockwise", "-"};
    QTest::newRow("baud rate") << "baudRateComboBox"
                               << QStringList{"9600",   "19200",   "38400",   "57600",
                                              "115200", "200000",  "250000",  "400000",
                                              "500000", "1000000", "2000000", "-"}
                               << "-";
    QTest::newRow("operating mode")
        << "operatingModeComboBox"
        << QStringList{"Torque", "Wheel", "Joint", "Multi-turn", "Stepper", "-"} << "Torque";
    QTest::newRow("input mode") << "inputModeComboBox" << QStringList{"Trajectory", "Position", "-"}
                                << "Trajectory";
    QTest::newRow("velocity direction")
        << "targetAngularVelocityDirectionComboBox" << directions << "-";
    QTest::newRow("torque direction") << "targetTorqueDirectionComboBox" << directions << "-";
}

void TestEditView::comboBoxItems()
{
    QFETCH(QString, name);
    QFETCH(QStringList, items);
    QFETCH(QString, currentText);

    auto *combo = widget<QComboBox>(name);
    QVERIFY(combo);
    QStringList actual;
    for (int i = 0; i < combo->count(); ++i)
        actual << combo->itemText(i);
    QCOMPARE(actual, items);
    QCOMPARE(combo->currentText(), currentText);
    QVERIFY(!combo->isEditable());
}

void TestEditView::limits_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<QVariant>("value");

    const QSize noMaximum(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    const char *const realtime[] = {
        "actualPositionLineEdit", "actualAngularVelocityLineEdit",   "actualTorqueLineEdit",
        "actualVoltageLineEdit",  "actualQuadratureCurrentLineEdit", "actualTemperatureLineEdit"};
    for (const char *name : realtime) {
        QTest::addRow("%s size", name)
            << name << QByteArray("maximumSize") << QVariant(QSize(80, 25));
        QTest::addRow("%s read-only", name) << name << QByteArray("readOnly") << QVariant(true);
    }
    QTest::newRow("model number") << "modelNumberLineEdit" << QByteArray("maximumSize")
                                  << QVariant(QSize(80, 25));
    QTest::newRow("firmware") << "firmwareVersionLineEdit" << QByteArray("maximumSize")
                              << QVariant(QSize(80, 25));
    QTest::newRow("baud size") << "baudRateComboBox" << QByteArray("maximumSize")
                               << QVariant(QSize(QWIDGETSIZE_MAX, 25));
    QTest::newRow("baud visible") << "baudRateComboBox" << QByteArray("maxVisibleItems")
                                  << QVariant(11);
    QTest::newRow("id maximum") << "idSpinBox" << QByteArray("maximum") << QVariant(253);
    QTest::newRow("id width") << "idSpinBox" << QByteArray("minimumWidth") << QVariant(70);
    QTest::newRow("ack maximum") << "ackResponseTimeSpinBox" << QByteArray("maximum")
                                 << QVariant(508);
    QTest::newRow("ack width") << "ackResponseTimeSpinBox" << QByteArray("maximumWidth")
                               << QVariant(70);
    QTest::newRow("target position width")
        << "targetPositionDoubleSpinBox" << QByteArray("maximumWidth") << QVariant(70);

    const QVector<std::tuple<const char *, double, double>> terms = {
        {"defPositionProportionalTermDoubleSpinBox", 31.87, 1.0},
        {"defVelocityFeedforwardTermDoubleSpinBox", 1.02, 0.01},
        {"defVelocityProportionalTermDoubleSpinBox", 31.87, 1.0},
        {"defVelocityIntegralTermDoubleSpinBox", 124.5, 1.0},
        {"defCurrentFeedforwardTermDoubleSpinBox", 1.02, 0.01},
        {"positionProportionalTermDoubleSpinBox", 31.87, 1.0},
        {"velocityFeedforwardTermDoubleSpinBox", 1.02, 0.01},
        {"velocityProportionalTermDoubleSpinBox", 31.87, 1.0},
        {"velocityIntegralTermDoubleSpinBox", 124.5, 1.0},
        {"currentFeedforwardTermDoubleSpinBox", 1.02, 0.01},
    };
    for (const auto &[name, maximum, step] : terms) {
        QTest::addRow("%s maximum", name) << name << QByteArray("maximum") << QVariant(maximum);
        QTest::addRow("%s step", name) << name << QByteArray("singleStep") << QVariant(step);
    }
    QTest::newRow("clockwise limit has no form maximum")
        << "clockwiseLimitDoubleSpinBox" << QByteArray("maximumSize") << QVariant(noMaximum);
}

void TestEditView::limits()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, property);
    QFETCH(QVariant, value);

    QWidget *found = widget(name);
    QVERIFY(found);
    const QVariant actual = found->property(property);
    QVERIFY2(actual.isValid(), property.constData());
    if (value.type() == QVariant::Double)
        QCOMPARE(actual.toDouble(), value.toDouble());
    else
        QCOMPARE(actual, value);
}

void TestEditView::statusBoxes_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("group");
    QTest::addColumn<int>("y");
    QTest::addColumn<bool>("enabled"); // false: disabled by the form itself

    const QVector<std::tuple<const char *, const char *, int, bool>> rows = {
        {"overloadStatusCheckBox", "zelvarHardwareErrorGroupBox", 20, false},
        {"overheatingStatusCheckBox", "zelvarHardwareErrorGroupBox", 50, true},
        {"angleLimitStatusCheckBox", "zelvarHardwareErrorGroupBox", 80, true},
        {"inputVoltageStatusCheckBox", "zelvarHardwareErrorGroupBox", 110, true},
        {"encoderStatusCheckBox", "zelvarHardwareErrorGroupBox", 140, true},
        {"hallStatusCheckBox", "zelvarHardwareErrorGroupBox", 170, true},
        {"processStatusCheckBox", "zelvarPacketStatusGroupBox", 20, false},
        {"instructionStatusCheckBox", "zelvarPacketStatusGroupBox", 50, false},
        {"checksumStatusCheckBox", "zelvarPacketStatusGroupBox", 79, false},
        {"rangeStatusCheckBox", "zelvarPacketStatusGroupBox", 108, false},
        {"dataLengthStatusCheckBox", "zelvarPacketStatusGroupBox", 140, false},
        {"dataLimitStatusCheckBox", "zelvarPacketStatusGroupBox", 170, false},
        {"accessStatusCheckBox", "zelvarPacketStatusGroupBox", 200, false},
        {"alertStatusCheckBox", "zelvarPacketStatusGroupBox", 230, false},
    };
    for (const auto &[name, group, y, enabled] : rows)
        QTest::newRow(name) << name << group << y << enabled;
}

void TestEditView::statusBoxes()
{
    QFETCH(QString, name);
    QFETCH(QString, group);
    QFETCH(int, y);
    QFETCH(bool, enabled);

    QWidget *box = widget(name);
    QVERIFY(box);
    QCOMPARE(box->parentWidget()->objectName(), group);
    QCOMPARE(box->geometry(), QRect(10, y, 261, 22));
    QCOMPARE(box->layoutDirection(), Qt::RightToLeft);
    if (!enabled)
        QVERIFY(!box->isEnabled());
}

void TestEditView::sectionHeadings_data()
{
    QTest::addColumn<QString>("layout");
    QTest::addColumn<QString>("label");
    QTest::addColumn<int>("maximumWidth");
    QTest::addColumn<int>("row");

    QTest::newRow("limits") << "horizontalLayout1_7"
                            << "label_6" << 50 << 7;
    QTest::newRow("adjustments") << "horizontalLayout1_8"
                                 << "label_7" << 100 << 16;
    QTest::newRow("defaults") << "horizontalLayout1_10"
                              << "label_9" << 200 << 19;
    QTest::newRow("position") << "horizontalLayout1"
                              << "label" << QWIDGETSIZE_MAX << 5;
    QTest::newRow("velocity") << "horizontalLayout1_3"
                              << "label_2" << QWIDGETSIZE_MAX << 10;
    QTest::newRow("torque") << "horizontalLayout1_4"
                            << "label_3" << QWIDGETSIZE_MAX << 16;
    QTest::newRow("profile") << "horizontalLayout1_5"
                             << "label_4" << QWIDGETSIZE_MAX << 19;
    QTest::newRow("miscellaneous") << "horizontalLayout1_6"
                                   << "label_5" << QWIDGETSIZE_MAX << 23;
}

void TestEditView::sectionHeadings()
{
    QFETCH(QString, layout);
    QFETCH(QString, label);
    QFETCH(int, maximumWidth);
    QFETCH(int, row);

    auto *heading = view->findChild<QHBoxLayout *>(layout);
    QVERIFY(heading);
    QCOMPARE(heading->count(), 3);
    for (int i : {0, 2}) {
        auto *line = qobject_cast<QFrame *>(heading->itemAt(i)->widget());
        QVERIFY(line);
        QCOMPARE(int(line->frameShape()), 4);
        QCOMPARE(int(line->frameShadow()), 48);
    }
    auto *caption = qobject_cast<QLabel *>(heading->itemAt(1)->widget());
    QVERIFY(caption);
    QCOMPARE(caption->objectName(), label);
    QCOMPARE(int(caption->alignment()), 132);
    QCOMPARE(caption->maximumWidth(), maximumWidth);

    auto *grid = qobject_cast<QGridLayout *>(heading->parent());
    QVERIFY(grid);
    for (int i = 0; i < grid->count(); ++i) {
        if (grid->itemAt(i)->layout() == heading) {
            int r, c, rs, cs;
            grid->getItemPosition(i, &r, &c, &rs, &cs);
            QCOMPARE(r, row);
            QCOMPARE(c, 0);
            QCOMPARE(cs, grid->columnCount());
        }
    }
}

void TestEditView::toolButtons_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("formLayout");
    QTest::addColumn<int>("role");
    QTest::addColumn<bool>("checkable");
    QTest::addColumn<int>("column");

    QTest::newRow("nv cancel") << "nvParamsCancelToolButton"
                               << "formLayout4" << 1 << false << 0;
    QTest::newRow("nv edit") << "nvParamsEditSaveToolButton"
                             << "formLayout4" << 0 << true << 1;
    QTest::newRow("v cancel") << "vParamsCancelToolButton"
                              << "formLayout6" << 1 << false << 0;
    QTest::newRow("v edit") << "vParamsEditSaveToolButton"
                            << "formLayout6" << 0 << true << 1;
}

void TestEditView::toolButtons()
{
    QFETCH(QString, name);
    QFETCH(QString, formLayout);
    QFETCH(int, role);
    QFETCH(bool, checkable);
    QFETCH(int, column);

    auto *button = widget<ZelvarGroupToolButton>(name);
    QVERIFY(button);
    QCOMPARE(button->role, role);
    QCOMPARE(button->isCheckable(), checkable);
    QVERIFY(!button->icon().pixmap(16).isNull());
    QCOMPARE(button->minimumSize(), QSize(80, 24));
    QCOMPARE(button->toolButtonStyle(), Qt::ToolButtonTextBesideIcon);

    auto *form = view->findChild<QFormLayout *>(formLayout);
    QVERIFY(form);
    QCOMPARE(int(form->formAlignment()), 34);
    QCOMPARE(form->contentsMargins().right(), 6);
    int row = -1;
    QFormLayout::ItemRole itemRole;
    form->getWidgetPosition(button, &row, &itemRole);
    QCOMPARE(row, 0);
    QCOMPARE(int(itemRole), column);
}

void TestEditView::scrollArea()
{
    auto *area = widget<QScrollArea>("scrollArea");
    QVERIFY(area);
    QCOMPARE(view->windowTitle(), QString("Form"));
    QCOMPARE(view->layout()->objectName(), QString("verticalLayout"));
    QCOMPARE(area->minimumSize(), QSize(300, 200));
    QVERIFY(area->autoFillBackground());
    QCOMPARE(int(area->frameShape()), 6);
    QVERIFY(!area->widgetResizable());
    QVERIFY(area->styleSheet().contains("margin-left: 20px;"));
    QCOMPARE(area->widget()->objectName(), QString("scrollAreaWidgetContents"));
    QCOMPARE(area->widget()->size(), QSize(1080, 823));
}

void TestEditView::tabOrder()
{
    const QStringList chain = {"actualPositionLineEdit",
                               "actualAngularVelocityLineEdit",
                               "actualTorqueLineEdit",
                               "actualVoltageLineEdit",
                               "actualQuadratureCurrentLineEdit",
                               "actualTemperatureLineEdit",
                               "isMovingCheckBox",
                               "modelNumberLineEdit",
                               "firmwareVersionLineEdit",
                               "overloadStatusCheckBox",
                               "overheatingStatusCheckBox",
                               "angleLimitStatusCheckBox",
                               "inputVoltageStatusCheckBox",
                               "nvParamsCancelToolButton",
                               "nvParamsEditSaveToolButton",
                               "baudRateComboBox",
                               "idSpinBox",
                               "ackResponseTimeSpinBox",
                               "operatingModeComboBox",
                               "clockwiseLimitDoubleSpinBox",
                               "counterClockwiseLimitDoubleSpinBox",
                               "temperatureLimitDoubleSpinBox",
                               "minVoltageLimitDoubleSpinBox",
                               "maxVoltageLimitDoubleSpinBox",
                               "quadratureCurrentLimitDoubleSpinBox",
                               "angularVelocityLimitDoubleSpinBox",
                               "accelerationLimitDoubleSpinBox",
                               "hornPositionOffsetDoubleSpinBox",
                               "movingThresholdDoubleSpinBox",
                               "vParamsCancelToolButton",
                               "vParamsEditSaveToolButton",
                               "targetPositionDoubleSpinBox",
                               "positionProportionalTermDoubleSpinBox",
                               "velocityFeedforwardTermDoubleSpinBox",
                               "targetAngularVelocityDoubleSpinBox",
                               "targetAngularVelocityDirectionComboBox",
                               "velocityProportionalTermDoubleSpinBox",
                               "velocityIntegralTermDoubleSpinBox",
                               "targetTorqueDoubleSpinBox",
                               "targetTorqueDirectionComboBox",
                               "angularVelocityProfileDoubleSpinBox",
                               "accelerationProfileDoubleSpinBox",
                               "enableMotorCheckBox",
                               "pendingShadowInstructionCheckBox",
                               "scrollArea"};
    for (int i = 0; i + 1 < chain.size(); ++i) {
        QWidget *from = widget(chain[i]);
        QWidget *to = widget(chain[i + 1]);
        QVERIFY(from && to);
        // Step over the widget's own inner parts (a spin box's line edit) and over
        // widgets that tab never stops at (labels, lines).
        QWidget *next = from->nextInFocusChain();
        while (next != to && !to->isAncestorOf(next) &&
               (from->isAncestorOf(next) || !(next->focusPolicy() & Qt::TabFocus)))
            next = next->nextInFocusChain();
        QVERIFY2(next == to || to->isAncestorOf(next),
                 qPrintable(chain[i] + " is followed by " + next->objectName()));
    }
}

namespace {

// Brings the widgets up as a connection does, with a servo of our own identified.
template<typename Widget>
void connectAll(const QList<Widget *> &widgets)
{
    const auto deviceHelper = DeviceHelper::instance(nullptr, [] {});
    for (Widget *widget : widgets)
        dynamic_cast<IConnectInfo *>(widget)->connected();
    deviceHelper->onModelNumberRead(QByteArray());
}

// What the scheduler does with one register of a reply.
void deliver(uint8_t address, int32_t value)
{
    UiRegisterHelper::instance()->item(address).callback(value);
}

} // namespace

void TestEditView::captionsAreNotClipped_data()
{
    QTest::addColumn<bool>("loaded");
    QTest::newRow("disconnected") << false;
    // Shown values and the device's ranges widen the spin boxes, which leaves less room
    // for the captions.
    QTest::newRow("values shown") << true;
}

void TestEditView::captionsAreNotClipped()
{
    QFETCH(bool, loaded);

    // The groups have fixed sizes; the form's own font keeps every caption inside them,
    // units included, whatever the desktop's font.
    if (loaded) {
        connectAll(view->findChildren<ZelvarParametersGroupBox *>());
        for (const auto &item : UiRegisterHelper::instance()->pollMap())
            deliver(item.first, 0);
    }
    view->resize(1120, 860);
    view->show();
    QVERIFY(QTest::qWaitForWindowExposed(view.get()));
    const QList<QLabel *> labels = view->findChildren<QLabel *>();
    for (const QLabel *label : labels) {
        if (label->text().isEmpty())
            continue;
        const int needed = label->fontMetrics().horizontalAdvance(label->text());
        QVERIFY2(label->contentsRect().width() >= needed,
                 qPrintable(QString("%1: %2 px for %3 px of \"%4\"")
                                .arg(label->objectName())
                                .arg(label->contentsRect().width())
                                .arg(needed)
                                .arg(label->text())));
    }
    view->hide();
}

void TestEditView::hardwareStatusReachesTheBitBoxes_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("checked"); // overheating, angle limit, input voltage, encoder, hall

    QTest::newRow("0x00") << 0x00 << "-----";
    QTest::newRow("0x1F") << 0x1F << "xxxxx";
    QTest::newRow("0x60") << 0x60 << "-----";
    QTest::newRow("0x01 input voltage") << 0x01 << "--x--";
    QTest::newRow("0x02 hall") << 0x02 << "----x";
    QTest::newRow("0x14 overheating, angle limit") << 0x14 << "xx---";
}

void TestEditView::hardwareStatusReachesTheBitBoxes()
{
    QFETCH(int, status);
    QFETCH(QString, checked);

    const QStringList names = {"overheatingStatusCheckBox", "angleLimitStatusCheckBox",
                               "inputVoltageStatusCheckBox", "encoderStatusCheckBox",
                               "hallStatusCheckBox"};
    QList<QWidget *> boxes;
    for (const QString &name : names)
        boxes << widget(name);
    connectAll(boxes);

    deliver(107, status);
    QString actual;
    for (QWidget *box : boxes)
        actual += static_cast<QCheckBox *>(box)->isChecked() ? 'x' : '-';
    QCOMPARE(actual, checked);
    // The overload box has no bit.
    QVERIFY(!widget<QCheckBox>("overloadStatusCheckBox")->isChecked());
}

void TestEditView::secondViewSharesTheHelpers()
{
    const auto groups = UiGroupHelper::instance();
    const auto status = StatusHelper::instance();
    const auto fields = FieldHelper::instance();
    QVERIFY(groups && status && fields);

    auto *firstMoving = widget<QCheckBox>("isMovingCheckBox");
    connectAll(QList<QCheckBox *>{firstMoving});
    deliver(99, 0);
    QVERIFY(!firstMoving->isChecked());
    {
        EditView second;
        QCOMPARE(UiGroupHelper::instance(), groups);
        QCOMPARE(StatusHelper::instance(), status);
        QCOMPARE(FieldHelper::instance(), fields);

        // The second view's fields replace the first's under the same names.
        auto *secondMoving = second.findChild<QCheckBox *>("isMovingCheckBox");
        connectAll(QList<QCheckBox *>{secondMoving});
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
    status->updateStatusPacket(0);
    QVERIFY(!widget<QCheckBox>("alertStatusCheckBox")->isChecked());
}

QTEST_MAIN(TestEditView)
#include "tst_editview.moc"
