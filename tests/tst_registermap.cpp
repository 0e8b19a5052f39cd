#include "device/uiregisterhelper.h"
#include "device/zelvarv1.h"
#include "widgets/iunitdatafield.h"
#include "widgets/zelvarparametersgroupbox.h"

#include <QtTest>
#include <set>
#include <stdexcept>

namespace {

// Records what the register map hands to a bound widget.
class RecordingField : public QWidget, public IUnitDataField
{
public:
    explicit RecordingField(const QString &name, QWidget *parent = nullptr)
        : QWidget(parent)
    {
        QObject::setObjectName(name);
    }

    QString objectName() const override { return QObject::objectName(); }
    void setLocked(bool) override {}
    int32_t fieldId() const override { return 0; }
    void setValue(int raw) override { values.append(raw); }
    int value() override { return values.isEmpty() ? 0 : values.last(); }
    void setObjectName(const QString &name) override { QObject::setObjectName(name); }
    void applyDependency() override { ++dependencyRuns; }

    QList<int> values;
    int dependencyRuns = 0;
};

} // namespace

class TestRegisterMap : public QObject
{
    Q_OBJECT

private slots:
    void describedRegisters_data();
    void describedRegisters();
    void gapsHaveNoDescription_data();
    void gapsHaveNoDescription();
    void bankRowsAreCountedAndDense();
    void pollWalkVisitsEveryItemAndWraps();
    void itemSizes_data();
    void itemSizes();
    void unknownAddressThrows();
    void narrowsToTheRegisterType_data();
    void narrowsToTheRegisterType();
    void oneRegisterFeedsTwoWidgets();
    void hardwareStatusBits_data();
    void hardwareStatusBits();
    void valueWaitsWhileGroupIsEdited();
    void unknownAndDestroyedWidgetsAreIgnored();
    void processWideInstance();
};

void TestRegisterMap::describedRegisters_data()
{
    QTest::addColumn<int>("address");
    QTest::addColumn<uint>("bank");
    QTest::addColumn<int>("row");
    QTest::addColumn<uint>("writable");
    QTest::addColumn<QString>("text");

    QTest::newRow("model number") << 0 << 0u << 0 << 0u << "Model number (lower)";
    QTest::newRow("id is writable") << 3 << 0u << 3 << 1u << "ID";
    QTest::newRow("last of bank 0") << 26 << 0u << 26 << 1u << "Input mode";
    QTest::newRow("last of bank 1")
        << 40 << 1u << 13 << 1u << "Default acceleration profile (upper)";
    QTest::newRow("last of bank 2") << 85 << 2u << 23 << 1u << "Target torque (upper)";
    QTest::newRow("actual position is read-only")
        << 86 << 3u << 0 << 0u << "Actual position (byte 0)";
    QTest::newRow("torque upper keeps the lower text")
        << 93 << 3u << 7 << 0u << "Actual torque (lower)";
    QTest::newRow("repeated profile lower")
        << 101 << 3u << 13 << 0u << "Angular velocity profile (lower)";
    QTest::newRow("repeated profile upper")
        << 102 << 3u << 14 << 0u << "Angular velocity profile (upper)";
    QTest::newRow("hardware status") << 107 << 3u << 15 << 0u << "Hardware error status";
    QTest::newRow("last register") << 117 << 3u << 21 << 0u << "Debug 4 (upper)";
}

void TestRegisterMap::describedRegisters()
{
    QFETCH(int, address);
    QFETCH(uint, bank);
    QFETCH(int, row);
    QFETCH(uint, writable);
    QFETCH(QString, text);

    const auto description = ZelvarV1().registerDescription(uint16_t(address));
    QVERIFY(description);
    QCOMPARE(description->bank, bank);
    QCOMPARE(int(description->row), row);
    QCOMPARE(description->writable, writable);
    QCOMPARE(description->description, text);
}

void TestRegisterMap::gapsHaveNoDescription_data()
{
    QTest::addColumn<int>("address");

    for (int address :
         {41, 47, 50, 53, 64, 67, 72, 77, 98, 100, 103, 106, 108, 111, 118, 119, 65535})
        QTest::addRow("%d", address) << address;
}

