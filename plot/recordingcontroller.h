#pragma once

#include "trace/csvrecorder.h"

#include <QObject>
#include <functional>

class QAction;
class QWidget;

// "Record…" and "Stop recording": asks for a file, starts and ends the recorder, and
// tells the user why a recording stopped when it was not their choice.
class RecordingController : public QObject
{
    Q_OBJECT

public:
    // What the recording's comment line says, given the latest reply (maybe empty).
    using InfoSource = std::function<RecordingInfo(const QByteArray &lastReply)>;
    using ColumnSource = std::function<QVector<TraceChannel>()>;

    RecordingController(QWidget *dialogParent, InfoSource info, ColumnSource columns);
    ~RecordingController() override;

    QAction *action() const { return actionRecord; }
    CsvRecorder &recorder() { return csv; }
    // Starts without asking for a file; false (and a message box) when it cannot be written.
    bool startRecording(const QString &fileName);

public slots:
    // The link came up: recording becomes possible.
    void linkStarted();
    // Disconnect or a lost link: a recording under way ends cleanly.
    void linkStopped();
    void addTableReply(qint64 timeUs, const QByteArray &reply);

private slots:
    void on_actionRecord_triggered();
    void on_recorder_failed(const QString &message);
    void on_recorder_finished();

private:
    void showState();

    QWidget *dialogParent;
    InfoSource info;
    ColumnSource columns;
    CsvRecorder csv;
    QAction *actionRecord;
    QByteArray lastReply;
    bool linked = false;
};
