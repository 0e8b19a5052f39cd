#include "portprovider.h"
#include "serialportbackend.h"
#include "settings/settingsdialog.h"

#include <QComboBox>
#include <QGroupBox>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QTabWidget>
#include <QtTest>

namespace {
// Two ports with known details, listed ahead of whatever the machine has.
class KnownPorts : public PortProvider
{
public:
    std::vector<SerialPortItem> ports() const override
    {
        return {SerialPortItem("zelvar-test-a", "USB adapter", "Acme", "/dev/zelvar-test-a", 0x0403,
                               0x6A0F),
                SerialPortItem("zelvar-test-b", "", "", "/dev/zelvar-test-b", 0, 0)};
    }
    std::unique_ptr<SerialPortBackend> createBackend(const QString &) const override
    {
        return nullptr;
    }
};

QSettings rawStore()
{
    return QSettings(QStringLiteral("Ostravel"), QStringLiteral("Zelvar Servo Manager"));
}

void store(const QString &group, const QString &key, const QVariant &value)
{
    QSettings settings = rawStore();
    settings.beginGroup(group);
    settings.setValue(key, value);
}

QVariant stored(const QString &group, const QString &key)
{
    QSettings settings = rawStore();
    settings.beginGroup(group);
    return settings.value(key);
}

template<typename T>
T *child(const SettingsDialog &dialog, const QString &name)
{
    T *found = dialog.findChild<T *>(name);
    if (!found)
        qFatal("no child %s", qPrintable(name));
    return found;
}

QComboBox *combo(const SettingsDialog &dialog, const char *name)
{
    return child<QComboBox>(dialog, QLatin1String(name));
}

QRadioButton *radio(const SettingsDialog &dialog, const QString &name)
{
    return child<QRadioButton>(dialog, name);
}

const QStringList unitKeys{"angularVelocity", "angle",   "angularAcceleration", "torque",
                           "voltage",         "current", "temperature",         "servoData"};

QVector<int> unitValues(const PhysicalQuantities &units)
{
    return {units.angularVelocity, units.angle,       units.angularAcceleration,
            units.torque,          units.voltage,     units.current,
            units.temperature,     units.returnDelay, units.servoData};
}
} // namespace

class TestSettingsDialog : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void emptyStoreStartsAtDefaults();
    void isTheProcessWideInstance();
    void parameterBoxes_data();
    void parameterBoxes();
    void portListShowsDetails();
    void storedPortIsSelectedOnlyIfPresent_data();
    void storedPortIsSelectedOnlyIfPresent();
    void storedUnitsCheckButtons_data();
    void storedUnitsCheckButtons();
    void applyPersistsChoices();
    void applyNeverWritesReturnDelay();
    void cancelKeepsRecordsAndShowResetsButtons();
    void showOpensConnectionTab();
    void customBaudRateIsTyped();
    void updateBaudRatePersistsWithoutShowing();

private:
    std::shared_ptr<KnownPorts> ports = std::make_shared<KnownPorts>();
};

void TestSettingsDialog::initTestCase()
{
    PortProvider::install(ports);
}

void TestSettingsDialog::init()
{
    QSettings settings = rawStore();
    settings.clear();
}

void TestSettingsDialog::emptyStoreStartsAtDefaults()
{
    const SettingsDialog dialog;
    QCOMPARE(dialog.portSettings().baudRate, 1000000);
    QCOMPARE(combo(dialog, "baudRateBox")->currentText(), QStringLiteral("1000000"));
    QVERIFY(!combo(dialog, "baudRateBox")->isEditable());
    // No stored port: the first listed one is taken.
    QCOMPARE(dialog.portSettings().portName, combo(dialog, "serialPortInfoListBox")->itemText(0));
    QCOMPARE(unitValues(dialog.units()), QVector<int>(9, 0));
    QVERIFY(dialog.isModal());
    QVERIFY(rawStore().allKeys().isEmpty());
}

void TestSettingsDialog::isTheProcessWideInstance()
{
    {
        const SettingsDialog dialog;
        QCOMPARE(SettingsDialog::instance(), &dialog);
    }
    QCOMPARE(SettingsDialog::instance(), nullptr);
}

