#include "device/devicehelper.h"
#include "widgets/iconnectinfo.h"
#include "widgets/igroupinputcomponent.h"
#include "widgets/iunitdatafield.h"
#include "widgets/zelvarbaudratecombobox.h"
#include "widgets/zelvarcheckbox.h"
#include "widgets/zelvarcombobox.h"
#include "widgets/zelvardoublespinbox.h"
#include "widgets/zelvargrouptoolbutton.h"
#include "widgets/zelvarlabel.h"
#include "widgets/zelvarlineedit.h"
#include "widgets/zelvarparametersgroupbox.h"
#include "widgets/zelvarspinbox.h"
#include "widgets/zelvarstatuscheckbox.h"
#include "widgets/zelvarunitlabel.h"

#include <QSignalSpy>
#include <QtTest>

namespace {

void loadDevice(bool dynamixelAx12)
{
    QByteArray reply(11, '\0');
    reply[5] = char(dynamixelAx12 ? 12 : 13);
    DeviceHelper::instance()->onModelNumberRead(reply);
}

template<typename Widget>
Widget *makeField(QWidget *group, const QByteArray &name)
{
    auto *widget = new Widget(group);
    widget->setObjectName(QLatin1String(name));
    return widget;
}

QList<bool> dirtyMarks(const QSignalSpy &spy)
{
    QList<bool> marks;
    for (const QList<QVariant> &arguments : spy)
        marks << arguments.at(0).toBool();
    return marks;
}

} // namespace

class TestBoundWidgets : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void interfaceCasts_data();
    void interfaceCasts();
    void comboDirtyMarks_data();
    void comboDirtyMarks();
    void valueIgnoredWhileDisconnected();
    void blankUnlessConnectedValuedAndUnlocked();
    void conversions_data();
    void conversions();
    void lineEditFormats_data();
    void lineEditFormats();
    void checkBoxCaptionRecolouring();
    void unitLabelCaptions();
    void statusBoxTurnsOffOnDisconnect();
    void fieldUnknownToDeviceKeepsPlaceholder();

private:
    ZelvarComboBox *addCombo(const char *name, int items);

    std::unique_ptr<ZelvarParametersGroupBox> group;
};

void TestBoundWidgets::initTestCase()
{
    QLocale::setDefault(QLocale::c());
    DeviceHelper::instance(nullptr, [] {});
}

void TestBoundWidgets::init()
{
    group = std::make_unique<ZelvarParametersGroupBox>();
    group->resize(381, 400);
}

void TestBoundWidgets::cleanup()
{
    group.reset();
}

ZelvarComboBox *TestBoundWidgets::addCombo(const char *name, int items)
{
    auto *box = makeField<ZelvarComboBox>(group.get(), name);
    for (int i = 0; i < items; ++i)
        box->addItem(QString::number(i));
    return box;
}

void TestBoundWidgets::interfaceCasts_data()
{
    QTest::addColumn<QObject *>("widget");
    QTest::addColumn<bool>("input");
    QTest::addColumn<bool>("dataField");
    QTest::addColumn<bool>("field");
    QTest::newRow("combo box") << static_cast<QObject *>(new ZelvarComboBox) << true << true
                               << true;
    QTest::newRow("baud rate") << static_cast<QObject *>(new ZelvarBaudRateComboBox) << true << true
                               << true;
    QTest::newRow("check box") << static_cast<QObject *>(new ZelvarCheckBox) << true << true
                               << true;
    QTest::newRow("spin box") << static_cast<QObject *>(new ZelvarSpinBox) << true << true << true;
    QTest::newRow("double spin box")
        << static_cast<QObject *>(new ZelvarDoubleSpinBox) << true << true << true;
    QTest::newRow("line edit") << static_cast<QObject *>(new ZelvarLineEdit) << true << true
                               << true;
    QTest::newRow("label") << static_cast<QObject *>(new ZelvarLabel) << false << false << true;
    QTest::newRow("unit label") << static_cast<QObject *>(new ZelvarUnitLabel) << false << false
                                << true;
    QTest::newRow("tool button") << static_cast<QObject *>(new ZelvarGroupToolButton) << false
                                 << false << false;
    QTest::newRow("status box") << static_cast<QObject *>(new ZelvarStatusCheckBox) << false
                                << false << false;
}

// Groups and controllers find the controls only through these casts.
void TestBoundWidgets::interfaceCasts()
{
    QFETCH(QObject *, widget);
    QFETCH(bool, input);
    QFETCH(bool, dataField);
    QFETCH(bool, field);
    std::unique_ptr<QObject> owner(widget);
    QCOMPARE(dynamic_cast<IGroupInputComponent *>(widget) != nullptr, input);
    QCOMPARE(dynamic_cast<IUnitDataField *>(widget) != nullptr, dataField);
    QCOMPARE(dynamic_cast<IZelvarField *>(widget) != nullptr, field);
    QVERIFY(dynamic_cast<IConnectInfo *>(widget));
}

