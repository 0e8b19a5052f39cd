#pragma once

#include <QLabel>

class LinkMonitor;
class QMouseEvent;

// The status bar's word on the link: how it is doing, or what went wrong and what to do
// about it, in red. A click opens the activity log.
class LinkIndicator : public QLabel
{
    Q_OBJECT

public:
    explicit LinkIndicator(const LinkMonitor *monitor, QWidget *parent = nullptr);

    // The style sheet of each look, for the state the monitor is in.
    static QString styleFor(const LinkMonitor &monitor);

signals:
    void clicked();

protected:
    void mousePressEvent(QMouseEvent *event) override;

private slots:
    void on_healthChanged();
    void on_countersChanged();

private:
    const LinkMonitor *monitor;
};
