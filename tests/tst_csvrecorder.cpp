#include "datacolumns.h"
#include "trace/csvrecorder.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QtTest>
#include <memory>

namespace {

// A whole-table reply whose error byte is 0x20 and whose registers 86 to 89 hold position.
QByteArray reply(qint32 position)
{
    QByteArray bytes(118 + 11, '\0');
    bytes[8] = '\x20';
    for (int i = 0; i < 4; ++i)
        bytes[9 + 86 + i] = char(quint32(position) >> (8 * i));
    return bytes;
}

QVector<TraceChannel> columns()
{
    auto position = [](const QByteArray &bytes) {
        qint32 raw = 0;
        for (int i = 0; i < 4; ++i)
            raw |= qint32(quint8(bytes.at(9 + 86 + i))) << (8 * i);
        return double(raw);
    };
    return {
        {"position", "Actual position", "degrees", position, [](double raw) { return raw / 10; }},
        {"error",
         "Error byte",
         "",
         [](const QByteArray &bytes) { return quint8(bytes.at(8)); },
         {}},
        {"label", "Comma, \"quoted\"", "", [](const QByteArray &) { return 1.5; }, {}}};
}

RecordingInfo info()
{
    return {"1.0",
            "Virtual bus",
            1000000,
            1,
            1040,
            3,
            QDateTime(QDate(2026, 11, 23), QTime(21, 40, 5, 250), Qt::UTC)};
}

QStringList lines(const QString &fileName)
{
    QFile file(fileName);
    file.open(QIODevice::ReadOnly);
    return QString::fromUtf8(file.readAll()).split('\n', Qt::SkipEmptyParts);
}

} // namespace

class TestCsvRecorder : public QObject
{
    Q_OBJECT

    QTemporaryDir folder;

private slots:
    void writesHeaderAndRows()
    {
        const QString name = folder.filePath("rows.csv");
        CsvRecorder recorder;
        QSignalSpy finished(&recorder, SIGNAL(finished(QString, qint64)));
        QVERIFY(recorder.start(name, info(), columns()));
        recorder.addTableReply(5'000'000, reply(-1234));
        recorder.addTableReply(5'010'007, reply(900));
        // Not later than the last row: dropped, so times only ever increase.
        recorder.addTableReply(5'010'007, reply(1));
        recorder.addTableReply(4'000'000, reply(1));
        recorder.addTableReply(6'500'000, reply(0));
        recorder.stop();

        QCOMPARE(finished.count(), 1);
        QCOMPARE(finished.at(0).at(1).toLongLong(), 3);
        QCOMPARE(
            lines(name),
            QStringList({"# Zelvar Servo Manager 1.0, port Virtual bus, 1000000 baud, servo "
                         "id 1, model number 1040, firmware 3, started "
                         "2026-11-23T21:40:05.250Z",
                         "time [s],Actual position [degrees],Error byte,"
                         "\"Comma, \"\"quoted\"\"\"",
                         "0.000000,-123.4,32,1.5", "0.010007,90,32,1.5", "1.500000,0,32,1.5"}));
    }

    void rowsReachTheDiskWithinASecond()
    {
        const QString name = folder.filePath("flush.csv");
        CsvRecorder recorder;
        QVERIFY(recorder.start(name, info(), columns()));
        recorder.addTableReply(0, reply(10));
        QTRY_COMPARE_WITH_TIMEOUT(lines(name).size(), 3, 1000);
        QVERIFY(recorder.isRecording());
    }

    void endsCleanlyOnEachCause_data()
    {
        QTest::addColumn<QString>("cause");
        // Stop, disconnect and link loss all reach stop(); quitting destroys the recorder.
        QTest::newRow("stop") << "stop";
        QTest::newRow("quit") << "quit";
    }
    void endsCleanlyOnEachCause()
    {
        QFETCH(QString, cause);
        const QString name = folder.filePath(cause + ".csv");
        auto recorder = std::make_unique<CsvRecorder>();
        QVERIFY(recorder->start(name, info(), columns()));
        for (int row = 0; row < 100; ++row)
            recorder->addTableReply(row * 10'000, reply(row));
        if (cause == "stop") {
            recorder->stop();
            QVERIFY(!recorder->isRecording());
            recorder->addTableReply(2'000'000, reply(0));
        } else {
            recorder.reset();
        }
        const QStringList written = lines(name);
        QCOMPARE(written.size(), 102);
        QCOMPARE(written.last(), QString("0.990000,9.9,32,1.5"));
    }

    void aFailingFileStopsWithItsName_data()
    {
        QTest::addColumn<QString>("fileName");
        QTest::newRow("missing folder") << folder.filePath("no/such/folder/x.csv");
        // A full disk: the header already fails to reach it.
        QTest::newRow("full disk") << "/dev/full";
    }
    void aFailingFileStopsWithItsName()
    {
        QFETCH(QString, fileName);
        CsvRecorder recorder;
        QSignalSpy failed(&recorder, SIGNAL(failed(QString)));
        QVERIFY(!recorder.start(fileName, info(), columns()));
        QCOMPARE(failed.count(), 1);
        QVERIFY(failed.at(0).at(0).toString().contains(fileName));
        QCOMPARE(recorder.errorString(), failed.at(0).at(0).toString());
        QVERIFY(!recorder.isRecording());
    }
};

QTEST_GUILESS_MAIN(TestCsvRecorder)
#include "tst_csvrecorder.moc"
