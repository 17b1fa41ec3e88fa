#include "config_location.h"

#include <QDir>
#include <QStandardPaths>
#include <QTemporaryFile>

namespace velmor {

namespace {

// Permission bits do not tell (ACLs, read-only mounts, protected program
// folders); creating a file does.
bool canCreateFilesIn(const QString& dir)
{
    if (dir.isEmpty())
        return false;
    QTemporaryFile probe(QDir(dir).filePath(QStringLiteral("probe-XXXXXX")));
    return probe.open();
}

}  // namespace

QString defaultConfigPath(const QString& programDir)
{
    const QString name = QString::fromLatin1(kConfigFileName);
    if (canCreateFilesIn(programDir))
        return QDir(programDir).filePath(name);
    const QString dataDir = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    QDir().mkpath(dataDir);
    return QDir(dataDir).filePath(name);
}

}  // namespace velmor