void TestSettingsDialog::parameterBoxes_data()
{
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<QVariantList>("data");
    QTest::addColumn<QString>("current");
    QTest::addColumn<bool>("enabled");

    QTest::newRow("baudRateBox") << QStringList{"9600",   "19200",   "38400",  "57600",
                                                "115200", "200000",  "250000", "400000",
                                                "500000", "1000000", "2000000"}
                                 << QVariantList{9600,   19200,  38400,  57600,   115200, 200000,
                                                 250000, 400000, 500000, 1000000, 2000000}
                                 << "1000000" << true;
    QTest::newRow("dataBitsBox") << QStringList{"5", "6", "7", "8"} << QVariantList{5, 6, 7, 8}
                                 << "8" << false;
    QTest::newRow("parityBox") << QStringList{"None", "Even", "Odd", "Mark", "Space"}
                               << QVariantList{0, 2, 3, 5, 4} << "None" << false;
    QTest::newRow("stopBitsBox") << QStringList{"1", "1.5", "2"} << QVariantList{1, 3, 2} << "1"
                                 << false;
}

void TestSettingsDialog::parameterBoxes()
{
    QFETCH(QStringList, texts);
    QFETCH(QVariantList, data);
    QFETCH(QString, current);
    QFETCH(bool, enabled);

    const SettingsDialog dialog;
    const QComboBox *box = combo(dialog, QTest::currentDataTag());
    QStringList actualTexts;
    QVariantList actualData;
    for (int i = 0; i < box->count(); ++i) {
        actualTexts << box->itemText(i);
        actualData << box->itemData(i);
    }
    QCOMPARE(actualTexts, texts);
    QCOMPARE(actualData, data);
    QCOMPARE(box->currentText(), current);
    QCOMPARE(box->isEnabled(), enabled);
}

void TestSettingsDialog::portListShowsDetails()
{
    const SettingsDialog dialog;
    QComboBox *portBox = combo(dialog, "serialPortInfoListBox");
    const int full = portBox->findText(QStringLiteral("zelvar-test-a"));
    const int bare = portBox->findText(QStringLiteral("zelvar-test-b"));
    QVERIFY(full >= 0 && bare >= 0);

    QCOMPARE(
        portBox->itemData(full).toStringList(),
        (QStringList{"zelvar-test-a", "USB adapter", "Acme", "/dev/zelvar-test-a", "403", "6a0f"}));
    QCOMPARE(portBox->itemData(bare).toStringList(),
             (QStringList{"zelvar-test-b", "N/A", "N/A", "/dev/zelvar-test-b", "N/A", "N/A"}));

    portBox->setCurrentIndex(full);
    QCOMPARE(child<QLabel>(dialog, "descriptionLabel")->text(),
             QStringLiteral("Description: USB adapter"));
    QCOMPARE(child<QLabel>(dialog, "manufacturerLabel")->text(),
             QStringLiteral("Manufacturer: Acme"));
    QCOMPARE(child<QLabel>(dialog, "locationLabel")->text(),
             QStringLiteral("Location: /dev/zelvar-test-a"));
    QCOMPARE(child<QLabel>(dialog, "vidLabel")->text(), QStringLiteral("Vendor Identifier: 403"));
    QCOMPARE(child<QLabel>(dialog, "pidLabel")->text(), QStringLiteral("Product Identifier: 6a0f"));
}

void TestSettingsDialog::storedPortIsSelectedOnlyIfPresent_data()
{
    QTest::addColumn<QString>("storedName");
    QTest::addColumn<bool>("present");

    QTest::newRow("present") << "zelvar-test-b" << true;
    QTest::newRow("unplugged") << "ttyGONE" << false;
}

void TestSettingsDialog::storedPortIsSelectedOnlyIfPresent()
{
    QFETCH(QString, storedName);
    QFETCH(bool, present);

    store("port settings", "serialPortName", storedName);
    SettingsDialog dialog;
    const QString expected =
        present ? storedName : combo(dialog, "serialPortInfoListBox")->itemText(0);
    QCOMPARE(dialog.portSettings().portName, expected);

    child<QPushButton>(dialog, "okButton")->click();
    QCOMPARE(stored("port settings", "serialPortName").toString(), expected);
}

