#include "datacolumns.h"
#include "settings/settings.h"

#include <QSettings>
#include <QtTest>

class TestSettings : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // The store is cleared: only in the settings folder that CTest gives this test.
        if (!qEnvironmentVariable("XDG_CONFIG_HOME").contains(QLatin1String("/tests/home/")))
            QSKIP("Run it through ctest, which gives it a settings folder of its own.");
    }

    void storesShareTheirGroupAndOnlyIt()
    {
        QSettings("Ostravel", "Zelvar Servo Manager").clear();
        Settings dialogStore(QStringLiteral("port settings"));
        Settings searchStore(QStringLiteral("port settings"));
        Settings windowStore(QStringLiteral("main window settings"));

        dialogStore.setValue("baudRate", 115200);
        windowStore.setValue("baudRate", 9600);
        QCOMPARE(searchStore.value("baudRate", 1000000).toInt(), 115200);
        searchStore.setValue("serialPortName", "COM7");
        QCOMPARE(dialogStore.value("serialPortName", QString()).toString(), QStringLiteral("COM7"));
        QCOMPARE(windowStore.value("baudRate", 0).toInt(), 9600);
        QCOMPARE(QSettings("Ostravel", "Zelvar Servo Manager").allKeys(),
                 (QStringList{"main window settings/baudRate", "port settings/baudRate",
                              "port settings/serialPortName"}));
    }

    void unusableValuesReadAsTheDefault_data()
    {
        addColumns<QString, QString, int, int, QVariant>(
            {"group", "key", "defaultValue", "usable", "outOfRange"});

        // clang-format off
        QTest::newRow("polling interval") << "main window settings" << "pollingInterval" << 500 << 10 << QVariant(0);
        QTest::newRow("servo id") << "main window settings" << "servoId" << 0 << 253 << QVariant(300);
        QTest::newRow("baud rate") << "port settings" << "baudRate" << 1000000 << 57600 << QVariant(-9600);
        QTest::newRow("baud rate beyond any port") << "port settings" << "baudRate" << 1000000 << 4000000 << QVariant(2147483647);
        QTest::newRow("angular velocity unit") << "units settings" << "angularVelocity" << 0 << 1 << QVariant(2);
        QTest::newRow("angle unit") << "units settings" << "angle" << 0 << 1 << QVariant(-1);
        QTest::newRow("acceleration, one unit") << "units settings" << "angularAcceleration" << 0 << 0 << QVariant(1);
        QTest::newRow("torque unit") << "units settings" << "torque" << 0 << 1 << QVariant(99);
        QTest::newRow("voltage, one unit") << "units settings" << "voltage" << 0 << 0 << QVariant(99);
        QTest::newRow("current unit") << "units settings" << "current" << 0 << 1 << QVariant(2);
        QTest::newRow("temperature unit") << "units settings" << "temperature" << 0 << 1 << QVariant(2);
        QTest::newRow("return delay, one unit") << "units settings" << "returnDelay" << 0 << 0 << QVariant(1);
        QTest::newRow("servo data") << "units settings" << "servoData" << 0 << 1 << QVariant(2);
        // clang-format on
    }

    void unusableValuesReadAsTheDefault()
    {
        QFETCH(QString, group);
        QFETCH(QString, key);
        QFETCH(int, defaultValue);
        QFETCH(int, usable);
        QFETCH(QVariant, outOfRange);

        const QVariantList unusable{outOfRange, QStringLiteral("12abc"), QStringLiteral("1e3"),
                                    QStringList{"1", "2"}, QString()};
        for (const QVariant &value : unusable) {
            QSettings("Ostravel", "Zelvar Servo Manager").setValue(group + '/' + key, value);
            const QByteArray before = fileContents();
            QCOMPARE(Settings(group).value(key, defaultValue).toInt(), defaultValue);
            // Left as it is until the user saves.
            QCOMPARE(fileContents(), before);
        }
        QSettings("Ostravel", "Zelvar Servo Manager").setValue(group + '/' + key, usable);
        QCOMPARE(Settings(group).value(key, defaultValue).toInt(), usable);
    }

private:
    static QByteArray fileContents()
    {
        QFile file(QSettings("Ostravel", "Zelvar Servo Manager").fileName());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
};

QTEST_GUILESS_MAIN(TestSettings)
#include "tst_settings.moc"
