#include "cli/unitvalue.h"
#include "datacolumns.h"
#include "device/zelvarv1.h"
#include "telemetry/registercatalogue.h"

#include <QtTest>

// Values typed on the command line, in any unit the settings offer, to raw register values.
class TestUnitValue : public QObject
{
    Q_OBJECT

private slots:
    void parse_data()
    {
        addColumns<QString, QString, qint64, QString>({"name", "text", "raw", "error"});
        QTest::newRow("degrees, shortened") << "target position"
                                            << "90deg" << qint64(1024) << "";
        QTest::newRow("radians, spaced") << "target position"
                                         << "1.5708 rad" << qint64(1024) << "";
        QTest::newRow("negative, unit in full") << "targetPositionDoubleSpinBox"
                                                << "-45 degrees" << qint64(-512) << "";
        QTest::newRow("rpm into a direction bit") << "target angular velocity"
                                                  << "-10rpm" << qint64(0x8000 | 1047) << "";
        QTest::newRow("no unit: the shown one") << "Acknowledge response time"
                                                << "100" << qint64(50) << "";
        QTest::newRow("micro as u") << "Acknowledge response time"
                                    << "100us" << qint64(50) << "";
        QTest::newRow("Fahrenheit without the degree sign") << "Upper temperature limit"
                                                            << "140F" << qint64(60) << "";
        QTest::newRow("kg-cm") << "Torque limit"
                               << "1kg-cm" << qint64(98) << "";
        QTest::newRow("not a number") << "ID"
                                      << "seven" << qint64(-1) << "ID: 'seven' is not a number";
        QTest::newRow("unit on a plain number")
            << "ID"
            << "7deg" << qint64(-1) << "ID takes a plain number, without a unit";
        QTest::newRow("unit of another quantity") << "target position"
                                                  << "3V" << qint64(-1)
                                                  << "Target position takes radians or degrees, "
                                                     "not 'V'";
        QTest::newRow("ambiguous unit")
            << "target angular velocity"
            << "3r" << qint64(-1) << "Target angular velocity takes rad/s or rpm, not 'r'";
        QTest::newRow("range in the unit given")
            << "target angular velocity"
            << "30rpm" << qint64(-1) << "Target angular velocity takes -19.1 to 19.1 rpm";
    }

    void parse()
    {
        QFETCH(QString, name);
        QFETCH(QString, text);
        QFETCH(qint64, raw);
        QFETCH(QString, error);

        const auto catalogue = std::make_shared<RegisterCatalogue>(ZelvarV1());
        const CatalogueEntry *entry = catalogue->find(name);
        QVERIFY(entry);
        const UnitValue::Result result = UnitValue::parse(text, *entry, catalogue);
        QCOMPARE(result.error, error);
        QCOMPARE(result.raw.value_or(-1), raw);
    }
};

QTEST_GUILESS_MAIN(TestUnitValue)
#include "tst_unitvalue.moc"
