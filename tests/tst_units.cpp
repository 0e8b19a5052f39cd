#include "datacolumns.h"
#include "device/fieldhelper.h"
#include "device/fieldlimits.h"
#include "device/physicalquantities.h"
#include "device/unitshelper.h"
#include "widgets/zelvarlabel.h"

#include <QtTest>
#include <stdexcept>

Q_DECLARE_METATYPE(FieldLimits)

// Exact: a fuzzy compare would let a full-precision pi through.
#define COMPARE_EXACT(actual, expected)                                                            \
    QVERIFY2((actual) == (expected), qPrintable(QString::number(actual, 'g', 17)))

namespace {

std::shared_ptr<PhysicalQuantities> allUnits(int32_t i)
{
    return std::make_shared<PhysicalQuantities>(PhysicalQuantities{i, i, i, i, i, i, i, i, 0});
}

const int both = 0, toRaw = 1, toShown = 2;

} // namespace

class TestUnits : public QObject
{
    Q_OBJECT

private slots:
    void conversions_data()
    {
        addColumns<int, int, double, double>({"id", "unitIndex", "base", "shown"});

        QTest::newRow("rpm keeps the twelve-decimal pi") << 0 << 1 << 1.0 << 9.549296585516132;
        QTest::newRow("degrees") << 1 << 1 << 3.141592653589 << 180.0;
        QTest::newRow("rad/s2 never converts") << 2 << 1 << 4.0 << 4.0;
        QTest::newRow("kg-cm") << 3 << 1 << 2.0 << 20.39432;
        QTest::newRow("A is index 0") << 5 << 0 << 1500.0 << 1.5;
        QTest::newRow("mA is the base") << 5 << 1 << 1500.0 << 1500.0;
        QTest::newRow("unknown choice falls back to A") << 5 << 7 << 1500.0 << 1.5;
        QTest::newRow("degF") << 6 << 1 << 100.0 << 212.0;
        QTest::newRow("negative id") << -1 << 1 << 3.0 << 3.0;
    }

    void conversions()
    {
        QFETCH(int, id);
        QFETCH(int, unitIndex);
        QFETCH(double, base);
        QFETCH(double, shown);

        const UnitsHelper units(allUnits(unitIndex));
        COMPARE_EXACT(units.toDisplay(base, id), shown);
        COMPARE_EXACT(units.fromDisplay(shown, id), base);
    }

    void unitRows()
    {
        // Deliberately no step in degrees.
        QCOMPARE(UnitsHelper(allUnits(1)).singleStep(1), 0.0);
        // A choice the table does not have, or none at all, means the first unit.
        const QString degC = QString::fromUtf8("\u00b0C");
        QCOMPARE(UnitsHelper(allUnits(2)).unitName(6), degC);
        QCOMPARE(UnitsHelper(allUnits(2)).decimals(6), 0);
        QCOMPARE(UnitsHelper(nullptr).unitName(6), degC);
    }

    void rawAndShown_data()
    {
        // fromZero: the integer spin box's map, without rawMin.
        addColumns<FieldLimits, int, int, int, double, int, bool>(
            {"limits", "id", "unitIndex", "raw", "shown", "way", "fromZero"});

        const FieldLimits offset{100, 1100, 0.0, 10.0, {}};
        const FieldLimits position{-1044479, 1044479, -1602.2107193496022, 1602.2107193496022, {}};
        const FieldLimits angle{-2047, 2047, -3.141592653589, 3.141592653589, {}};
        const FieldLimits none{0, 0, 0.0, 0.0, {}};

        // clang-format off
        QTest::newRow("rawMin is physicalMin") << offset << 9 << 0 << 100 << 0.0 << both << false;
        QTest::newRow("spin box: no offset") << offset << 9 << 0 << 600 << 6.0 << both << true;
        QTest::newRow("2.9 counts truncate to 2") << offset << 9 << 0 << 102 << 0.029 << toRaw << false;
        QTest::newRow("0.0019 rad is one count") << position << 1 << 0 << 1 << 0.0019 << toRaw << false;
        QTest::newRow("truncates toward zero") << position << 1 << 0 << -1 << -0.0019 << toRaw << false;
        QTest::newRow("angle limit in degrees") << angle << 1 << 1 << -2047 << -180.0 << toShown << false;
        QTest::newRow("empty range gives rawMin") << none << 19 << 0 << 0 << 4.0 << toRaw << false;
        QTest::newRow("saturates") << offset << 9 << 0 << INT32_MAX << 1e300 << toRaw << false;
        QTest::newRow("NaN gives rawMin") << offset << 9 << 0 << 100 << qQNaN() << toRaw << false;
        // clang-format on
    }

    void rawAndShown()
    {
        QFETCH(FieldLimits, limits);
        QFETCH(int, id);
        QFETCH(int, unitIndex);
        QFETCH(int, raw);
        QFETCH(double, shown);
        QFETCH(int, way);
        QFETCH(bool, fromZero);

        const UnitsHelper units(allUnits(unitIndex));
        const auto origin =
            fromZero ? UnitsHelper::RawOrigin::Zero : UnitsHelper::RawOrigin::RawMin;
        if (way != toRaw)
            QCOMPARE(units.rawToDisplay(raw, limits, id, origin), shown);
        if (way != toShown)
            QCOMPARE(units.displayToRaw(shown, limits, id, origin), raw);
    }

    void fieldIds()
    {
        // Fed by the torque limit register: the box converts as a torque, while its label
        // shows a current.
        QCOMPARE(FieldHelper::fieldId("quadratureCurrentLimitDoubleSpinBox"), 3);
        QCOMPARE(FieldHelper::fieldId("quadratureCurrentLimitLabel"), 5);
        QVERIFY(!FieldHelper::hasFieldId("positionLineEdit"));
        QVERIFY_EXCEPTION_THROWN(FieldHelper::fieldId("positionLineEdit"), std::out_of_range);
    }

    void findsBoundWidgetsByName()
    {
        QWidget view;
        auto *top = new ZelvarLabel(&view);
        top->setObjectName("idLabel");
        auto *nested = new ZelvarLabel(new QWidget(&view));
        nested->setObjectName("targetTorqueLabel");

        const FieldHelper fields(view.children());
        QCOMPARE(fields.field("idLabel"), static_cast<IZelvarField *>(top));
        QCOMPARE(fields.field("targetTorqueLabel"), static_cast<IZelvarField *>(nested));
        delete nested;
        QVERIFY(!fields.hasField("targetTorqueLabel"));
        QVERIFY_EXCEPTION_THROWN(fields.field("targetTorqueLabel"), std::out_of_range);
    }
};

QTEST_MAIN(TestUnits)
#include "tst_units.moc"
