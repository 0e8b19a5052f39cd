#include "app/repaintpacer.h"

#include <QCoreApplication>
#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QWidget>
#include <algorithm>
#include <cmath>

namespace {
constexpr double maxFrameRate = 30.0;
}

int RepaintPacer::frameIntervalMs()
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    const double rate = screen && screen->refreshRate() > 1.0 ? screen->refreshRate() : 60.0;
    return std::max(1, int(std::lround(1000.0 / std::min(rate, maxFrameRate))));
}

RepaintPacer::RepaintPacer(QWidget *window)
    : QObject(window)
    , window(window)
    , intervalMs(frameIntervalMs())
{
    frameDue.setSingleShot(true);
    frameDue.setTimerType(Qt::PreciseTimer);
    connect(&frameDue, SIGNAL(timeout()), this, SLOT(on_frameDue()));
    window->installEventFilter(this);
}

bool RepaintPacer::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != window || event->type() != QEvent::UpdateRequest)
        return false;
    const qint64 sinceMs = sinceLastPaint.isValid() ? sinceLastPaint.elapsed() : intervalMs;
    if (sinceMs >= intervalMs) {
        sinceLastPaint.start();
        return false;
    }
    // The window keeps its dirty regions and asks for no other paint until this one.
    if (!frameDue.isActive())
        frameDue.start(int(intervalMs - sinceMs));
    return true;
}

void RepaintPacer::on_frameDue()
{
    QCoreApplication::postEvent(window, new QEvent(QEvent::UpdateRequest), Qt::LowEventPriority);
}
