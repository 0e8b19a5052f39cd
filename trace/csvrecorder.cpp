#include "trace/csvrecorder.h"

#include <QTimerEvent>
#include <cmath>
#include <utility>

namespace {
QByteArray csvField(const QString &text)
{
    QByteArray field = text.toUtf8();
    if (field.contains(',') || field.contains('"') || field.contains('\n'))
        field = '"' + field.replace('"', "\"\"") + '"';
    return field;
}

QByteArray commentLine(const RecordingInfo &info)
{
    return QStringLiteral("# Zelvar Servo Manager %1, port %2, %3 baud, servo id %4, model number "
                          "%5, firmware %6, started %7\n")
        .arg(info.programVersion, info.portName)
        .arg(info.baudRate)
        .arg(info.servoId)
        .arg(info.modelNumber)
        .arg(info.firmwareVersion)
        .arg(info.startTime.toUTC().toString(Qt::ISODateWithMs))
        .toUtf8();
}

void appendNumber(QByteArray &row, double value)
{
    if (std::isfinite(value))
        row += QByteArray::number(value, 'g', 10);
}
} // namespace

CsvRecorder::CsvRecorder(QObject *parent)
    : QObject(parent)
{}

CsvRecorder::~CsvRecorder()
{
    stop();
}

bool CsvRecorder::start(const QString &fileName, const RecordingInfo &info,
                        const QVector<TraceChannel> &recordedColumns)
{
    stop();
    error.clear();
    file.setFileName(fileName);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        error = tr("Cannot write the recording %1: %2").arg(fileName, file.errorString());
        emit failed(error);
        return false;
    }
    columns = recordedColumns;
    rows = 0;
    firstTimeUs = -1;
    lastTimeUs = -1;
    pending = commentLine(info);
    pending += "time [s]";
    for (const TraceChannel &column : columns)
        pending += ',' + csvField(column.title());
    pending += '\n';
    clock.start();
    if (!writePending()) {
        fail();
        return false;
    }
    flushTimerId = startTimer(flushIntervalMs);
    emit started(fileName);
    return true;
}

void CsvRecorder::addTableReply(qint64 timeUs, const QByteArray &reply)
{
    // A reply that does not move time on would break the file's order.
    if (!isRecording() || timeUs <= lastTimeUs)
        return;
    if (firstTimeUs < 0)
        firstTimeUs = timeUs;
    lastTimeUs = timeUs;
    const qint64 sinceStart = timeUs - firstTimeUs;
    pending += QByteArray::number(sinceStart / 1'000'000) + '.' +
               QByteArray::number(sinceStart % 1'000'000).rightJustified(6, '0');
    for (const TraceChannel &column : columns) {
        pending += ',';
        appendNumber(pending, column.value(reply));
    }
    pending += '\n';
    ++rows;
}

void CsvRecorder::flush()
{
    if (isRecording() && !writePending())
        fail();
}

void CsvRecorder::stop()
{
    if (!isRecording())
        return;
    if (!writePending()) {
        fail();
        return;
    }
    const QString name = file.fileName();
    close();
    emit finished(name, rows);
}

void CsvRecorder::timerEvent(QTimerEvent *event)
{
    if (event->timerId() == flushTimerId)
        flush();
}

bool CsvRecorder::writePending()
{
    if (!pending.isEmpty() && file.write(pending) != pending.size())
        return false;
    pending.clear();
    return file.flush();
}

void CsvRecorder::fail()
{
    error = tr("Recording to %1 stopped: %2").arg(file.fileName(), file.errorString());
    close();
    emit failed(error);
}

void CsvRecorder::close()
{
    if (flushTimerId != 0)
        killTimer(std::exchange(flushTimerId, 0));
    pending.clear();
    file.close();
}
