#pragma once

#include "serialportbackend.h"

#include <QByteArrayList>
#include <deque>
#include <functional>

// A port for tests: it records what is written and answers from a script, through the
// event loop like a real port (or at once inside waitForReadyRead()).
class ScriptedPortBackend : public SerialPortBackend
{
    Q_OBJECT

public:
    // Given the bytes just written, returns the bytes the bus sends back (empty: silence).
    using Responder = std::function<QByteArray(const QByteArray &written)>;

    explicit ScriptedPortBackend(const QString &portName);

    void setResponder(Responder responder);
    // Replies arrive in pieces of this size, one event each (0: whole).
    void setChunkSize(int size);
    void setOpenError(const QString &error);

    // Makes `bytes` arrive, as if the bus had sent them unasked.
    void deliver(const QByteArray &bytes);
    // The bus goes away: the port closes itself and reports it.
    void fail(const QString &reason);

    QByteArrayList written() const;
    int openedBaudRate() const;

    QString open(int baudRate) override;
    void close() override;
    bool isOpen() const override;
    bool write(const QByteArray &bytes) override;
    QByteArray readAll() override;
    bool waitForReadyRead(int msecs) override;

private:
    void schedule(const QByteArray &bytes);
    void arriveNext();

    QString portName;
    Responder responder;
    int chunkSize = 0;
    QString openError;
    bool opened = false;
    int baudRate = 0;
    QByteArrayList writes;
    std::deque<QByteArray> inTransit;
    QByteArray received;
};
