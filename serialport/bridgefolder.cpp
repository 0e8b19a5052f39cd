#include "bridgefolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

QString reasonOf(int error)
{
    return QString::fromLocal8Bit(std::strerror(error));
}

} // namespace

QString BridgeFolder::path()
{
    // Read directly: asking QStandardPaths warns on every call where none is set.
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (!runtime.isEmpty())
        return runtime + QStringLiteral("/zelvar-virtual-bus");
    return QDir::tempPath() + QStringLiteral("/zelvar-virtual-bus-%1").arg(::geteuid());
}

QString BridgeFolder::refusal(const QString &folder)
{
    struct stat info = {};
    if (::lstat(QFile::encodeName(folder).constData(), &info) != 0)
        return QStringLiteral("%1: %2").arg(folder, reasonOf(errno));
    if (S_ISLNK(info.st_mode))
        return QStringLiteral("%1 is a link, not a folder").arg(folder);
    if (!S_ISDIR(info.st_mode))
        return QStringLiteral("%1 is not a folder").arg(folder);
    if (info.st_uid != ::geteuid())
        return QStringLiteral("%1 belongs to another user").arg(folder);
    if (info.st_mode & (S_IRWXG | S_IRWXO))
        return QStringLiteral("%1 is open to other users").arg(folder);
    return {};
}

QString BridgeFolder::forListing()
{
    const QString folder = path();
    struct stat info = {};
    if (::lstat(QFile::encodeName(folder).constData(), &info) != 0 && errno == ENOENT)
        return {};
    const QString refused = refusal(folder);
    if (refused.isEmpty())
        return folder;
    static std::atomic_bool told{false};
    if (!told.exchange(true))
        std::fprintf(stderr, "Virtual bus bridges are not listed: %s.\n", qPrintable(refused));
    return {};
}

QString BridgeFolder::prepare()
{
    const QString folder = path();
    QDir().mkpath(QFileInfo(folder).absolutePath());
    // Made closed from the start; an existing entry of that name is checked, never changed.
    if (::mkdir(QFile::encodeName(folder).constData(), S_IRWXU) != 0 && errno != EEXIST)
        return QStringLiteral("Cannot create %1: %2").arg(folder, reasonOf(errno));
    const QString refused = refusal(folder);
    return refused.isEmpty() ? QString()
                             : QStringLiteral("Cannot list the bridge: %1").arg(refused);
}

bool BridgeFolder::isLive(const QFileInfo &link)
{
    // Only a terminal or a real port is worth listing; a link to a file or a folder is not.
    struct stat target = {};
    if (!link.isSymLink() ||
        ::stat(QFile::encodeName(link.absoluteFilePath()).constData(), &target) != 0 ||
        !S_ISCHR(target.st_mode))
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
