#include "datacolumns.h"
#include "trace/samplebuffer.h"

#include <QtTest>
#include <cmath>

namespace {

// Appends one row per time (ms), the value being the time itself on channel 0 and its
// negative on channel 1.
int feed(SampleBuffer &buffer, const QVector<qint64> &timesMs)
{
    int taken = 0;
    for (qint64 ms : timesMs) {
        const double row[] = {double(ms), -double(ms)};
        taken += buffer.append(ms * 1000, row) ? 1 : 0;
    }
    return taken;
}

QVector<qint64> steady(qint64 fromMs, qint64 toMs, qint64 stepMs)
{
    QVector<qint64> times;
    for (qint64 ms = fromMs; ms <= toMs; ms += stepMs)
        times.append(ms);
    return times;
}

int gapCount(const SampleBuffer &buffer)
{
    int gaps = 0;
    for (int row = 0; row < buffer.size(); ++row)
        gaps += std::isnan(buffer.value(0, row)) ? 1 : 0;
    return gaps;
}

} // namespace

class TestSampleBuffer : public QObject
{
    Q_OBJECT

private slots:
    void trimsToTheWindow_data()
    {
        addColumns<qint64, qint64, double>({"windowMs", "lastMs", "firstKept"});
        // One row older than the window stays, so the line reaches the left edge.
        QTest::newRow("10 s of 30 s") << qint64(9'995) << qint64(30'000) << 20.0;
        QTest::newRow("shorter than the window") << qint64(10'000) << qint64(5'000) << 0.0;
        QTest::newRow("below 1 s becomes 1 s") << qint64(10) << qint64(3'000) << 2.0;
        QTest::newRow("above 10 min becomes 10 min")
            << qint64(3'600'000) << qint64(700'000) << 100.0;
    }
    void trimsToTheWindow()
    {
        QFETCH(qint64, windowMs);
        QFETCH(qint64, lastMs);
        QFETCH(double, firstKept);
        SampleBuffer buffer(2);
        buffer.setWindow(windowMs * 1000);
        feed(buffer, steady(0, lastMs, 10));
        QCOMPARE(buffer.time(0), firstKept);
        QCOMPARE(buffer.time(buffer.size() - 1), double(lastMs) / 1000);
        QCOMPARE(buffer.value(1, buffer.size() - 1), -double(lastMs));
    }

    void shrinkingTheWindowDropsRows()
    {
        SampleBuffer buffer(2);
        feed(buffer, steady(0, 10'000, 10));
        buffer.setWindow(1'995'000);
        QCOMPARE(buffer.time(0), 8.0);
    }

    void breaksTheLineWhereRepliesStopped_data()
    {
        addColumns<QVector<qint64>, int>({"timesMs", "gaps"});
        QTest::newRow("steady") << steady(0, 1000, 10) << 0;
        QTest::newRow("jitter within three intervals")
            << QVector<qint64>{0, 10, 20, 45, 55, 80, 90} << 0;
        QTest::newRow("one hole") << steady(0, 500, 10) + steady(600, 700, 10) << 1;
        QTest::newRow("two holes")
            << steady(0, 100, 10) + steady(200, 300, 10) + steady(900, 950, 10) << 2;
        QTest::newRow("repeated time is dropped") << QVector<qint64>{0, 10, 10, 20, 15, 30} << 0;
    }
    void breaksTheLineWhereRepliesStopped()
    {
        QFETCH(QVector<qint64>, timesMs);
        QFETCH(int, gaps);
        SampleBuffer buffer(2);
        buffer.setWindow(SampleBuffer::maxWindowUs);
        feed(buffer, timesMs);
        QCOMPARE(gapCount(buffer), gaps);
        for (int row = 1; row < buffer.size(); ++row)
            QVERIFY(buffer.time(row) >= buffer.time(row - 1));
    }

    void readsTheValueThatStoodAtATime()
    {
        SampleBuffer buffer(2);
        feed(buffer, steady(1000, 1500, 10) + steady(2000, 2100, 10));
        QVERIFY(std::isnan(buffer.valueAt(0, 0.5)));
        QCOMPARE(buffer.valueAt(0, 1.0), 1000.0);
        QCOMPARE(buffer.valueAt(1, 1.2149), -1210.0);
        // The line holds until the next reply was due, then the gap begins.
        QCOMPARE(buffer.valueAt(0, 1.505), 1500.0);
        QVERIFY(std::isnan(buffer.valueAt(0, 1.7)));
        QCOMPARE(buffer.valueAt(0, 5.0), 2100.0);
    }

    void convertsTheHistoryWhenUnitsChange()
    {
        SampleBuffer buffer(2);
        buffer.setConversion(0, [](double raw) { return raw / 1000; });
        feed(buffer, steady(0, 100, 10) + steady(500, 600, 10));
        QCOMPARE(buffer.value(0, 5), 0.05);
        // Other units: the rows stay and show anew, the gap stays a gap.
        buffer.setConversion(0, [](double raw) { return raw * 2; });
        QCOMPARE(buffer.value(0, 5), 100.0);
        QCOMPARE(buffer.rawValue(0, 5), 50.0);
        QCOMPARE(buffer.value(1, 5), -50.0);
        QCOMPARE(gapCount(buffer), 1);
        feed(buffer, {610});
        QCOMPARE(buffer.value(0, buffer.size() - 1), 1220.0);
    }

    void pauseAndFreeze_data()
    {
        addColumns<bool, int, int, int>({"freeze", "takenWhileStopped", "takenAfter", "gaps"});
        // Paused rows are lost to the plot; resuming starts a new line.
        QTest::newRow("pause and resume") << false << 0 << 11 << 1;
        // Frozen after a disconnect: the rows stay until the next connection clears them.
        QTest::newRow("freeze") << true << 0 << 0 << 0;
    }
    void pauseAndFreeze()
    {
        QFETCH(bool, freeze);
        QFETCH(int, takenWhileStopped);
        QFETCH(int, takenAfter);
        QFETCH(int, gaps);
        SampleBuffer buffer(2);
        feed(buffer, steady(0, 100, 10));
        const int before = buffer.size();
        if (freeze)
            buffer.freeze();
        else
            buffer.setPaused(true);
        QCOMPARE(feed(buffer, steady(110, 200, 10)), takenWhileStopped);
        QCOMPARE(buffer.size(), before);
        buffer.setPaused(false);
        QCOMPARE(feed(buffer, steady(210, 310, 10)), takenAfter);
        QCOMPARE(gapCount(buffer), gaps);

        buffer.clear();
        QCOMPARE(buffer.size(), 0);
        QCOMPARE(feed(buffer, steady(0, 50, 10)), 6);
        QCOMPARE(gapCount(buffer), 0);
    }
};

QTEST_GUILESS_MAIN(TestSampleBuffer)
#include "tst_samplebuffer.moc"
