#include "simulator/bridge/bridgeregistration.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

BridgeRegistration::~BridgeRegistration()
{
    for (const QString &link : links)
        QFile::remove(link);
}

QString BridgeRegistration::folder()
{
    return QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation) +
           "/zelvar-virtual-bus";
}

QString BridgeRegistration::addListed(const QString &portName, const QString &target)
{
    if (portName.isEmpty() || portName.contains('/'))
        return QString("\"%1\" cannot name a port").arg(portName);
    if (!QDir().mkpath(folder()))
        return QString("Cannot create %1").arg(folder());
    QFile::setPermissions(folder(),
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    return addLink(folder() + '/' + portName, target);
}

QString BridgeRegistration::addLink(const QString &linkPath, const QString &target)
{
    const QFileInfo existing(linkPath);
    // Only a link is replaced, and only a dangling one: another bridge may own it.
    if (existing.isSymLink() && !existing.exists())
        QFile::remove(linkPath);
    if (!QFile::link(target, linkPath))
        return QString("Cannot create the link %1").arg(linkPath);
    links << linkPath;
    return {};
}