void TestRegisterMap::gapsHaveNoDescription()
{
    QFETCH(int, address);
    QVERIFY(!ZelvarV1().registerDescription(uint16_t(address)));
}

void TestRegisterMap::bankRowsAreCountedAndDense()
{
    // Every bank's rows must run 0, 1, 2 ... without a hole or a repeat, or the register
    // view would leave a row empty or overwrite one.
    const ZelvarV1 device;
    const unsigned expected[] = {27, 14, 24, 22};
    std::vector<std::set<int>> rows(4);
    unsigned described = 0;
    for (int address = 0; address < 256; ++address) {
        const auto description = device.registerDescription(uint16_t(address));
        if (!description)
            continue;
        ++described;
        QVERIFY(description->bank < 4);
        QVERIFY2(rows[description->bank].insert(description->row).second,
                 qPrintable(QString("row repeated at %1").arg(address)));
    }
    QCOMPARE(described, 87u);
    for (unsigned bank = 0; bank < 4; ++bank) {
        QCOMPARE(device.registerCount(bank), expected[bank]);
        QCOMPARE(unsigned(rows[bank].size()), expected[bank]);
        QCOMPARE(*rows[bank].rbegin(), int(expected[bank]) - 1);
    }
    QCOMPARE(device.registerCount(4), 0u);
}

void TestRegisterMap::pollWalkVisitsEveryItemAndWraps()
{
    // The scheduler steps from address 0 by each item's size and wraps at 120; every stop
    // must be an item, or its lookup fails.
    const UiRegisterHelper helper;
    std::set<int> visited;
    int address = 0;
    while (address < 120) {
        QVERIFY2(helper.pollMap().count(uint8_t(address)),
                 qPrintable(QString("no item at %1").arg(address)));
        visited.insert(address);
        address += helper.item(uint8_t(address)).size;
    }
    QCOMPARE(address, 120);
    QCOMPARE(visited.size(), helper.pollMap().size());
}

void TestRegisterMap::itemSizes_data()
{
    QTest::addColumn<int>("address");
    QTest::addColumn<int>("size");

    QTest::newRow("unbound after the defaults") << 41 << 1;
    QTest::newRow("unbound word") << 103 << 4;
    QTest::newRow("hardware status") << 107 << 1;
    QTest::newRow("past the table") << 118 << 1;
}

void TestRegisterMap::itemSizes()
{
    QFETCH(int, address);
    QFETCH(int, size);

    const UiRegisterHelper helper;
    QCOMPARE(int(helper.item(uint8_t(address)).size), size);
}

void TestRegisterMap::unknownAddressThrows()
{
    const UiRegisterHelper helper;
    try {
        helper.item(1);
        QFAIL("no exception");
    } catch (const std::out_of_range &error) {
        QCOMPARE(error.what(), "invalid map<K, T> key");
    }
    QVERIFY_EXCEPTION_THROWN(helper.item(120), std::out_of_range);
}

void TestRegisterMap::narrowsToTheRegisterType_data()
{
    QTest::addColumn<int>("address");
    QTest::addColumn<QString>("widget");
    QTest::addColumn<qint64>("assembled");
    QTest::addColumn<int>("shown");

    QTest::newRow("16-bit signed")
        << 9 << "counterClockwiseLimitDoubleSpinBox" << qint64(0x8001) << -32767;
    QTest::newRow("32-bit signed")
        << 78 << "targetPositionDoubleSpinBox" << qint64(0xFFFFFFFF) << -1;
    QTest::newRow("16-bit unsigned")
        << 14 << "quadratureCurrentLimitDoubleSpinBox" << qint64(0x8001) << 32769;
    QTest::newRow("8-bit unsigned") << 3 << "idSpinBox" << qint64(0x1FE) << 254;
    QTest::newRow("firmware is 16-bit")
        << 2 << "firmwareVersionLineEdit" << qint64(0x1234) << 0x1234;
    QTest::newRow("model number") << 0 << "modelNumberLineEdit" << qint64(0x0A05) << 0x0A05;
}

