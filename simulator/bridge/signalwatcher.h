#pragma once

#include <QObject>

class QSocketNotifier;

// Turns SIGINT, SIGTERM and SIGHUP (its terminal closed) into a Qt signal, through a
// pipe that the handler writes.
class SignalWatcher : public QObject
{
    Q_OBJECT

public:
    explicit SignalWatcher(QObject *parent = nullptr);
    ~SignalWatcher() override;

signals:
    void terminationRequested();

private slots:
    void onSignal();

private:
    static void handle(int signal);

    QSocketNotifier *notifier = nullptr;
};
