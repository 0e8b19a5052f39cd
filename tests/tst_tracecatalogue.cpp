#include "datacolumns.h"
#include "device/physicalquantities.h"
#include "device/zelvarv1.h"
#include "telemetry/registercatalogue.h"
#include "telemetry/telemetrydecoder.h"
#include "trace/tracecatalogue.h"

#include <QtTest>
#include <cmath>

namespace {

// A whole-table reply of the own family with one register set, little-endian.
QByteArray replyWith(int address, int size, qint64 raw)
{
    QByteArray reply(118 + 11, '\0');
    reply[8] = '\x04';
    for (int i = 0; i < size; ++i)
        reply[9 + address + i] = char(quint64(raw) >> (8 * i));
    return reply;
}

// Every quantity in its first unit (0) or its second (1), where it has two.
QVector<TraceChannel> channelsIn(int unitIndex)
{
    const int32_t i = unitIndex;
    auto decoder = std::make_shared<TelemetryDecoder>(
        std::make_shared<RegisterCatalogue>(ZelvarV1()),
        std::make_shared<PhysicalQuantities>(PhysicalQuantities{i, i, 0, i, 0, i, i, 0, 0}));
    return TraceCatalogue(decoder).channels();
}

const TraceChannel *find(const QVector<TraceChannel> &channels, const QString &key)
{
    for (const TraceChannel &channel : channels) {
        if (channel.key == key)
            return &channel;
    }
    return nullptr;
}

} // namespace

class TestTraceCatalogue : public QObject
{
    Q_OBJECT

private slots:
    void readsEachChannelFromTheReplyInUnits_data()
    {
        addColumns<QString, int, int, int, qint64, double, QString>(
            {"key", "unitIndex", "address", "size", "raw", "shown", "title"});
        // Signed 32-bit: a negative position; 4096 counts are one turn.
        QTest::newRow("position, degrees")
            << "position" << 1 << 86 << 4 << qint64(-1024) << -90.0 << "Actual position [degrees]";
        QTest::newRow("position, radians") << "position" << 0 << 86 << 4 << qint64(4096)
                                           << 6.283185307 << "Actual position [radians]";
        QTest::newRow("velocity, rpm") << "velocity" << 1 << 90 << 2 << qint64(1000) << 9.549296586
                                       << "Actual angular velocity [rpm]";
        QTest::newRow("current, A")
            << "current" << 0 << 95 << 2 << qint64(200) << 0.2 << "Actual phase current [A]";
        QTest::newRow("current, mA")
            << "current" << 1 << 95 << 2 << qint64(200) << 200.0 << "Actual phase current [mA]";
        QTest::newRow("temperature, °F")
            << "temperature" << 1 << 97 << 1 << qint64(50) << 122.0 << "Actual temperature [°F]";
        // Unsigned with a direction bit: clockwise is negative.
        QTest::newRow("target velocity, clockwise")
            << "target-velocity" << 0 << 82 << 2 << qint64(0x8000 | 500) << -0.5
            << "Target angular velocity [rad/s]";
        QTest::newRow("moving, no unit")
            << "moving" << 0 << 99 << 1 << qint64(1) << 1.0 << "Moving";
        QTest::newRow("register by description")
            << "register-3" << 0 << 3 << 1 << qint64(7) << 7.0 << "ID";
    }
    void readsEachChannelFromTheReplyInUnits()
    {
        QFETCH(QString, key);
        QFETCH(int, unitIndex);
        QFETCH(int, address);
        QFETCH(int, size);
        QFETCH(qint64, raw);
        QFETCH(double, shown);
        QFETCH(QString, title);
        const QVector<TraceChannel> channels = channelsIn(unitIndex);
        const TraceChannel *channel = find(channels, key);
        QVERIFY(channel);
        QCOMPARE(channel->title(), title);
        const double value = channel->value(replyWith(address, size, raw));
        QVERIFY2(qAbs(value - shown) < 1e-6, qPrintable(QString::number(value, 'g', 12)));
    }

    void offersQuantitiesFirstAndEveryOtherRegisterOnce()
    {
        const QVector<TraceChannel> channels = channelsIn(0);
        QStringList keys;
        for (const TraceChannel &channel : channels)
            keys.append(channel.key);
        QCOMPARE(keys.mid(0, 10),
                 QStringList({"position", "velocity", "torque", "current", "voltage", "temperature",
                              "moving", "target-position", "target-velocity", "target-torque"}));
        QCOMPARE(keys.removeDuplicates(), 0);
        // The quantities' own registers are not offered a second time.
        QVERIFY(!keys.contains("register-86"));
        QVERIFY(keys.contains("register-20"));
    }

    void aShortReplyGivesNoValue()
    {
        const QVector<TraceChannel> channels = channelsIn(0);
        QVERIFY(std::isnan(find(channels, "temperature")->value(QByteArray(50, '\0'))));
    }

    void recordsQuantitiesStatusAndChosenRegistersRaw()
    {
        auto decoder =
            std::make_shared<TelemetryDecoder>(std::make_shared<RegisterCatalogue>(ZelvarV1()),
                                               std::make_shared<PhysicalQuantities>());
        const QVector<TraceChannel> columns =
            TraceCatalogue(decoder).recordingColumns({"register-20", "register-3"});
        QStringList titles;
        for (const TraceChannel &column : columns)
            titles.append(column.title());
        QCOMPARE(titles.mid(10), QStringList({"Error byte", "Hardware error status", "ID (raw)",
                                              "Home position offset (raw)"}));
        QCOMPARE(columns.at(10).value(replyWith(0, 1, 0)), 4.0);
        QCOMPARE(columns.at(13).value(replyWith(20, 4, -5)), -5.0);
    }
};

QTEST_GUILESS_MAIN(TestTraceCatalogue)
#include "tst_tracecatalogue.moc"
