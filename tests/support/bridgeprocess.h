#pragma once

#include "bridgefolder.h"

#include <QFile>
#include <QProcess>
#include <QStringList>

// A zelvar-virtual-bus bridge of the test's own, listed in the port list while it runs.
// Each test executable passes the bridge's path in.
class BridgeProcess
{
public:
    BridgeProcess(const QString &path, const QString &name, const QStringList &arguments = {})
        : name(name)
    {
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start(path, QStringList{"--name", name} + arguments);
        started = process.waitForStarted(patienceMs) && process.waitForReadyRead(patienceMs) &&
                  process.readLine().startsWith("/dev/");
    }
    ~BridgeProcess()
    {
        kill();
        // A killed bridge leaves its registration behind.
        const QString link = BridgeFolder::path() + '/' + name;
        QFile::remove(link);
        QFile::remove(link + ".pid");
    }
    bool kill()
    {
        if (process.state() == QProcess::NotRunning)
            return true;
        process.kill();
        return process.waitForFinished(patienceMs);
    }
    bool running() const { return process.state() == QProcess::Running; }

    const QString name;
    bool started = false;

private:
    static constexpr int patienceMs = 20000;
    QProcess process;
};
