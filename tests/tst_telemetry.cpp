#include "datacolumns.h"
#include "device/dynamixelax12.h"
#include "device/physicalquantities.h"
#include "device/zelvarv1.h"
#include "telemetry/registercatalogue.h"
#include "telemetry/telemetrydecoder.h"

#include <QtTest>

namespace {

const int radians = 0, converted = 1;

std::shared_ptr<const RegisterCatalogue> catalogueOf(const QString &model)
{
    if (model == "AX-12")
        return std::make_shared<RegisterCatalogue>(DynamixelAx12());
    return std::make_shared<RegisterCatalogue>(ZelvarV1());
}

// Every quantity in its first unit (0) or its second (1), where it has two.
TelemetryDecoder decoderOf(const QString &model, int unitIndex)
{
    const int32_t i = unitIndex;
    return TelemetryDecoder(catalogueOf(model), std::make_shared<PhysicalQuantities>(
                                                    PhysicalQuantities{i, i, 0, i, 0, i, i, 0, 0}));
}

bool near(double actual, double expected)
{
    return qAbs(actual - expected) <= 1e-9 * qMax(1.0, qAbs(expected));
}

} // namespace

class TestTelemetry : public QObject
{
    Q_OBJECT

private slots:
    void catalogue_data()
    {
        addColumns<QString, QString, int, int, bool, bool>(
            {"model", "name", "address", "size", "isSigned", "writable"});

        QTest::newRow("4-byte signed offset") << "ZelvarV1"
                                              << "Home position offset" << 20 << 4 << true << true;
        QTest::newRow("2-byte signed limit") << "ZelvarV1"
                                             << "ccw angle limit" << 9 << 2 << true << true;
        QTest::newRow("found by control name")
            << "ZelvarV1"
            << "targetTorqueDoubleSpinBox" << 84 << 2 << false << true;
        QTest::newRow("repeated label keeps its first address")
            << "ZelvarV1"
            << "Angular velocity profile" << 68 << 2 << false << true;
        QTest::newRow("AX-12 position") << "AX-12"
                                        << "Actual position" << 36 << 2 << false << false;
        QTest::newRow("AX-12 target by description, not its shared control")
            << "AX-12"
            << "positionLineEdit" << 30 << 2 << false << true;
    }

    void catalogue()
    {
        QFETCH(QString, model);
        QFETCH(QString, name);
        QFETCH(int, address);
        QFETCH(int, size);
        QFETCH(bool, isSigned);
        QFETCH(bool, writable);

        const auto catalogue = catalogueOf(model);
        const CatalogueEntry *entry = catalogue->find(name);
        QVERIFY(entry);
        QCOMPARE(int(entry->span.address), address);
        QCOMPARE(int(entry->span.size), size);
        QCOMPARE(entry->span.isSigned, isSigned);
        QCOMPARE(entry->span.writable, writable);
    }

    // Registers must tile the described addresses: a gap or an overlap would put one
    // register's bytes into another's value.
    void zelvarRegistersCoverEveryDescribedAddressOnce()
    {
        const ZelvarV1 device;
        std::vector<int> owners(device.controlTableSize(), 0);
        const RegisterCatalogue catalogue(device);
        for (const CatalogueEntry &entry : catalogue.entries()) {
            for (int i = 0; i < entry.span.size; ++i)
                ++owners[size_t(entry.span.address + i)];
        }
        for (uint16_t address = 0; address < device.controlTableSize(); ++address) {
            const int expected = device.registerDescription(address) ? 1 : 0;
            QVERIFY2(owners[address] == expected, qPrintable(QString::number(address)));
        }
    }