void TestRegisterMap::narrowsToTheRegisterType()
{
    QFETCH(int, address);
    QFETCH(QString, widget);
    QFETCH(qint64, assembled);
    QFETCH(int, shown);

    UiRegisterHelper helper;
    RecordingField field(widget);
    helper.registerWidget(widget, &field);
    // The scheduler sums the bytes as unsigned 32 bits and passes them on as signed.
    helper.item(uint8_t(address)).callback(int32_t(uint32_t(assembled)));
    QCOMPARE(field.values, QList<int>{shown});
    QCOMPARE(field.dependencyRuns, 1);
}

void TestRegisterMap::oneRegisterFeedsTwoWidgets()
{
    UiRegisterHelper helper;
    RecordingField speed("targetAngularVelocityDoubleSpinBox");
    RecordingField direction("targetAngularVelocityDirectionComboBox");
    helper.registerWidget(speed.objectName(), &speed);
    helper.registerWidget(direction.objectName(), &direction);
    helper.item(82).callback(0x8064);
    QCOMPARE(speed.values, QList<int>{0x8064});
    QCOMPARE(direction.values, QList<int>{0x8064});
}

void TestRegisterMap::hardwareStatusBits_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QList<int>>("shown");

    // In the order input voltage, hall, overheating, encoder, angle limit.
    QTest::newRow("clear") << 0x00 << QList<int>{0, 0, 0, 0, 0};
    QTest::newRow("all five") << 0x1F << QList<int>{1, 2, 4, 8, 16};
    QTest::newRow("bits 5 and 6 show nowhere") << 0x60 << QList<int>{0, 0, 0, 0, 0};
    QTest::newRow("bit 7 is not examined") << 0x84 << QList<int>{0, 0, 4, 0, 0};
    QTest::newRow("wider value is narrowed") << 0x1FF << QList<int>{1, 2, 4, 8, 16};
}

void TestRegisterMap::hardwareStatusBits()
{
    QFETCH(int, status);
    QFETCH(QList<int>, shown);

    UiRegisterHelper helper;
    const QStringList names{"inputVoltageStatusCheckBox", "hallStatusCheckBox",
                            "overheatingStatusCheckBox", "encoderStatusCheckBox",
                            "angleLimitStatusCheckBox"};
    std::vector<std::unique_ptr<RecordingField>> boxes;
    for (const QString &name : names) {
        boxes.push_back(std::make_unique<RecordingField>(name));
        helper.registerWidget(name, boxes.back().get());
    }
    helper.item(107).callback(status);
    for (int bit = 0; bit < names.size(); ++bit)
        QCOMPARE(boxes[size_t(bit)]->values, QList<int>{shown[bit]});
}

void TestRegisterMap::valueWaitsWhileGroupIsEdited()
{
    UiRegisterHelper helper;
    ZelvarParametersGroupBox group;
    auto *field = new RecordingField("idSpinBox", &group);
    helper.registerWidget(field->objectName(), field);

    group.editMode = true;
    helper.item(3).callback(5);
    QVERIFY(field->values.isEmpty());
    // The mode locks still follow while the user edits.
    QCOMPARE(field->dependencyRuns, 1);

    group.editMode = false;
    helper.item(3).callback(6);
    QCOMPARE(field->values, QList<int>{6});
}

void TestRegisterMap::unknownAndDestroyedWidgetsAreIgnored()
{
    UiRegisterHelper helper;
    for (const auto &entry : helper.pollMap())
        entry.second->callback(-1);

    auto field = std::make_unique<RecordingField>("idSpinBox");
    helper.registerWidget(field->objectName(), field.get());
    field.reset();
    helper.item(3).callback(7);

    RecordingField replacement("idSpinBox");
    helper.registerWidget(replacement.objectName(), &replacement);
    helper.item(3).callback(8);
    QCOMPARE(replacement.values, QList<int>{8});
}

void TestRegisterMap::processWideInstance()
{
    const auto first = UiRegisterHelper::instance();
    QVERIFY(first);
    QCOMPARE(UiRegisterHelper::instance(), first);
    QCOMPARE(first->pollMap().size(), UiRegisterHelper().pollMap().size());
}

QTEST_MAIN(TestRegisterMap)
#include "tst_registermap.moc"
