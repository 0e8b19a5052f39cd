#pragma once

#include "trace/recordinginfo.h"
#include "trace/tracechannel.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QFile>
#include <QObject>
#include <QVector>

// Writes every table reply as one CSV row until stopped. Rows are gathered in memory
// and reach the disk at least once a second, so a crash loses at most that much; a
// write that fails ends the recording with a message naming the file.
class CsvRecorder : public QObject
{
    Q_OBJECT

public:
    static constexpr int flushIntervalMs = 500;

    explicit CsvRecorder(QObject *parent = nullptr);
    ~CsvRecorder() override;

    // Opens (truncates) the file and writes the comment line and the header. On failure
    // returns false, emits failed() and errorString() says why.
    bool start(const QString &fileName, const RecordingInfo &info,
               const QVector<TraceChannel> &columns);
    bool isRecording() const { return file.isOpen(); }
    QString fileName() const { return file.fileName(); }
    QString errorString() const { return error; }
    qint64 rowCount() const { return rows; }
    qint64 elapsedMs() const { return isRecording() ? clock.elapsed() : 0; }

public slots:
    // timeUs counts from the link's start; the rows count from the first reply recorded.
    void addTableReply(qint64 timeUs, const QByteArray &reply);
    void flush();
    // Ends the recording cleanly, whatever the cause (Stop, disconnect, link loss, quit).
    void stop();

signals:
    void started(const QString &fileName);
    void finished(const QString &fileName, qint64 rows);
    // The recording could not start or ended because the file could not be written.
    void failed(const QString &message);

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    bool writePending();
    void fail();
    void close();

    QFile file;
    QVector<TraceChannel> columns;
    QByteArray pending;
    QElapsedTimer clock;
    QString error;
    qint64 rows = 0;
    qint64 firstTimeUs = -1;
    qint64 lastTimeUs = -1;
    int flushTimerId = 0;
};
