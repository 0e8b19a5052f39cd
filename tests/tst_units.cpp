#include "device/conversionhelper.h"
#include "device/fieldhelper.h"
#include "device/fieldlimits.h"
#include "device/physicalquantities.h"
#include "device/unitshelper.h"
#include "widgets/izelvarfield.h"

#include <QLabel>
#include <QtTest>
#include <limits>
#include <stdexcept>

Q_DECLARE_METATYPE(FieldLimits)

namespace {

std::shared_ptr<PhysicalQuantities> allUnits(int32_t index)
{
    auto quantities = std::make_shared<PhysicalQuantities>();
    for (int32_t PhysicalQuantities::*code :
         {&PhysicalQuantities::angularVelocity, &PhysicalQuantities::angle,
          &PhysicalQuantities::angularAcceleration, &PhysicalQuantities::torque,
          &PhysicalQuantities::voltage, &PhysicalQuantities::current,
          &PhysicalQuantities::temperature, &PhysicalQuantities::returnDelay})
        (*quantities).*code = index;
    return quantities;
}

FieldLimits limitsOf(int32_t rawMin, int32_t rawMax, double physicalMin, double physicalMax)
{
    FieldLimits limits;
    limits.rawMin = rawMin;
    limits.rawMax = rawMax;
    limits.physicalMin = physicalMin;
    limits.physicalMax = physicalMax;
    return limits;
}

const FieldLimits positionLimits =
    limitsOf(-1044479, 1044479, -1602.2107193496022, 1602.2107193496022);

class NamedLabel : public QLabel, public IZelvarField
{
public:
    NamedLabel(const QString &name, QWidget *parent = nullptr)
        : QLabel(parent)
    {
        QLabel::setObjectName(name);
    }
    QString objectName() const override { return QLabel::objectName(); }
    void setLocked(bool lock) override { setDisabled(lock); }
};

} // namespace

class TestUnits : public QObject
{
    Q_OBJECT

private slots:
    void toDisplay_data();
    void toDisplay();
    void fromDisplayInvertsToDisplay_data();
    void fromDisplayInvertsToDisplay();
    void keepsTheTwelveDecimalConstant();
    void unitRows_data();
    void unitRows();
    void unknownUnitChoiceFallsBackToFirstUnit();
    void rawToDisplay_data();
    void rawToDisplay();
    void displayToRaw_data();
    void displayToRaw();
    void fieldIds_data();
    void fieldIds();
    void unknownFieldNameThrows();
    void findsBoundWidgetsByName();
};

void TestUnits::toDisplay_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("unitIndex");
    QTest::addColumn<double>("base");
    QTest::addColumn<double>("shown");

    QTest::newRow("rad/s") << 0 << 0 << 2.5 << 2.5;
    QTest::newRow("rpm") << 0 << 1 << 6.283185307178 << 60.0;
    QTest::newRow("degrees") << 1 << 1 << 3.141592653589 << 180.0;
    QTest::newRow("rad/s2 never converts") << 2 << 1 << 4.0 << 4.0;
    QTest::newRow("kg-cm") << 3 << 1 << 2.0 << 20.39432;
    QTest::newRow("V never converts") << 4 << 1 << 12.5 << 12.5;
    QTest::newRow("A is index 0") << 5 << 0 << 1500.0 << 1.5;
    QTest::newRow("mA is the base") << 5 << 1 << 1500.0 << 1500.0;
    QTest::newRow("degF") << 6 << 1 << 100.0 << 212.0;
    QTest::newRow("degF below zero") << 6 << 1 << -40.0 << -40.0;
    QTest::newRow("us never converts") << 7 << 1 << 508.0 << 508.0;
    QTest::newRow("direction") << 21 << 1 << 1.0 << 1.0;
    QTest::newRow("negative id") << -1 << 1 << 3.0 << 3.0;
}

void TestUnits::toDisplay()
{
    QFETCH(int, id);
    QFETCH(int, unitIndex);
    QFETCH(double, base);
    QFETCH(double, shown);

    const UnitsHelper units(allUnits(unitIndex));
    QCOMPARE(units.toDisplay(base, id), shown);
    QCOMPARE(units.fromDisplay(shown, id), base);
}

void TestUnits::fromDisplayInvertsToDisplay_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("unitIndex");

    for (int id = 0; id <= 23; ++id) {
        for (int index = 0; index <= 1; ++index)
            QTest::addRow("id %d unit %d", id, index) << id << index;
    }
}

void TestUnits::fromDisplayInvertsToDisplay()
{
    QFETCH(int, id);
    QFETCH(int, unitIndex);

    const UnitsHelper units(allUnits(unitIndex));
    for (double base : {-123.456, -1.0, 0.5, 77.0, 1602.2107193496022})
        QCOMPARE(units.fromDisplay(units.toDisplay(base, id), id), base);
}

