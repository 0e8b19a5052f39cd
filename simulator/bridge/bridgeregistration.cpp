#include "simulator/bridge/bridgeregistration.h"

#include "bridgefolder.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

BridgeRegistration::~BridgeRegistration()
{
    for (const QString &link : links)
        QFile::remove(link);
    if (!pidFile.isEmpty())
        QFile::remove(pidFile);
}

QString BridgeRegistration::addListed(const QString &portName, const QString &target)
{
    if (portName.isEmpty() || portName.contains('/') || portName.endsWith(".pid"))
        return QString("\"%1\" cannot name a port").arg(portName);
    if (const QString error = BridgeFolder::prepare(); !error.isEmpty())
        return error;
    const QString link = BridgeFolder::path() + '/' + portName;
    if (const QString error = addLink(link, target); !error.isEmpty())
        return error;
    // Written only once the link is ours, so that another bridge's record stays intact.
    pidFile = link + ".pid";
    QFile pid(pidFile);
    if (!pid.open(QIODevice::WriteOnly | QIODevice::Truncate) ||
        pid.write(QByteArray::number(QCoreApplication::applicationPid()) + '\n') < 0)
        return QString("Cannot write %1").arg(pidFile);
    return {};
}

QString BridgeRegistration::addLink(const QString &linkPath, const QString &target)
{
    const QFileInfo existing(linkPath);
    // Only a link is replaced, and only one whose bridge is gone: another may own it.
    if (existing.isSymLink() && !BridgeFolder::isLive(existing))
        QFile::remove(linkPath);
    if (!QFile::link(target, linkPath))
        return QString("Cannot create the link %1").arg(linkPath);
    links << linkPath;
    return {};
}
