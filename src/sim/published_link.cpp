#include "published_link.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace velmor::sim {

bool PublishedLink::publish(const QString& folder, const QString& name, const QString& device, QString* error)
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
    const QFileInfo existing(path);
    if (existing.exists())
        return fail(QStringLiteral("%1 is already published by a running line").arg(path));
    if (existing.isSymLink() && !QFile::remove(path))
        return fail(QStringLiteral("cannot replace the stale link %1").arg(path));
    if (!QFile::link(device, path))
        return fail(QStringLiteral("cannot create the link %1").arg(path));
    path_ = path;
    device_ = device;
    return true;
}

void PublishedLink::remove()
{
    if (path_.isEmpty())
        return;
    if (QFileInfo(path_).symLinkTarget() == device_)
        QFile::remove(path_);
    path_.clear();
    device_.clear();
}

}  // namespace velmor::sim
