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
};

QTEST_GUILESS_MAIN(TestSettings)
#include "tst_settings.moc"
