#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

class QWidget;

// Paints a window at most once per frame interval. Replies change labels and boxes up to
// a hundred times a second; painting each change costs more than all else a reply does,
// while nobody sees more frames than the screen shows. Changes in between are gathered
// and painted together at the next frame, so none is lost.
class RepaintPacer : public QObject
{
    Q_OBJECT

public:
    explicit RepaintPacer(QWidget *window);

    // The screen's frame interval, and never under a 30th of a second: a label or a curve
    // that changes 30 times a second already looks smooth, at half the cost of 60.
    static int frameIntervalMs();

    bool eventFilter(QObject *watched, QEvent *event) override;

private slots:
    void on_frameDue();

private:
    QWidget *window;
    int intervalMs;
    QElapsedTimer sinceLastPaint;
    QTimer frameDue;
};
