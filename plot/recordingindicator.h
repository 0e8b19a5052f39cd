#pragma once

#include <QLabel>

class CsvRecorder;

// The status bar's sign that a recording runs: elapsed time and rows written so far.
class RecordingIndicator : public QLabel
{
    Q_OBJECT

public:
    explicit RecordingIndicator(const CsvRecorder &recorder, QWidget *parent = nullptr);

public slots:
    void refresh();

private:
    const CsvRecorder &recorder;
};