void TestBoundWidgets::comboDirtyMarks_data()
{
    QTest::addColumn<bool>("baudRate");
    QTest::addColumn<QList<int>>("choices");
    QTest::addColumn<QList<bool>>("marks");
    QTest::newRow("change and back") << false << QList<int>{3, 2} << QList<bool>{true, false};
    QTest::newRow("two changes, one mark") << false << QList<int>{3, 4} << QList<bool>{true};
    QTest::newRow("index 10 counts as clean") << false << QList<int>{10} << QList<bool>{false};
    QTest::newRow("placeholder of the baud rate") << true << QList<int>{11} << QList<bool>{false};
    QTest::newRow("index 10 is a baud rate") << true << QList<int>{10} << QList<bool>{true};
}

void TestBoundWidgets::comboDirtyMarks()
{
    QFETCH(bool, baudRate);
    QFETCH(QList<int>, choices);
    QFETCH(QList<bool>, marks);
    ZelvarComboBox *box = baudRate
                              ? makeField<ZelvarBaudRateComboBox>(group.get(), "baudRateComboBox")
                              : addCombo("operatingModeComboBox", 0);
    for (int i = 0; i < 12; ++i)
        box->addItem(QString::number(i));
    group->connected();
    loadDevice(false);
    box->setValue(baudRate ? 51 : 2);
    QCOMPARE(box->currentIndex(), 2);
    group->editMode = true;
    box->setEditable(true);

    QSignalSpy spy(box, SIGNAL(setIsDirty(bool)));
    for (int choice : choices)
        box->setCurrentIndex(choice);
    QCOMPARE(dirtyMarks(spy), marks);
}

void TestBoundWidgets::valueIgnoredWhileDisconnected()
{
    ZelvarComboBox *box = addCombo("targetTorqueDirectionComboBox", 3);
    loadDevice(false);
    box->setValue(1);
    QCOMPARE(box->displayedText(), QString());
    group->connected();
    loadDevice(false);
    box->setValue(1);
    QCOMPARE(box->displayedText(), QStringLiteral("1"));
}

void TestBoundWidgets::blankUnlessConnectedValuedAndUnlocked()
{
    auto *spin = makeField<ZelvarDoubleSpinBox>(group.get(), "temperatureLimitDoubleSpinBox");
    ZelvarComboBox *box = addCombo("operatingModeComboBox", 6);
    group->connected();
    loadDevice(false);
    QCOMPARE(spin->text(), QString());
    QCOMPARE(box->displayedText(), QString());

    spin->setValue(80);
    box->setValue(1);
    QCOMPARE(spin->text(), QStringLiteral("80"));
    QCOMPARE(box->displayedText(), QStringLiteral("1"));

    spin->setLocked(true);
    box->setLocked(true);
    QCOMPARE(spin->text(), QString());
    QCOMPARE(box->displayedText(), QString());

    spin->setLocked(false);
    group->disconnected();
    QCOMPARE(spin->text(), QString());
    QCOMPARE(box->currentIndex(), 5);
}

void TestBoundWidgets::conversions_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("raw");
    QTest::addColumn<double>("shown");
    QTest::addColumn<double>("edited");
    QTest::addColumn<int>("saved");
    // The double spin box maps rawMin to physicalMin; shown in radians with 3 decimals.
    QTest::newRow("angle limit at rawMin")
        << "clockwiseLimitDoubleSpinBox" << -2047 << -3.142 << 1.0 << 651;
    QTest::newRow("angle limit at zero")
        << "clockwiseLimitDoubleSpinBox" << 0 << 0.0 << 0.0019 << 1;
    // 254 raw counts span 508 us: 7 us is 3.5 counts, sent as 3.
    QTest::newRow("integer spin box truncates")
        << "ackResponseTimeSpinBox" << 10 << 20.0 << 7.0 << 3;
}