void TestUnits::keepsTheTwelveDecimalConstant()
{
    // Exact comparisons: full-precision 2 pi would give 9.549296585513721, which a
    // fuzzy compare would let through.
    const UnitsHelper units(allUnits(1));
    QVERIFY(units.toDisplay(1.0, 0) == 9.549296585516132);
    QVERIFY(units.fromDisplay(60.0, 0) == 6.283185307178);
    QVERIFY(units.fromDisplay(180.0, 1) == 3.141592653589);
    QVERIFY(units.fromDisplay(212.0, 6) == 100.0);
    QVERIFY(ConversionHelper::twoPi == 6.283185307178);
    QVERIFY(ConversionHelper::pi == 3.141592653589);
}

void TestUnits::unitRows_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("unitIndex");
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<double>("step");

    QTest::newRow("radians") << 1 << 0 << "radians" << 3 << 0.001533980787885254;
    QTest::newRow("degrees step is zero") << 1 << 1 << "degrees" << 2 << 0.0;
    QTest::newRow("rad/s2") << 2 << 0 << QString::fromUtf8("rad/s\u00b2") << 2 << 0.01;
    QTest::newRow("no second acceleration unit") << 2 << 1 << QString() << 0 << 0.0;
    QTest::newRow("degC") << 6 << 0 << QString::fromUtf8("\u00b0C") << 0 << 1.0;
    QTest::newRow("degF") << 6 << 1 << QString::fromUtf8("\u00b0F") << 1 << 1.0;
    QTest::newRow("us") << 7 << 0 << QString::fromUtf8("\u03bcs") << 0 << 1.0;
    QTest::newRow("unitless spin box stays steppable") << 8 << 1 << QString() << 3 << 1.0;
    QTest::newRow("unitless gain") << 10 << 0 << QString() << 3 << 1.0;
}

void TestUnits::unitRows()
{
    QFETCH(int, id);
    QFETCH(int, unitIndex);
    QFETCH(QString, name);
    QFETCH(int, decimals);
    QFETCH(double, step);

    const UnitsHelper units(allUnits(unitIndex));
    QCOMPARE(units.unitName(id), name);
    QCOMPARE(units.decimals(id), decimals);
    QVERIFY(units.singleStep(id) == step);
    QCOMPARE(units.unitIndex(id), id <= 7 ? unitIndex : 0);
}

void TestUnits::unknownUnitChoiceFallsBackToFirstUnit()
{
    for (int32_t stored : {2, -1, 1000}) {
        const UnitsHelper units(allUnits(stored));
        QCOMPARE(units.unitIndex(6), 0);
        QCOMPARE(units.unitName(6), QString::fromUtf8("\u00b0C"));
        QCOMPARE(units.toDisplay(1500.0, 5), 1.5);
    }
    const UnitsHelper withoutChoices(nullptr);
    QCOMPARE(withoutChoices.unitName(0), QStringLiteral("rad/s"));
}

void TestUnits::rawToDisplay_data()
{
    QTest::addColumn<FieldLimits>("limits");
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("unitIndex");
    QTest::addColumn<int>("raw");
    QTest::addColumn<double>("shown");

    const FieldLimits offset = limitsOf(100, 1100, 0.0, 10.0);
    const FieldLimits angleLimit = limitsOf(-2047, 2047, -3.141592653589, 3.141592653589);
    const FieldLimits ax12Position = limitsOf(0, 2047, -3.141592653589, 3.141592653589);
    const FieldLimits voltage = limitsOf(0, 255, 0.0, 25.5);
    const FieldLimits current = limitsOf(0, 255, 0.0, 255.0);
    const FieldLimits comboBox = limitsOf(0, 0, 0.0, 0.0);

    QTest::newRow("rawMin is physicalMin") << offset << 9 << 0 << 100 << 0.0;
    QTest::newRow("middle of an offset range") << offset << 9 << 0 << 600 << 5.0;
    QTest::newRow("below rawMin") << offset << 9 << 0 << 0 << -1.0;
    QTest::newRow("angle limit in degrees") << angleLimit << 1 << 1 << -2047 << -180.0;
    QTest::newRow("ax12 raw zero is minus pi") << ax12Position << 1 << 0 << 0 << -3.141592653589;
    QTest::newRow("position top") << positionLimits << 1 << 0 << 1044479 << 1602.2107193496022;
    QTest::newRow("current in A") << current << 5 << 0 << 250 << 0.25;
    QTest::newRow("empty range shows physicalMin") << comboBox << 19 << 0 << 3 << 0.0;
}

void TestUnits::rawToDisplay()
{
    QFETCH(FieldLimits, limits);
    QFETCH(int, id);
    QFETCH(int, unitIndex);
    QFETCH(int, raw);
    QFETCH(double, shown);

    const UnitsHelper units(allUnits(unitIndex));
    QCOMPARE(units.rawToDisplay(raw, limits, id), shown);
}

