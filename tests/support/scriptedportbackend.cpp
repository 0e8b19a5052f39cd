#include "scriptedportbackend.h"

#include <QThread>
#include <QTimer>

ScriptedPortBackend::ScriptedPortBackend(const QString &portName)
    : portName(portName)
{}

void ScriptedPortBackend::setResponder(Responder responder)
{
    this->responder = std::move(responder);
}

void ScriptedPortBackend::setChunkSize(int size)
{
    chunkSize = size;
}

void ScriptedPortBackend::setOpenError(const QString &error)
{
    openError = error;
}

void ScriptedPortBackend::deliver(const QByteArray &bytes)
{
    schedule(bytes);
}

void ScriptedPortBackend::fail(const QString &reason)
{
    close();
    emit failed(reason);
}

QByteArrayList ScriptedPortBackend::written() const
{
    return writes;
}

int ScriptedPortBackend::openedBaudRate() const
{
    return baudRate;
}

QString ScriptedPortBackend::open(int baudRate)
{
    if (!openError.isEmpty())
        return openError;
    opened = true;
    this->baudRate = baudRate;
    return {};
}

void ScriptedPortBackend::close()
{
    opened = false;
    inTransit.clear();
    received.clear();
}

bool ScriptedPortBackend::isOpen() const
{
    return opened;
}

bool ScriptedPortBackend::write(const QByteArray &bytes)
{
    if (!opened)
        return false;
    writes.append(bytes);
    if (responder)
        schedule(responder(bytes));
    return true;
}

QByteArray ScriptedPortBackend::readAll()
{
    QByteArray bytes;
    bytes.swap(received);
    return bytes;
}

bool ScriptedPortBackend::waitForReadyRead(int msecs)
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

void ScriptedPortBackend::schedule(const QByteArray &bytes)
{
    const int step = chunkSize > 0 ? chunkSize : qMax(1, bytes.size());
    for (int offset = 0; offset < bytes.size(); offset += step) {
        inTransit.push_back(bytes.mid(offset, step));
        QTimer::singleShot(0, this, &ScriptedPortBackend::arriveNext);
    }
}

void ScriptedPortBackend::arriveNext()
{
    // waitForReadyRead() may already have taken the piece this event was for.
    if (inTransit.empty() || !opened)
        return;
    received.append(inTransit.front());
    inTransit.pop_front();
    emit readyRead();
}
