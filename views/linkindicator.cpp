#include "views/linkindicator.h"

#include "monitor/linkmonitor.h"

#include <QMouseEvent>

namespace {
const QString failureStyle =
    QStringLiteral("QLabel { background-color: #C62828; color: white; padding: 1px 6px; }");
const QString simulatedStyle =
    QStringLiteral("QLabel { background-color: #6A1B9A; color: white; padding: 1px 6px; }");
const QString answeringStyle = QStringLiteral("QLabel { color: #2E7D32; padding: 1px 6px; }");
const QString quietStyle = QStringLiteral("QLabel { color: #6B6B6B; padding: 1px 6px; }");
} // namespace

LinkIndicator::LinkIndicator(const LinkMonitor *monitor, QWidget *parent)
    : QLabel(parent)
    , monitor(monitor)
{
    setObjectName(QStringLiteral("linkIndicator"));
    setCursor(Qt::PointingHandCursor);
    connect(monitor, SIGNAL(healthChanged()), this, SLOT(on_healthChanged()));
    connect(monitor, SIGNAL(countersChanged()), this, SLOT(on_countersChanged()));
    on_healthChanged();
}

QString LinkIndicator::styleFor(const LinkMonitor &monitor)
{
    if (monitor.isFailure())
        return failureStyle;
    if (monitor.isRunning() && monitor.target().simulated)
        return simulatedStyle;
    return monitor.health() == LinkMonitor::Health::Answering ? answeringStyle : quietStyle;
}

void LinkIndicator::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        emit clicked();
    QLabel::mousePressEvent(event);
}

void LinkIndicator::on_healthChanged()
{
    setStyleSheet(styleFor(*monitor));
    on_countersChanged();
}

void LinkIndicator::on_countersChanged()
{
    const QString text = monitor->healthText();
    if (text != this->text())
        setText(text);
    const QString tip = monitor->isRunning()
                            ? tr("%1\nClick to open the activity log.").arg(monitor->summary())
                            : tr("Click to open the activity log.");
    if (tip != toolTip())
        setToolTip(tip);
}
