#pragma once

#include "serialportbackend.h"

#include <QByteArrayList>
#include <QThread>
#include <QTimer>
#include <deque>
#include <functional>
#include <utility>

// A port for tests: it records what is written and answers from a script, through the
// event loop like a real port (or at once inside waitForReadyRead()).
class ScriptedPortBackend : public SerialPortBackend
{
    Q_OBJECT

public:
    // Given the bytes just written, returns the bytes the bus sends back (empty: silence).
    using Responder = std::function<QByteArray(const QByteArray &written)>;
    void setResponder(Responder r) { responder = std::move(r); }

    // Replies arrive in pieces of this size, one event each (0: whole).
    int chunkSize = 0;
    // False: writes fail while the port stays open.
    bool writable = true;
    // The rates the port cannot be set to (an adapter's limits, or none when it is gone).
    std::function<bool(int baudRate)> refusesRate;
    // The rate it was last opened at.
    int baudRate = 0;
    bool wireTimed = false;
    QByteArrayList written;

    // Makes `bytes` arrive, as if the bus had sent them unasked.
    void deliver(const QByteArray &bytes)
    {
        const int step = chunkSize > 0 ? chunkSize : qMax(1, bytes.size());
        for (int offset = 0; offset < bytes.size(); offset += step) {
            inTransit.push_back(bytes.mid(offset, step));
            QTimer::singleShot(0, this, &ScriptedPortBackend::arriveNext);
        }
    }
    // The bus goes away: the port closes itself and reports it.
    void fail(const QString &reason)
    {
        close();
        emit failed(reason);
    }

    QString open(int rate) override
    {
        if (refusesRate && refusesRate(rate))
            return QStringLiteral("Cannot set the scripted port to %1 baud.").arg(rate);
        opened = true;
        baudRate = rate;
        return {};
    }
    void close() override
    {
        opened = false;
        inTransit.clear();
        received.clear();
    }
    bool isOpen() const override { return opened; }
    bool write(const QByteArray &bytes) override
    {
        if (!opened || !writable)
            return false;
        written.append(bytes);
        if (responder)
            deliver(responder(bytes));
        return true;
    }
    QByteArray readAll() override { return std::exchange(received, {}); }
    // Its replies come at once, however long the wire would take, unless told to pass
    // for a port that keeps wire time.
    bool keepsWireTime() const override { return wireTimed; }
    bool waitForReadyRead(int msecs) override
    {
        if (!opened)
            return false;
        if (inTransit.empty()) {
            QThread::msleep(ulong(msecs));
            return false;
        }
        arriveNext();
        return true;
    }

private:
    void arriveNext()
    {
        // waitForReadyRead() may already have taken the piece this event was for.
        if (inTransit.empty() || !opened)
            return;
        received.append(inTransit.front());
        inTransit.pop_front();
        emit readyRead();
    }

    Responder responder;
    bool opened = false;
    std::deque<QByteArray> inTransit;
    QByteArray received;
};
