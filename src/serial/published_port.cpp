#include "published_port.h"

#include "port_list.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace velmor {
namespace {

// How long a new line waits for a reader that is just checking the old owner.
constexpr int kLockWaitMs = 1000;

// The lock is judged by its owner only, never by its age: a line may run
// for weeks.
std::unique_ptr<QLockFile> lockFor(const QString& linkPath)
{
    auto lock = std::make_unique<QLockFile>(publishedPortLockPath(linkPath));
    lock->setStaleLockTime(0);
    return lock;
}

}  // namespace

QString publishedPortLockPath(const QString& linkPath) { return linkPath + QStringLiteral(".lock"); }

bool PublishedPort::publish(const QString& folder, const QString& name, const QString& device, QString* error)
{
    auto fail = [&](const QString& why) {
        if (error)
            *error = why;
        return false;
    };
    remove();
    if (!QDir().mkpath(folder))
        return fail(QStringLiteral("cannot create the folder %1").arg(folder));
    const QString path = QDir(folder).filePath(name);
    std::unique_ptr<QLockFile> lock = lockFor(path);
    // QLockFile takes over a lock whose process has ended (or whose number now
    // belongs to another program).
    if (!lock->tryLock(kLockWaitMs)) {
        return fail(lock->error() == QLockFile::LockFailedError
                        ? QStringLiteral("%1 is already published by a running line").arg(path)
                        : QStringLiteral("cannot create the lock %1").arg(publishedPortLockPath(path)));
    }
    if (QFileInfo(path).isSymLink() && !QFile::remove(path))
        return fail(QStringLiteral("cannot replace the stale link %1").arg(path));
    if (!QFile::link(device, path))
        return fail(QStringLiteral("cannot create the link %1").arg(path));
    path_ = path;
    device_ = device;
    lock_ = std::move(lock);
    return true;
}

void PublishedPort::remove()
{
    if (path_.isEmpty())
        return;
    if (QFileInfo(path_).symLinkTarget() == device_)
        QFile::remove(path_);
    path_.clear();
    device_.clear();
    lock_.reset();  // unlocks and removes the lock file
}

bool isPublishedPort(const QString& path)
{
    const QFileInfo info(path);
    if (!info.isSymLink())
        return false;
    return QFileInfo::exists(publishedPortLockPath(path))
        || QDir(info.absolutePath()) == QDir(virtualPortsDirectory());
}

bool publishedPortAlive(const QString& linkPath)
{
    if (!QFileInfo::exists(publishedPortLockPath(linkPath)))
        return false;
    std::unique_ptr<QLockFile> probe = lockFor(linkPath);
    if (!probe->tryLock(0))
        return probe->error() == QLockFile::LockFailedError;
    // The owner is gone: its lock was stale and is ours now. Clear the name
    // while holding it, so that a new line never loses its fresh link here.
    QFile::remove(linkPath);
    return false;
}

}  // namespace velmor
