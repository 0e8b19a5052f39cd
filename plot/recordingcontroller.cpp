#include "plot/recordingcontroller.h"

#include <QAction>
#include <QDateTime>
#include <QFileDialog>
#include <QMessageBox>
#include <QWidget>
#include <utility>

RecordingController::RecordingController(QWidget *dialogParent, InfoSource info,
                                         ColumnSource columns)
    : QObject(dialogParent)
    , dialogParent(dialogParent)
    , info(std::move(info))
    , columns(std::move(columns))
    , actionRecord(new QAction(this))
{
    actionRecord->setObjectName(QStringLiteral("actionRecord"));
    // Ctrl+R is Reboot.
    actionRecord->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_R));
    connect(actionRecord, SIGNAL(triggered()), this, SLOT(on_actionRecord_triggered()));
    connect(&csv, SIGNAL(failed(QString)), this, SLOT(on_recorder_failed(QString)));
    connect(&csv, SIGNAL(finished(QString, qint64)), this, SLOT(on_recorder_finished()));
    showState();
}

// The recorder finishes its file as it goes, after this object has stopped listening.
RecordingController::~RecordingController()
{
    csv.disconnect(this);
}

void RecordingController::linkStarted()
{
    linked = true;
    lastReply.clear();
    showState();
}

void RecordingController::linkStopped()
{
    linked = false;
    csv.stop();
    showState();
}

void RecordingController::addTableReply(qint64 timeUs, const QByteArray &reply)
{
    lastReply = reply;
    csv.addTableReply(timeUs, reply);
}

void RecordingController::on_actionRecord_triggered()
{
    if (csv.isRecording()) {
        csv.stop();
        return;
    }
    const QString fileName = QFileDialog::getSaveFileName(dialogParent, tr("Record to"), QString(),
                                                          tr("CSV files (*.csv);;All files (*)"));
    if (!fileName.isEmpty())
        startRecording(fileName);
}

bool RecordingController::startRecording(const QString &fileName)
{
    RecordingInfo recordingInfo = info(lastReply);
    recordingInfo.startTime = QDateTime::currentDateTimeUtc();
    // A failure reaches the user through the recorder's failed().
    const bool started = csv.start(fileName, recordingInfo, columns());
    showState();
    return started;
}

void RecordingController::on_recorder_failed(const QString &message)
{
    showState();
    QMessageBox::critical(dialogParent, tr("Error"), message);
}

void RecordingController::on_recorder_finished()
{
    showState();
}

void RecordingController::showState()
{
    const bool recording = csv.isRecording();
    actionRecord->setText(recording ? tr("Stop recording") : tr("Record…"));
    actionRecord->setEnabled(recording || linked);
}