void TestUnits::displayToRaw_data()
{
    QTest::addColumn<FieldLimits>("limits");
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("unitIndex");
    QTest::addColumn<double>("shown");
    QTest::addColumn<int>("raw");

    const FieldLimits offset = limitsOf(100, 1100, 0.0, 10.0);
    const FieldLimits comboBox = limitsOf(0, 0, 0.0, 0.0);

    QTest::newRow("offset range adds rawMin") << offset << 9 << 0 << 5.0 << 600;
    QTest::newRow("2.9 counts truncate to 2") << offset << 9 << 0 << 0.029 << 102;
    QTest::newRow("0.0019 rad is one count") << positionLimits << 1 << 0 << 0.0019 << 1;
    QTest::newRow("-0.0019 rad truncates toward zero") << positionLimits << 1 << 0 << -0.0019 << -1;
    QTest::newRow("0.1 degree is one count") << positionLimits << 1 << 1 << 0.1 << 1;
    QTest::newRow("current in A") << limitsOf(0, 255, 0.0, 255.0) << 5 << 0 << 0.2509 << 250;
    QTest::newRow("rpm") << limitsOf(0, 2400, 0.0, 2.4) << 0 << 1 << 10.0 << 1047;
    QTest::newRow("degF") << limitsOf(0, 255, 0.0, 255.0) << 6 << 1 << 212.0 << 100;
    QTest::newRow("empty range gives rawMin") << comboBox << 19 << 0 << 4.0 << 0;
    QTest::newRow("far past the range saturates")
        << offset << 9 << 0 << 1e300 << std::numeric_limits<int32_t>::max();
    QTest::newRow("not a number gives rawMin")
        << offset << 9 << 0 << std::numeric_limits<double>::quiet_NaN() << 100;
}

void TestUnits::displayToRaw()
{
    QFETCH(FieldLimits, limits);
    QFETCH(int, id);
    QFETCH(int, unitIndex);
    QFETCH(double, shown);
    QFETCH(int, raw);

    const UnitsHelper units(allUnits(unitIndex));
    QCOMPARE(units.displayToRaw(shown, limits, id), raw);
}

void TestUnits::fieldIds_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("id");

    QTest::newRow("current limit converts as torque") << "quadratureCurrentLimitDoubleSpinBox" << 3;
    QTest::newRow("its label shows a current") << "quadratureCurrentLimitLabel" << 5;
    QTest::newRow("lower-case q label") << "maxquadratureCurrentLimitLabel" << 5;
    QTest::newRow("servo id") << "idSpinBox" << 8;
    QTest::newRow("profile is not converted") << "angularVelocityProfileDoubleSpinBox" << 15;
    QTest::newRow("its label is") << "angularVelocityProfileLabel" << 0;
    QTest::newRow("status box") << "hallStatusCheckBox" << 22;
    QTest::newRow("ID label") << "idLabel" << 23;
}

void TestUnits::fieldIds()
{
    QFETCH(QString, name);
    QFETCH(int, id);

    QVERIFY(FieldHelper::hasFieldId(name));
    QCOMPARE(FieldHelper::fieldId(name), id);
}

void TestUnits::unknownFieldNameThrows()
{
    for (const QString &name : QStringList{"positionLineEdit", "overloadStatusCheckBox", ""}) {
        QVERIFY(!FieldHelper::hasFieldId(name));
        try {
            FieldHelper::fieldId(name);
            QFAIL("no exception");
        } catch (const std::out_of_range &error) {
            QCOMPARE(error.what(), "invalid map<K, T> key");
        }
    }
}

void TestUnits::findsBoundWidgetsByName()
{
    QWidget view;
    auto *top = new NamedLabel("idLabel", &view);
    auto *box = new QWidget(&view);
    auto *nested = new NamedLabel("targetTorqueLabel", box);
    new QLabel("plain", box);

    const FieldHelper fields(view.children());
    QCOMPARE(fields.field("idLabel"), static_cast<IZelvarField *>(top));
    QCOMPARE(fields.field("targetTorqueLabel"), static_cast<IZelvarField *>(nested));
    QVERIFY(!fields.hasField("plain"));
    QVERIFY_EXCEPTION_THROWN(fields.field("plain"), std::out_of_range);

    delete nested;
    QVERIFY(!fields.hasField("targetTorqueLabel"));
    QVERIFY_EXCEPTION_THROWN(fields.field("targetTorqueLabel"), std::out_of_range);

    QVERIFY(!FieldHelper::instance());
    const auto created = FieldHelper::create(view.children());
    QCOMPARE(FieldHelper::instance(), created);
    QCOMPARE(FieldHelper::create(QObjectList()), created);
    QVERIFY(created->hasField("idLabel"));
}

QTEST_MAIN(TestUnits)
#include "tst_units.moc"
