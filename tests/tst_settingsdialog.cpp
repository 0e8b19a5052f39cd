#include "datacolumns.h"
#include "portprovider.h"
#include "serialportbackend.h"
#include "settings/settings.h"
#include "settings/settingsdialog.h"

#include "datacolumns.h"
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTranslator>

#include <QtTest>

// This test links its own Settings in place of the program's: a store in memory that also
// logs every write as "group/key=value", so the order of the dialog's writes shows, and no
// run of this test can touch a user's settings.
namespace {
QMap<QString, QVariant> memoryStore;
QStringList writes;
} // namespace

Settings::Settings(const QString &group)
    : group(group)
{}

QVariant Settings::value(const QString &key, const QVariant &defaultValue) const
{
    return memoryStore.value(group + '/' + key, defaultValue);
}

void Settings::setValue(const QString &key, const QVariant &value)
{
    memoryStore.insert(group + '/' + key, value);
    writes << group + '/' + key + '=' + value.toString();
}

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

// Brackets every text of the dialog's translation context, so a visible text that skips
// tr() shows bare.
class BracketingTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *sourceText, const char *, int) const override
    {
        return qstrcmp(context, "SettingsDialog") == 0 ? '[' + QString(sourceText) + ']'
                                                       : QString();
    }
};

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
    void initTestCase()
    {
        PortProvider::install(ports);
        QCoreApplication::installTranslator(&translator);
    }
    void init()
    {
        memoryStore.clear();
        writes.clear();
    }

    void emptyStoreStartsAtDefaults()
    {
        {
            SettingsDialog dialog;
            const SettingsDialog::PortSettings port = dialog.portSettings();
            QCOMPARE(SettingsDialog::instance(), &dialog);
            QCOMPARE(port.baudRate, 1000000);
            // The rate is read back from the box's text, so that text stays untranslated.
            QCOMPARE(QStringList({child(dialog, "baudRateBox")->currentText(), port.dataBitsText,
                                  port.parityText, port.stopBitsText}),
                     QStringList({"1000000", "[8]", "[None]", "[1]"}));
            // No stored port: the first listed one is taken.
            QCOMPARE(port.portName, child(dialog, "serialPortInfoListBox")->itemText(0));
            QCOMPARE(unitValues(dialog.units()), QVector<int>(9, 0));
            QVERIFY(dialog.isModal());
            QVERIFY(writes.isEmpty());

            // Showing always opens on the connection tab, with the OK button focused.
            auto *tabs = child<QTabWidget>(dialog, "settingsTabWidget");
            tabs->setCurrentIndex(1);
            dialog.show();
            QCOMPARE(tabs->currentIndex(), 0);
            QCOMPARE(dialog.focusWidget(), child<QPushButton>(dialog, "okButton"));
        }
        QCOMPARE(SettingsDialog::instance(), nullptr);
    }

    void portListShowsDetails()
    {
        const SettingsDialog dialog;
        QComboBox *portBox = child(dialog, "serialPortInfoListBox");
        QCOMPARE(portBox->itemData(portBox->findText("zelvar-test-b")).toStringList().join(','),
                 QStringLiteral("zelvar-test-b,[N/A],[N/A],/dev/zelvar-test-b,[N/A],[N/A]"));
        portBox->setCurrentIndex(portBox->findText("zelvar-test-a"));
        QCOMPARE(child<QLabel>(dialog, "manufacturerLabel")->text(),
                 QStringLiteral("[Manufacturer: Acme]"));
        QCOMPARE(child<QLabel>(dialog, "pidLabel")->text(),
                 QStringLiteral("[Product Identifier: 6a0f]"));
    }

    void storedUnitsCheckButtons_data()
    {
        addColumns<QString, int, QString, QVector<int>>({"key", "value", "checked", "units"});

        // clang-format off
        QTest::newRow("code 1") << "angularVelocity" << 1 << "revsPerMinuteRadioButton" << QVector<int>{1, 0, 0, 0, 0, 0, 0, 0, 0};
        QTest::newRow("code 1 after returnDelay") << "servoData" << 1 << "decimalRadioButton" << QVector<int>{0, 0, 0, 0, 0, 0, 0, 0, 1};
        QTest::newRow("7 falls back to code 0") << "angle" << 7 << "radiansRadioButton" << QVector<int>(9, 0);
        QTest::newRow("single button, 2 checks nothing") << "voltage" << 2 << "" << QVector<int>{0, 0, 0, 0, 2, 0, 0, 0, 0};
        // clang-format on
    }

    void storedUnitsCheckButtons()
    {
        QFETCH(QString, key);
        QFETCH(int, value);
        QFETCH(QString, checked);
        QFETCH(QVector<int>, units);

        memoryStore.insert("units settings/" + key, value);
        const SettingsDialog dialog;
        QStringList checkedButtons;
        for (const QRadioButton *button :
             child<QGroupBox>(dialog, key + "SettingsGroupBox")->findChildren<QRadioButton *>()) {
            if (button->isChecked())
                checkedButtons << button->objectName();
        }
        QCOMPARE(checkedButtons, checked.isEmpty() ? QStringList() : QStringList{checked});
        QCOMPARE(unitValues(dialog.units()), units);
    }

    void applyPersistsInOrderAndNeverWritesReturnDelay()
    {
        memoryStore.insert("units settings/returnDelay", 3);
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
        QCOMPARE(unitValues(dialog.units()), (QVector<int>{1, 1, 0, 1, 0, 1, 1, 3, 1}));
        QCOMPARE(writes,
                 (QStringList{"port settings/baudRate=57600",
                              "port settings/serialPortName=zelvar-test-b",
                              "units settings/angularVelocity=1", "units settings/angle=1",
                              "units settings/angularAcceleration=0", "units settings/torque=1",
                              "units settings/voltage=0", "units settings/current=1",
                              "units settings/temperature=1", "units settings/servoData=1"}));
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
        QVERIFY(writes.isEmpty());

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
            QCOMPARE(writes, QStringList{"port settings/baudRate=57600"});
        }
        QCOMPARE(SettingsDialog().portSettings().baudRate, 57600);
    }

private:
    std::shared_ptr<KnownPorts> ports = std::make_shared<KnownPorts>();
    BracketingTranslator translator;
};

QTEST_MAIN(TestSettingsDialog)
#include "tst_settingsdialog.moc"
