#include "scriptedportbackend.h"

#include <QThread>
#include <QTimer>

void ScriptedPortBackend::deliver(const QByteArray &bytes)
{
    const int step = chunkSize > 0 ? chunkSize : qMax(1, bytes.size());
    for (int offset = 0; offset < bytes.size(); offset += step) {
        inTransit.push_back(bytes.mid(offset, step));
        QTimer::singleShot(0, this, &ScriptedPortBackend::arriveNext);
    }
}

void ScriptedPortBackend::close()
{
    opened = false;
    inTransit.clear();
    received.clear();
}

bool ScriptedPortBackend::write(const QByteArray &bytes)
{
    if (!opened || !writable)
        return false;
    written.append(bytes);
    if (responder)
        deliver(responder(bytes));
    return true;
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

void ScriptedPortBackend::arriveNext()
{
    // waitForReadyRead() may already have taken the piece this event was for.
    if (inTransit.empty() || !opened)
        return;
    received.append(inTransit.front());
    inTransit.pop_front();
    emit readyRead();
}
