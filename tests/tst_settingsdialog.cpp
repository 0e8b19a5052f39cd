#include "portprovider.h"
#include "serialportbackend.h"
#include "settings/settingsdialog.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
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
    rawStore().setValue(group + '/' + key, value);
}

QVariant stored(const QString &group, const QString &key)
{
    return rawStore().value(group + '/' + key);
}

template<typename T = QComboBox>
T *child(const SettingsDialog &dialog, const QString &name)
{
    T *found = dialog.findChild<T *>(name);
    if (!found)
        qFatal("no child %s", qPrintable(name));
    return found;
}

void click(const SettingsDialog &dialog, const char *button)
{
    child<QPushButton>(dialog, button)->click();
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
    void initTestCase() { PortProvider::install(ports); }
    void init() { rawStore().clear(); }

    void emptyStoreStartsAtDefaults()
    {
        {
            SettingsDialog dialog;
            QCOMPARE(SettingsDialog::instance(), &dialog);
            QCOMPARE(dialog.portSettings().baudRate, 1000000);
            QCOMPARE(child(dialog, "baudRateBox")->currentText(), QStringLiteral("1000000"));
            for (const char *fixed : {"dataBitsBox", "parityBox", "stopBitsBox"})
                QVERIFY(!child(dialog, fixed)->isEnabled());
            // No stored port: the first listed one is taken.
            QCOMPARE(dialog.portSettings().portName,
                     child(dialog, "serialPortInfoListBox")->itemText(0));
            QCOMPARE(unitValues(dialog.units()), QVector<int>(9, 0));
            QVERIFY(dialog.isModal());
            QVERIFY(rawStore().allKeys().isEmpty());

            // Showing always opens on the connection tab, with the OK button focused.
            auto *tabs = child<QTabWidget>(dialog, "settingsTabWidget");
            QCOMPARE(tabs->currentIndex(), 1);
            dialog.show();
            QCOMPARE(tabs->currentIndex(), 0);
            QCOMPARE(dialog.focusWidget(), child<QPushButton>(dialog, "okButton"));
            tabs->setCurrentIndex(1);
            dialog.hide();
            dialog.show();
            QCOMPARE(tabs->currentIndex(), 0);
        }
        QCOMPARE(SettingsDialog::instance(), nullptr);
    }

    void portListShowsDetails()
    {
        const SettingsDialog dialog;
        QComboBox *portBox = child(dialog, "serialPortInfoListBox");
        const int full = portBox->findText(QStringLiteral("zelvar-test-a"));
        const int bare = portBox->findText(QStringLiteral("zelvar-test-b"));
        QVERIFY(full >= 0 && bare >= 0);
        QCOMPARE(portBox->itemData(full).toStringList().join(','),
                 QStringLiteral("zelvar-test-a,USB adapter,Acme,/dev/zelvar-test-a,403,6a0f"));
        QCOMPARE(portBox->itemData(bare).toStringList().join(','),
                 QStringLiteral("zelvar-test-b,N/A,N/A,/dev/zelvar-test-b,N/A,N/A"));

        portBox->setCurrentIndex(full);
        QStringList labels;
        for (const char *name :
             {"descriptionLabel", "manufacturerLabel", "locationLabel", "vidLabel", "pidLabel"})
            labels << child<QLabel>(dialog, name)->text();
        QCOMPARE(labels, (QStringList{"Description: USB adapter", "Manufacturer: Acme",
                                      "Location: /dev/zelvar-test-a", "Vendor Identifier: 403",
                                      "Product Identifier: 6a0f"}));
    }

    void storedPortIsSelectedOnlyIfPresent()
    {
        for (const QString name : {"zelvar-test-b", "ttyGONE"}) {
            store("port settings", "serialPortName", name);
            SettingsDialog dialog;
            const QString expected =
                name == "ttyGONE" ? child(dialog, "serialPortInfoListBox")->itemText(0) : name;
            QCOMPARE(dialog.portSettings().portName, expected);
            click(dialog, "okButton");
            QCOMPARE(stored("port settings", "serialPortName").toString(), expected);
        }
    }

    void storedUnitsCheckButtons_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<int>("value");
        QTest::addColumn<QString>("checked");
        QTest::addColumn<int>("recorded");

        // clang-format off
        QTest::newRow("angularVelocity") << "angularVelocity" << 1 << "revsPerMinuteRadioButton" << 1;
        QTest::newRow("current 1") << "current" << 1 << "milliAmpsRadioButton" << 1;
        QTest::newRow("servoData 1") << "servoData" << 1 << "decimalRadioButton" << 1;
        QTest::newRow("angle 7 falls back") << "angle" << 7 << "radiansRadioButton" << 0;
        QTest::newRow("servoData -1 falls back") << "servoData" << -1 << "hexRadioButton" << 0;
        QTest::newRow("voltage 2 checks nothing") << "voltage" << 2 << "" << 2;
        QTest::newRow("angularAcceleration 1 checks nothing") << "angularAcceleration" << 1 << "" << 1;
        // clang-format on
    }

    void storedUnitsCheckButtons()
    {
        QFETCH(QString, key);
        QFETCH(int, value);
        QFETCH(QString, checked);
        QFETCH(int, recorded);

        store("units settings", key, value);
        const SettingsDialog dialog;
        const QString groupName =
            key == "current" ? "currentSettingsGroupBox_2" : key + "SettingsGroupBox";
        QStringList checkedButtons;
        for (const QRadioButton *button :
             child<QGroupBox>(dialog, groupName)->findChildren<QRadioButton *>()) {
            if (button->isChecked())
                checkedButtons << button->objectName();
        }
        QCOMPARE(checkedButtons, checked.isEmpty() ? QStringList() : QStringList{checked});

        QVector<int> expected(9, 0);
        expected[unitKeys.indexOf(key) + (key == "servoData" ? 1 : 0)] = recorded;
        QCOMPARE(unitValues(dialog.units()), expected);
    }

    void applyPersistsChoices()
    {
        {
            SettingsDialog dialog;
            dialog.show();
            child(dialog, "serialPortInfoListBox")->setCurrentText(QStringLiteral("zelvar-test-b"));
            child(dialog, "baudRateBox")->setCurrentText(QStringLiteral("57600"));
            for (const char *name :
                 {"revsPerMinuteRadioButton", "degreesRadioButton", "kgCentimetresRadioButton",
                  "milliAmpsRadioButton", "fahrenheitRadioButton", "decimalRadioButton"})
                child<QRadioButton>(dialog, name)->setChecked(true);
            click(dialog, "okButton");

            QVERIFY(!dialog.isVisible());
            QCOMPARE(dialog.portSettings().portName, QStringLiteral("zelvar-test-b"));
            QCOMPARE(dialog.portSettings().baudRate, 57600);
            QCOMPARE(dialog.portSettings().parityText, QStringLiteral("None"));
            QCOMPARE(unitValues(dialog.units()), (QVector<int>{1, 1, 0, 1, 0, 1, 1, 0, 1}));
        }
        QCOMPARE(stored("port settings", "serialPortName").toString(),
                 QStringLiteral("zelvar-test-b"));
        QCOMPARE(stored("port settings", "baudRate").toInt(), 57600);
        QVector<int> persisted;
        for (const QString &key : unitKeys)
            persisted << stored("units settings", key).toInt();
        QCOMPARE(persisted, (QVector<int>{1, 1, 0, 1, 0, 1, 1, 1}));
    }

    void applyNeverWritesReturnDelay()
    {
        store("units settings", "returnDelay", 3);
        SettingsDialog dialog;
        QCOMPARE(dialog.units().returnDelay, 3);

        rawStore().clear();
        click(dialog, "okButton");
        QCOMPARE(dialog.units().returnDelay, 3);
        QSettings settings = rawStore();
        settings.beginGroup(QStringLiteral("units settings"));
        QVERIFY(!settings.contains(QStringLiteral("returnDelay")));
        QCOMPARE(settings.childKeys().size(), unitKeys.size());
    }

    void cancelKeepsRecordsAndShowResetsButtons()
    {
        SettingsDialog dialog;
        dialog.show();
        child<QRadioButton>(dialog, "degreesRadioButton")->setChecked(true);
        child(dialog, "baudRateBox")->setCurrentText(QStringLiteral("9600"));
        click(dialog, "cancelButton");

        QVERIFY(!dialog.isVisible());
        QCOMPARE(dialog.units().angle, 0);
        QCOMPARE(dialog.portSettings().baudRate, 1000000);
        QVERIFY(rawStore().allKeys().isEmpty());

        dialog.show();
        QVERIFY(child<QRadioButton>(dialog, "radiansRadioButton")->isChecked());
        // Only the radio buttons are reset; the baud-rate box keeps the user's choice.
        QCOMPARE(child(dialog, "baudRateBox")->currentText(), QStringLiteral("9600"));
    }

    void updateBaudRatePersistsWithoutShowing()
    {
        {
            SettingsDialog dialog;
            QVERIFY(QMetaObject::invokeMethod(&dialog, "on_updateBaudRate", Q_ARG(int, 57600)));
            QVERIFY(!dialog.isVisible());
            QCOMPARE(dialog.portSettings().baudRate, 57600);
            QCOMPARE(child(dialog, "baudRateBox")->currentText(), QStringLiteral("57600"));
            QCOMPARE(stored("port settings", "baudRate").toInt(), 57600);
        }
        QCOMPARE(SettingsDialog().portSettings().baudRate, 57600);
    }

private:
    std::shared_ptr<KnownPorts> ports = std::make_shared<KnownPorts>();
};

QTEST_MAIN(TestSettingsDialog)
#include "tst_settingsdialog.moc"
