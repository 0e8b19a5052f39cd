#include "bridgefolder.h"

#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <cerrno>
#include <signal.h>

QString BridgeFolder::path()
{
    return QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation) +
           QStringLiteral("/zelvar-virtual-bus");
}

bool BridgeFolder::isLive(const QFileInfo &link)
{
    if (!link.isSymLink() || !QFileInfo::exists(link.symLinkTarget()))
        return false;
    QFile record(link.absoluteFilePath() + QStringLiteral(".pid"));
    // A link made by hand carries no record; it is the user's to keep.
    if (!record.open(QIODevice::ReadOnly))
        return true;
    bool valid = false;
    const qint64 pid = record.readLine(32).trimmed().toLongLong(&valid);
    if (!valid || pid <= 0)
        return false;
    return ::kill(pid_t(pid), 0) == 0 || errno == EPERM;
}
