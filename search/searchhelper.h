#pragma once

#include <QByteArray>
#include <QMutex>
#include <QObject>
#include <QString>
#include <QWaitCondition>
#include <memory>

class SerialHelper;

// One probe of the bus scan: opens the port on the search dialog's worker thread,
// asks one servo for its model number and wakes the waiting GUI thread on the reply.
class SearchHelper : public QObject
{
    Q_OBJECT

public:
    explicit SearchHelper(const QString &portName);
    ~SearchHelper() override;

    // Only meaningful after the worker thread has woken the GUI thread or finished.
    QByteArray reply() const;
    QString openError() const;

    // Joins a probe on the GUI thread to its helper on the worker thread.
    static QMutex mutex;
    static QWaitCondition replyArrived;

public slots:
    void scanServo(int id, int baudRate);
    // Closes the port from the thread that owns the library object, before that
    // thread ends; its timers cannot be stopped from any other thread.
    void releasePort();

private:
    void onReply(const QByteArray &data);

    std::shared_ptr<SerialHelper> serialHelper;
    QString portName;
    QByteArray replyBuffer;
    QString lastOpenError;
};
