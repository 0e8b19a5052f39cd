#include "settings/settings.h"

#include <QSettings>
#include <QtTest>

class TestSettings : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void emptyStoreGivesReadersDefault_data();
    void emptyStoreGivesReadersDefault();
    void valueSurvivesNewStore_data();
    void valueSurvivesNewStore();
    void twoStoresOnOneGroupSeeEachOther();
    void writeStaysInsideItsGroup();
    void sameKeyInTwoGroupsIsTwoValues();
    void unconvertibleIntReadsAsZero();
};

namespace {
QSettings rawStore()
{
    return QSettings(QStringLiteral("Ostravel"), QStringLiteral("Zelvar Servo Manager"));
}
} // namespace

void TestSettings::init()
{
    QSettings store(QStringLiteral("Ostravel"), QStringLiteral("Zelvar Servo Manager"));
    store.clear();
    store.sync();
}

void TestSettings::emptyStoreGivesReadersDefault_data()
{
    QTest::addColumn<QString>("group");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QVariant>("defaultValue");

    QTest::newRow("geometry") << "main window settings"
                              << "geometry" << QVariant(QByteArray());
    QTest::newRow("pollingInterval") << "main window settings"
                                     << "pollingInterval" << QVariant(500);
    QTest::newRow("servoId") << "main window settings"
                             << "servoId" << QVariant(0);
    QTest::newRow("baudRate") << "port settings"
                              << "baudRate" << QVariant(1000000);
    QTest::newRow("serialPortName") << "port settings"
                                    << "serialPortName" << QVariant(QString());
    QTest::newRow("returnDelay") << "units settings"
                                 << "returnDelay" << QVariant(0);
}

void TestSettings::emptyStoreGivesReadersDefault()
{
    QFETCH(QString, group);
    QFETCH(QString, key);
    QFETCH(QVariant, defaultValue);

    const Settings settings(group);
    QCOMPARE(settings.value(key, defaultValue), defaultValue);
}

void TestSettings::valueSurvivesNewStore_data()
{
    QTest::addColumn<QVariant>("value");

    QTest::newRow("int") << QVariant(57600);
    QTest::newRow("string") << QVariant(QStringLiteral("/dev/ttyUSB0"));
    QTest::newRow("bytes with zeros") << QVariant(QByteArray("\x01\x00\xff\x7f", 4));
}

void TestSettings::valueSurvivesNewStore()
{
    QFETCH(QVariant, value);

    {
        Settings writer(QStringLiteral("port settings"));
        writer.setValue(QStringLiteral("key"), value);
    }
    const Settings reader(QStringLiteral("port settings"));
    QCOMPARE(reader.value(QStringLiteral("key"), QVariant()), value);
}

void TestSettings::twoStoresOnOneGroupSeeEachOther()
{
    Settings dialogStore(QStringLiteral("port settings"));
    Settings searchStore(QStringLiteral("port settings"));

    dialogStore.setValue(QStringLiteral("serialPortName"), QStringLiteral("COM7"));
    QCOMPARE(searchStore.value(QStringLiteral("serialPortName"), QString()).toString(),
             QStringLiteral("COM7"));

    searchStore.setValue(QStringLiteral("baudRate"), 115200);
    QCOMPARE(dialogStore.value(QStringLiteral("baudRate"), 1000000).toInt(), 115200);
}

void TestSettings::writeStaysInsideItsGroup()
{
    Settings settings(QStringLiteral("units settings"));
    settings.setValue(QStringLiteral("angle"), 1);
    settings.setValue(QStringLiteral("torque"), 1);

    QSettings store = rawStore();
    QCOMPARE(store.childGroups(), QStringList{QStringLiteral("units settings")});
    QVERIFY(store.childKeys().isEmpty());
    store.beginGroup(QStringLiteral("units settings"));
    QCOMPARE(store.childKeys(), (QStringList{QStringLiteral("angle"), QStringLiteral("torque")}));
    store.endGroup();
}

void TestSettings::sameKeyInTwoGroupsIsTwoValues()
{
    Settings first(QStringLiteral("port settings"));
    Settings second(QStringLiteral("main window settings"));
    first.setValue(QStringLiteral("shared"), 1);
    second.setValue(QStringLiteral("shared"), 2);

    QCOMPARE(first.value(QStringLiteral("shared"), 0).toInt(), 1);
    QCOMPARE(second.value(QStringLiteral("shared"), 0).toInt(), 2);
}

void TestSettings::unconvertibleIntReadsAsZero()
{
    Settings settings(QStringLiteral("main window settings"));
    settings.setValue(QStringLiteral("pollingInterval"), QStringLiteral("fast"));
    QCOMPARE(settings.value(QStringLiteral("pollingInterval"), 500).toInt(), 0);
}

QTEST_GUILESS_MAIN(TestSettings)
#include "tst_settings.moc"
