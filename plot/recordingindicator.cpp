#include "plot/recordingindicator.h"

#include "trace/csvrecorder.h"

#include <QLocale>
#include <QTime>
#include <QTimer>

namespace {
constexpr int refreshIntervalMs = 500;
}

RecordingIndicator::RecordingIndicator(const CsvRecorder &recorder, QWidget *parent)
    : QLabel(parent)
    , recorder(recorder)
{
    setObjectName(QStringLiteral("recordingIndicator"));
    setTextFormat(Qt::RichText);
    auto *timer = new QTimer(this);
    connect(timer, SIGNAL(timeout()), this, SLOT(refresh()));
    timer->start(refreshIntervalMs);
    connect(&recorder, SIGNAL(started(QString)), this, SLOT(refresh()));
    connect(&recorder, SIGNAL(finished(QString, qint64)), this, SLOT(refresh()));
    connect(&recorder, SIGNAL(failed(QString)), this, SLOT(refresh()));
    refresh();
}

void RecordingIndicator::refresh()
{
    setVisible(recorder.isRecording());
    if (!recorder.isRecording())
        return;
    const QString elapsed = QTime(0, 0).addMSecs(int(recorder.elapsedMs())).toString("hh:mm:ss");
    setText(tr("<span style=\"color:#d00000\">&#9679;</span> Recording %1, %2 rows")
                .arg(elapsed, QLocale().toString(recorder.rowCount())));
    setToolTip(recorder.fileName());
}
