#include "settings/settings.h"

#include <QSettings>
#include <QtTest>

class TestSettings : public QObject
{
    Q_OBJECT

private slots:
    void init() { QSettings("Ostravel", "Zelvar Servo Manager").clear(); }

    void emptyStoreGivesReadersDefault()
    {
        const Settings settings(QStringLiteral("port settings"));
        QCOMPARE(settings.value("baudRate", 1000000), QVariant(1000000));
        QCOMPARE(settings.value("serialPortName", QString()), QVariant(QString()));
    }

    void valueSurvivesNewStore_data()
    {
        QTest::addColumn<QVariant>("value");

        QTest::newRow("int") << QVariant(57600);
        QTest::newRow("string") << QVariant(QStringLiteral("/dev/ttyUSB0"));
        QTest::newRow("bytes with zeros") << QVariant(QByteArray("\x01\x00\xff\x7f", 4));
    }

    void valueSurvivesNewStore()
    {
        QFETCH(QVariant, value);

        Settings(QStringLiteral("port settings")).setValue(QStringLiteral("key"), value);
        QCOMPARE(Settings(QStringLiteral("port settings")).value("key", QVariant()), value);
    }

    void twoStoresOnOneGroupSeeEachOther()
    {
        Settings dialogStore(QStringLiteral("port settings"));
        Settings searchStore(QStringLiteral("port settings"));

        dialogStore.setValue("serialPortName", "COM7");
        QCOMPARE(searchStore.value("serialPortName", QString()).toString(), QStringLiteral("COM7"));
        searchStore.setValue("baudRate", 115200);
        QCOMPARE(dialogStore.value("baudRate", 1000000).toInt(), 115200);
    }

    void groupsKeepTheirKeysApart()
    {
        Settings units(QStringLiteral("units settings"));
        Settings window(QStringLiteral("main window settings"));
        units.setValue("angle", 1);
        window.setValue("angle", 2);

        QCOMPARE(units.value("angle", 0).toInt(), 1);
        QCOMPARE(window.value("angle", 0).toInt(), 2);
        QSettings store("Ostravel", "Zelvar Servo Manager");
        QCOMPARE(store.allKeys(),
                 (QStringList{"main window settings/angle", "units settings/angle"}));
    }
};

QTEST_GUILESS_MAIN(TestSettings)
#include "tst_settings.moc"