void TestSettingsDialog::storedUnitsCheckButtons_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("checked");
    QTest::addColumn<int>("recorded");

    QTest::newRow("angularVelocity 1") << "angularVelocity" << 1 << "revsPerMinuteRadioButton" << 1;
    QTest::newRow("angle 1") << "angle" << 1 << "degreesRadioButton" << 1;
    QTest::newRow("torque 1") << "torque" << 1 << "kgCentimetresRadioButton" << 1;
    QTest::newRow("current 1") << "current" << 1 << "milliAmpsRadioButton" << 1;
    QTest::newRow("temperature 1") << "temperature" << 1 << "fahrenheitRadioButton" << 1;
    QTest::newRow("servoData 1") << "servoData" << 1 << "decimalRadioButton" << 1;
    QTest::newRow("angle 0") << "angle" << 0 << "radiansRadioButton" << 0;
    QTest::newRow("angle 7 falls back") << "angle" << 7 << "radiansRadioButton" << 0;
    QTest::newRow("servoData -1 falls back") << "servoData" << -1 << "hexRadioButton" << 0;
    QTest::newRow("voltage 0") << "voltage" << 0 << "voltageRadioButton" << 0;
    QTest::newRow("voltage 2 checks nothing") << "voltage" << 2 << "" << 2;
    QTest::newRow("angularAcceleration 1 checks nothing") << "angularAcceleration" << 1 << "" << 1;
}

void TestSettingsDialog::storedUnitsCheckButtons()
{
    QFETCH(QString, key);
    QFETCH(int, value);
    QFETCH(QString, checked);
    QFETCH(int, recorded);

    store("units settings", key, value);
    const SettingsDialog dialog;

    const QString groupName = key == QLatin1String("current")
                                  ? QStringLiteral("currentSettingsGroupBox_2")
                                  : key + QStringLiteral("SettingsGroupBox");
    const auto *group = child<QGroupBox>(dialog, groupName);
    QStringList checkedButtons;
    for (const QRadioButton *button : group->findChildren<QRadioButton *>()) {
        if (button->isChecked())
            checkedButtons << button->objectName();
    }
    QCOMPARE(checkedButtons, checked.isEmpty() ? QStringList() : QStringList{checked});

    QVector<int> expected(9, 0);
    expected[unitKeys.indexOf(key) + (key == QLatin1String("servoData") ? 1 : 0)] = recorded;
    QCOMPARE(unitValues(dialog.units()), expected);
}

void TestSettingsDialog::applyPersistsChoices()
{
    SettingsDialog dialog;
    dialog.show();
    combo(dialog, "serialPortInfoListBox")->setCurrentText(QStringLiteral("zelvar-test-b"));
    combo(dialog, "baudRateBox")->setCurrentText(QStringLiteral("57600"));
    for (const char *name :
         {"revsPerMinuteRadioButton", "degreesRadioButton", "kgCentimetresRadioButton",
          "milliAmpsRadioButton", "fahrenheitRadioButton", "decimalRadioButton"})
        radio(dialog, QLatin1String(name))->setChecked(true);

    child<QPushButton>(dialog, "okButton")->click();

    QVERIFY(!dialog.isVisible());
    QCOMPARE(dialog.portSettings().portName, QStringLiteral("zelvar-test-b"));
    QCOMPARE(dialog.portSettings().baudRate, 57600);
    QCOMPARE(dialog.portSettings().dataBits, 8);
    QCOMPARE(dialog.portSettings().parityText, QStringLiteral("None"));
    QCOMPARE(dialog.portSettings().stopBits, 1);
    QCOMPARE(unitValues(dialog.units()), (QVector<int>{1, 1, 0, 1, 0, 1, 1, 0, 1}));

    QCOMPARE(stored("port settings", "serialPortName").toString(), QStringLiteral("zelvar-test-b"));
    QCOMPARE(stored("port settings", "baudRate").toInt(), 57600);
    QVector<int> persisted;
    for (const QString &key : unitKeys)
        persisted << stored("units settings", key).toInt();
    QCOMPARE(persisted, (QVector<int>{1, 1, 0, 1, 0, 1, 1, 1}));

    // A new dialog, as at the next start, comes back with the same choices.
    const SettingsDialog next;
    QCOMPARE(unitValues(next.units()), unitValues(dialog.units()));
    QVERIFY(radio(next, QStringLiteral("decimalRadioButton"))->isChecked());
    QCOMPARE(next.portSettings().baudRate, 57600);
}

