#include "device/fieldhelper.h"
#include "device/fieldlimits.h"
#include "device/physicalquantities.h"
#include "device/unitshelper.h"
#include "widgets/izelvarfield.h"

#include <QLabel>
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

class NamedLabel : public QLabel, public IZelvarField
{
public:
    NamedLabel(const QString &name, QWidget *parent)
        : QLabel(parent)
    {
        setObjectName(name);
    }
    QString objectName() const override { return QLabel::objectName(); }
    void setLocked(bool lock) override { setDisabled(lock); }
};

const int both = 0, toRaw = 1, toShown = 2;

} // namespace

class TestUnits : public QObject
{
    Q_OBJECT

private slots:
    void conversions_data()
    {
        QTest::addColumn<int>("id");
        QTest::addColumn<int>("unitIndex");
        QTest::addColumn<double>("base");
        QTest::addColumn<double>("shown");

        QTest::newRow("rad/s") << 0 << 0 << 2.5 << 2.5;
        QTest::newRow("rpm keeps the twelve-decimal pi") << 0 << 1 << 1.0 << 9.549296585516132;
        QTest::newRow("degrees") << 1 << 1 << 3.141592653589 << 180.0;
        QTest::newRow("rad/s2 never converts") << 2 << 1 << 4.0 << 4.0;
        QTest::newRow("N-m") << 3 << 0 << 2.0 << 2.0;
        QTest::newRow("kg-cm") << 3 << 1 << 2.0 << 20.39432;
        QTest::newRow("V never converts") << 4 << 1 << 12.5 << 12.5;
        QTest::newRow("A is index 0") << 5 << 0 << 1500.0 << 1.5;
        QTest::newRow("mA is the base") << 5 << 1 << 1500.0 << 1500.0;
        QTest::newRow("unknown choice falls back to A") << 5 << 7 << 1500.0 << 1.5;
        QTest::newRow("degC") << 6 << 0 << 100.0 << 100.0;
        QTest::newRow("degF") << 6 << 1 << 100.0 << 212.0;
        QTest::newRow("us never converts") << 7 << 1 << 508.0 << 508.0;
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

    void unitRows_data()
    {
        QTest::addColumn<int>("id");
        QTest::addColumn<int>("stored");
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("decimals");
        QTest::addColumn<double>("step");

        QTest::newRow("radians") << 1 << 0 << 0 << "radians" << 3 << 0.001533980787885254;
        QTest::newRow("degrees step is zero") << 1 << 1 << 1 << "degrees" << 2 << 0.0;
        QTest::newRow("no second acceleration unit") << 2 << 1 << 1 << QString() << 0 << 0.0;
        const QString degC = QString::fromUtf8("\u00b0C");
        QTest::newRow("degF") << 6 << 1 << 1 << QString::fromUtf8("\u00b0F") << 1 << 1.0;
        QTest::newRow("stored 2 falls back") << 6 << 2 << 0 << degC << 0 << 1.0;
        QTest::newRow("unitless spin box stays steppable") << 8 << 1 << 0 << QString() << 3 << 1.0;
    }

    void unitRows()
    {
        QFETCH(int, id);
        QFETCH(int, stored);
        QFETCH(int, index);
        QFETCH(QString, name);
        QFETCH(int, decimals);
        QFETCH(double, step);

        const UnitsHelper units(allUnits(stored));
        QCOMPARE(units.unitIndex(id), index);
        QCOMPARE(units.unitName(id), name);
        QCOMPARE(units.decimals(id), decimals);
        QVERIFY(units.singleStep(id) == step);
        // Without stored choices every quantity shows its first unit.
        QCOMPARE(UnitsHelper(nullptr).unitName(id), UnitsHelper(allUnits(0)).unitName(id));
    }

    void rawAndShown_data()
    {
        QTest::addColumn<FieldLimits>("limits");
        QTest::addColumn<int>("id");
        QTest::addColumn<int>("unitIndex");
        QTest::addColumn<int>("raw");
        QTest::addColumn<double>("shown");
        QTest::addColumn<int>("way");

        const FieldLimits offset{100, 1100, 0.0, 10.0, {}};
        const FieldLimits position{-1044479, 1044479, -1602.2107193496022, 1602.2107193496022, {}};
        const FieldLimits angle{-2047, 2047, -3.141592653589, 3.141592653589, {}};
        const FieldLimits byte{0, 255, 0.0, 255.0, {}};
        const FieldLimits none{0, 0, 0.0, 0.0, {}};

        // clang-format off
        QTest::newRow("rawMin is physicalMin") << offset << 9 << 0 << 100 << 0.0 << both;
        QTest::newRow("offset range") << offset << 9 << 0 << 600 << 5.0 << both;
        QTest::newRow("2.9 counts truncate to 2") << offset << 9 << 0 << 102 << 0.029 << toRaw;
        QTest::newRow("0.0019 rad is one count") << position << 1 << 0 << 1 << 0.0019 << toRaw;
        QTest::newRow("truncates toward zero") << position << 1 << 0 << -1 << -0.0019 << toRaw;
        QTest::newRow("0.1 degree is one count") << position << 1 << 1 << 1 << 0.1 << toRaw;
        QTest::newRow("angle limit in degrees") << angle << 1 << 1 << -2047 << -180.0 << toShown;
        QTest::newRow("rpm") << FieldLimits{0, 2400, 0.0, 2.4, {}} << 0 << 1 << 1047 << 10.0 << toRaw;
        QTest::newRow("degF") << byte << 6 << 1 << 100 << 212.0 << both;
        QTest::newRow("empty range shows physicalMin") << none << 19 << 0 << 3 << 0.0 << toShown;
        QTest::newRow("empty range gives rawMin") << none << 19 << 0 << 0 << 4.0 << toRaw;
        QTest::newRow("saturates") << offset << 9 << 0 << INT32_MAX << 1e300 << toRaw;
        QTest::newRow("NaN gives rawMin") << offset << 9 << 0 << 100 << qQNaN() << toRaw;
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

        const UnitsHelper units(allUnits(unitIndex));
        if (way != toRaw)
            QCOMPARE(units.rawToDisplay(raw, limits, id), shown);
        if (way != toShown)
            QCOMPARE(units.displayToRaw(shown, limits, id), raw);
    }

    void fieldIds_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("id");

        // clang-format off
        QTest::newRow("current limit converts as torque") << "quadratureCurrentLimitDoubleSpinBox" << 3;
        QTest::newRow("its label shows a current") << "quadratureCurrentLimitLabel" << 5;
        QTest::newRow("profile is not converted") << "angularVelocityProfileDoubleSpinBox" << 15;
        QTest::newRow("status box") << "hallStatusCheckBox" << 22;
        QTest::newRow("ID label") << "idLabel" << 23;
        QTest::newRow("unknown") << "positionLineEdit" << -1;
        QTest::newRow("empty") << "" << -1;
        // clang-format on
    }