    void decode_data()
    {
        addColumns<QString, QString, QByteArray, int, double, QString>(
            {"model", "name", "bytes", "unitIndex", "shown", "unit"});

        const QByteArray minusOne = QByteArray::fromHex("ffffffff");
        QTest::newRow("position -1 count is signed, in rad")
            << "ZelvarV1"
            << "Actual position" << minusOne << radians << -0.0015339807880536682 << "radians";
        QTest::newRow("position -1 count in degrees")
            << "ZelvarV1"
            << "Actual position" << minusOne << converted << -0.08789062500964943 << "degrees";
        QTest::newRow("2-byte signed angle limit")
            << "ZelvarV1"
            << "CW angle limit" << QByteArray::fromHex("01f8") << radians << -3.141592653589
            << "radians";
        QTest::newRow("current in A")
            << "ZelvarV1"
            << "Actual phase current" << QByteArray::fromHex("c800") << radians << 0.2 << "A";
        QTest::newRow("target velocity counter-clockwise")
            << "ZelvarV1"
            << "Target angular velocity" << QByteArray::fromHex("e803") << radians << 1.0
            << "rad/s";
        QTest::newRow("target velocity clockwise is bit 15")
            << "ZelvarV1"
            << "Target angular velocity" << QByteArray::fromHex("e883") << radians << -1.0
            << "rad/s";
        QTest::newRow("target torque clockwise")
            << "ZelvarV1"
            << "Target torque" << QByteArray::fromHex("28a3") << radians << -9.0 << "Nm";
        QTest::newRow("gain scaled, no unit")
            << "ZelvarV1"
            << "Default position proportional gain" << QByteArray::fromHex("dc05") << radians
            << 150.0 << "";
        QTest::newRow("AX-12 position") << "AX-12"
                                        << "Actual position" << QByteArray::fromHex("ff03")
                                        << converted << -0.08793356130923775 << "degrees";
        QTest::newRow("AX-12 speed direction is bit 10")
            << "AX-12"
            << "Actual angular velocity" << QByteArray::fromHex("6404") << radians << -0.1
            << "rad/s";
    }

    void decode()
    {
        QFETCH(QString, model);
        QFETCH(QString, name);
        QFETCH(QByteArray, bytes);
        QFETCH(int, unitIndex);
        QFETCH(double, shown);
        QFETCH(QString, unit);

        const TelemetryDecoder decoder = decoderOf(model, unitIndex);
        const CatalogueEntry *entry = decoder.catalogue().find(name);
        QVERIFY(entry);
        QByteArray table(int(decoder.catalogue().tableSize()), '\0');
        table.replace(entry->span.address, bytes.size(), bytes);

        const std::optional<DecodedValue> value = decoder.decode(table, *entry);
        QVERIFY(value);
        QVERIFY2(near(value->display, shown), qPrintable(QString::number(value->display, 'g', 17)));
        QCOMPARE(value->unit, unit);
        // A table cut short before the register decodes to nothing, not to zero.
        QVERIFY(!decoder.decode(table.left(entry->span.address + entry->span.size - 1), *entry));
    }

    void displayText_data()
    {
        addColumns<QString, qlonglong, QString>({"name", "raw", "text"});
        QTest::newRow("decimals of the unit") << "Actual temperature" << 50LL << u8"122.0 °F";
        QTest::newRow("decimals of one raw step")
            << "Velocity feedforward gain" << 1234LL << "1.234";
        QTest::newRow("baud rate by its name") << "Baud rate" << 34LL << "57600 bps";
        QTest::newRow("baud rate of an unusual code") << "Baud rate" << 5LL << "333333 bps";
        QTest::newRow("signed in degrees") << "Home position offset" << -1LL << "-0.09 degrees";
    }

    void displayText()
    {
        QFETCH(QString, name);
        QFETCH(qlonglong, raw);
        QFETCH(QString, text);

        const TelemetryDecoder decoder = decoderOf("ZelvarV1", converted);
        const CatalogueEntry *entry = decoder.catalogue().find(name);
        QVERIFY(entry);
        QCOMPARE(decoder.displayText(decoder.decodeRaw(*entry, raw), *entry), text);
    }

    void quantitiesOfBothModels_data()
    {
        addColumns<QString, QStringList>({"model", "missing"});
        QTest::newRow("ZelvarV1") << "ZelvarV1" << QStringList();
        QTest::newRow("AX-12") << "AX-12" << QStringList{"current", "target-torque"};
    }