void TestBoundWidgets::conversions()
{
    QFETCH(QString, name);
    QFETCH(int, raw);
    QFETCH(double, shown);
    QFETCH(double, edited);
    QFETCH(int, saved);
    const QByteArray objectName = name.toLatin1();
    QWidget *widget =
        name.endsWith(QLatin1String("DoubleSpinBox"))
            ? static_cast<QWidget *>(makeField<ZelvarDoubleSpinBox>(group.get(), objectName))
            : makeField<ZelvarSpinBox>(group.get(), objectName);
    group->connected();
    loadDevice(false);
    auto *field = dynamic_cast<IUnitDataField *>(widget);
    field->setValue(raw);
    if (auto *spin = qobject_cast<QDoubleSpinBox *>(widget)) {
        QCOMPARE(spin->value(), shown);
        QCOMPARE(field->value(), raw);
        spin->QDoubleSpinBox::setValue(edited);
    } else {
        auto *intSpin = qobject_cast<QSpinBox *>(widget);
        QCOMPARE(intSpin->value(), int(shown));
        QCOMPARE(field->value(), raw);
        intSpin->QSpinBox::setValue(int(edited));
    }
    QCOMPARE(field->value(), saved);
}

void TestBoundWidgets::lineEditFormats_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("raw");
    QTest::addColumn<QString>("text");
    QTest::newRow("model number") << "modelNumberLineEdit" << 0x0A05 << "10.5";
    QTest::newRow("model number 1.2") << "modelNumberLineEdit" << 0x0102 << "1.2";
    QTest::newRow("firmware as integer") << "firmwareVersionLineEdit" << 22 << "22";
    QTest::newRow("voltage, one decimal") << "actualVoltageLineEdit" << 120 << "12.0";
    QTest::newRow("position in radians") << "actualPositionLineEdit" << 4096 << "6.283";
}

void TestBoundWidgets::lineEditFormats()
{
    QFETCH(QString, name);
    QFETCH(int, raw);
    QFETCH(QString, text);
    auto *edit = makeField<ZelvarLineEdit>(group.get(), name.toLatin1());
    group->connected();
    loadDevice(false);
    edit->setValue(raw);
    QCOMPARE(edit->text(), text);
    group->disconnected();
    QCOMPARE(edit->text(), QString());
}

void TestBoundWidgets::checkBoxCaptionRecolouring()
{
    auto *box = makeField<ZelvarCheckBox>(group.get(), "enableMotorCheckBox");
    box->setText(QStringLiteral("Enable motor"));
    QVERIFY(box->styleSheet().contains(QLatin1String("color:#4d4c4c;")));
    QVERIFY(box->styleSheet().contains(QLatin1String("background:#eceae9")));
    box->setLocked(true);
    QVERIFY(box->styleSheet().contains(QLatin1String("color:#51514F;")));
    box->setLocked(true);
    QVERIFY(box->styleSheet().contains(QLatin1String("color:#9F9E9E;")));

    group->connected();
    loadDevice(false);
    box->setLocked(false);
    box->setValue(1);
    QVERIFY(box->isChecked());
    QVERIFY(box->styleSheet().contains(QLatin1String("background:#ff461d")));
}

void TestBoundWidgets::unitLabelCaptions()
{
    auto *id = makeField<ZelvarUnitLabel>(group.get(), "idLabel");
    id->setText(QStringLiteral("ID"));
    QCOMPARE(id->text(), QStringLiteral("ID:"));
    auto *temperature = makeField<ZelvarUnitLabel>(group.get(), "upperTemperatureLimitLabel");
    temperature->setText(QStringLiteral("Temperature limit"));
    temperature->setText(QStringLiteral("ignored"));
    QCOMPARE(temperature->text(), QStringLiteral("Temperature limit (°C):"));
}

void TestBoundWidgets::statusBoxTurnsOffOnDisconnect()
{
    auto *status = new ZelvarStatusCheckBox(group.get());
    status->connected();
    status->setStatus(true);
    QVERIFY(status->styleSheet().contains(QLatin1String("background:#ff461d")));
    status->disconnected();
    QVERIFY(!status->isChecked());
    QVERIFY(status->styleSheet().contains(QLatin1String("background:#eceae9")));
}

// The AX-12 model lacks most fields; those stay on their placeholder.
void TestBoundWidgets::fieldUnknownToDeviceKeepsPlaceholder()
{
    auto *target = makeField<ZelvarDoubleSpinBox>(group.get(), "targetPositionDoubleSpinBox");
    auto *limit = makeField<ZelvarDoubleSpinBox>(group.get(), "clockwiseLimitDoubleSpinBox");
    ZelvarComboBox *mode = addCombo("operatingModeComboBox", 6);
    group->connected();
    loadDevice(true);
    target->setValue(1000);
    mode->applyDependency();
    mode->setValue(1);
    limit->setValue(2047);
    QCOMPARE(target->text(), QString());
    QCOMPARE(mode->displayedText(), QString());
    QCOMPARE(limit->value(), 2047);
    loadDevice(false);
}

QTEST_MAIN(TestBoundWidgets)
#include "tst_boundwidgets.moc"