    void fieldIds()
    {
        QFETCH(QString, name);
        QFETCH(int, id);

        QCOMPARE(FieldHelper::hasFieldId(name), id >= 0);
        try {
            QCOMPARE(FieldHelper::fieldId(name), id);
        } catch (const std::out_of_range &error) {
            QCOMPARE(id, -1);
            QCOMPARE(error.what(), "invalid map<K, T> key");
        }
    }

    void findsBoundWidgetsByName()
    {
        QWidget view;
        auto *top = new NamedLabel("idLabel", &view);
        auto *nested = new NamedLabel("targetTorqueLabel", new QWidget(&view));
        new QLabel("plain", nested->parentWidget());

        const FieldHelper fields(view.children());
        QCOMPARE(fields.field("idLabel"), static_cast<IZelvarField *>(top));
        QCOMPARE(fields.field("targetTorqueLabel"), static_cast<IZelvarField *>(nested));
        QVERIFY(!fields.hasField("plain"));
        delete nested;
        QVERIFY(!fields.hasField("targetTorqueLabel"));
        QVERIFY_EXCEPTION_THROWN(fields.field("targetTorqueLabel"), std::out_of_range);

        QVERIFY(!FieldHelper::instance());
        const auto created = FieldHelper::create(view.children());
        QCOMPARE(FieldHelper::instance(), created);
        QCOMPARE(FieldHelper::create(QObjectList()), created);
    }
};

QTEST_MAIN(TestUnits)
#include "tst_units.moc"