    void quantitiesOfBothModels()
    {
        QFETCH(QString, model);
        QFETCH(QStringList, missing);

        const auto catalogue = catalogueOf(model);
        QStringList absent;
        for (Quantity quantity : QuantityTable::all()) {
            QCOMPARE(QuantityTable::fromKey(QuantityTable::key(quantity)), quantity);
            if (!catalogue->find(quantity))
                absent << QuantityTable::key(quantity);
        }
        QCOMPARE(absent, missing);
    }

    void encode_data()
    {
        addColumns<QString, int, double, QByteArray, QString>(
            {"name", "unitIndex", "shown", "bytes", "error"});

        QTest::newRow("45 degrees")
            << "Target position" << converted << 45.0 << QByteArray::fromHex("00020000") << "";
        QTest::newRow("negative 4-byte")
            << "Home position offset" << radians << -1.0 << QByteArray::fromHex("75fdffff") << "";
        QTest::newRow("half turn back, 2 bytes signed")
            << "CW angle limit" << converted << -180.0 << QByteArray::fromHex("01f8") << "";
        QTest::newRow("clockwise sets bit 15")
            << "Target angular velocity" << radians << -1.0 << QByteArray::fromHex("e883") << "";
        QTest::newRow("rpm truncates toward zero")
            << "Target angular velocity" << converted << 9.5 << QByteArray::fromHex("e203") << "";
        QTest::newRow("degF to degC")
            << "Upper temperature limit" << converted << 212.0 << QByteArray::fromHex("64") << "";
        QTest::newRow("torque past its range") << "Target torque" << radians << 18.5 << QByteArray()
                                               << "Target torque takes -18.00 to 18.00 Nm";
        QTest::newRow("range named in the chosen unit")
            << "Target position" << converted << 100000.0 << QByteArray()
            << "Target position takes -91799.91 to 91799.91 degrees";
        QTest::newRow("no direction bit, no negative")
            << "Moving threshold" << radians << -0.5 << QByteArray()
            << "Moving threshold takes 0.00 to 2.00 rad/s";
        QTest::newRow("id past 253")
            << "ID" << radians << 254.0 << QByteArray() << "ID takes 0 to 253";
        QTest::newRow("code must be whole") << "Operating mode" << radians << 2.5 << QByteArray()
                                            << "Operating mode takes whole numbers from 0 to 255";
        QTest::newRow("not a number") << "Target torque" << radians << qQNaN() << QByteArray()
                                      << "Target torque takes a number";
    }

    void encode()
    {
        QFETCH(QString, name);
        QFETCH(int, unitIndex);
        QFETCH(double, shown);
        QFETCH(QByteArray, bytes);
        QFETCH(QString, error);

        const TelemetryDecoder decoder = decoderOf("ZelvarV1", unitIndex);
        const CatalogueEntry *entry = decoder.catalogue().find(name);
        QVERIFY(entry);
        const EncodedValue encoded = decoder.fromDisplay(*entry, shown);
        QCOMPARE(encoded.error, error);
        QCOMPARE(encoded.raw.has_value(), !bytes.isEmpty());
        if (encoded.raw)
            QCOMPARE(TelemetryDecoder::bytes(entry->span, *encoded.raw).toHex(), bytes.toHex());
    }

    void baseUnitsAreRefusedInBaseUnits()
    {
        const TelemetryDecoder decoder = decoderOf("ZelvarV1", converted);
        const CatalogueEntry *current = decoder.catalogue().find("Torque limit");
        QVERIFY(current);
        QCOMPARE(decoder.fromBase(*current, 6.0).error, "Torque limit takes 0.00 to 5.00 Nm");
        QCOMPARE(*decoder.fromBase(*current, 2.5).raw, 2500);
    }
};

QTEST_GUILESS_MAIN(TestTelemetry)
#include "tst_telemetry.moc"