void TestSettingsDialog::applyNeverWritesReturnDelay()
{
    store("units settings", "returnDelay", 3);
    SettingsDialog dialog;
    QCOMPARE(dialog.units().returnDelay, 3);

    store("units settings", "returnDelay", 5);
    child<QPushButton>(dialog, "okButton")->click();
    QCOMPARE(stored("units settings", "returnDelay").toInt(), 5);
    QCOMPARE(dialog.units().returnDelay, 3);

    QSettings settings = rawStore();
    settings.clear();
    child<QPushButton>(dialog, "okButton")->click();
    settings.beginGroup(QStringLiteral("units settings"));
    QVERIFY(!settings.contains(QStringLiteral("returnDelay")));
    QCOMPARE(settings.childKeys().size(), unitKeys.size());
}

void TestSettingsDialog::cancelKeepsRecordsAndShowResetsButtons()
{
    SettingsDialog dialog;
    dialog.show();
    radio(dialog, QStringLiteral("degreesRadioButton"))->setChecked(true);
    combo(dialog, "baudRateBox")->setCurrentText(QStringLiteral("9600"));

    child<QPushButton>(dialog, "cancelButton")->click();

    QVERIFY(!dialog.isVisible());
    QCOMPARE(dialog.units().angle, 0);
    QCOMPARE(dialog.portSettings().baudRate, 1000000);
    QVERIFY(rawStore().allKeys().isEmpty());

    dialog.show();
    QVERIFY(radio(dialog, QStringLiteral("radiansRadioButton"))->isChecked());
    // Only the radio buttons are reset; the baud-rate box keeps the user's choice.
    QCOMPARE(combo(dialog, "baudRateBox")->currentText(), QStringLiteral("9600"));
}

void TestSettingsDialog::showOpensConnectionTab()
{
    SettingsDialog dialog;
    auto *tabs = child<QTabWidget>(dialog, "settingsTabWidget");
    QCOMPARE(tabs->currentIndex(), 1);

    dialog.show();
    QVERIFY(dialog.isVisible());
    QCOMPARE(tabs->currentIndex(), 0);
    QCOMPARE(dialog.focusWidget(), child<QPushButton>(dialog, "okButton"));

    tabs->setCurrentIndex(1);
    dialog.hide();
    dialog.show();
    QCOMPARE(tabs->currentIndex(), 0);
}

// No item of the fixed list lacks data; the path is there for one that does.
void TestSettingsDialog::customBaudRateIsTyped()
{
    SettingsDialog dialog;
    QComboBox *box = combo(dialog, "baudRateBox");
    box->addItem(QStringLiteral("Custom"));
    box->setCurrentIndex(box->count() - 1);

    QVERIFY(box->isEditable());
    QVERIFY(box->currentText().isEmpty());
    const auto *validator = qobject_cast<const QIntValidator *>(box->lineEdit()->validator());
    QVERIFY(validator);
    QCOMPARE(validator->bottom(), 0);
    QCOMPARE(validator->top(), 4000000);

    QTest::keyClicks(box->lineEdit(), QStringLiteral("3000000"));
    child<QPushButton>(dialog, "okButton")->click();
    QCOMPARE(dialog.portSettings().baudRate, 3000000);
    QCOMPARE(stored("port settings", "baudRate").toInt(), 3000000);
    QCOMPARE(box->count(), 12);

    box->setCurrentIndex(0);
    QVERIFY(!box->isEditable());
}

void TestSettingsDialog::updateBaudRatePersistsWithoutShowing()
{
    {
        SettingsDialog dialog;
        QVERIFY(QMetaObject::invokeMethod(&dialog, "on_updateBaudRate", Q_ARG(int, 57600)));
        QVERIFY(!dialog.isVisible());
        QCOMPARE(dialog.portSettings().baudRate, 57600);
        QCOMPARE(combo(dialog, "baudRateBox")->currentText(), QStringLiteral("57600"));
        QCOMPARE(stored("port settings", "baudRate").toInt(), 57600);
    }
    const SettingsDialog next;
    QCOMPARE(next.portSettings().baudRate, 57600);
}

QTEST_MAIN(TestSettingsDialog)
#include "tst_settingsdialog.moc"
