#include "config_location.h"

#include <QDir>
#include <QFileInfo>
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

QString installedDocFolder(const QString& programDir)
{
    if (programDir.isEmpty())
        return {};
    // VELMOR_DOC_FROM_BIN is the install rules' own layout (../share/doc/velmor),
    // so an unpacked package in any folder counts as installed too.
    const QString docFolder = QDir::cleanPath(programDir + QLatin1Char('/') + QStringLiteral(VELMOR_DOC_FROM_BIN));
    if (!QFileInfo(docFolder + QStringLiteral("/copyright")).isFile())
        return {};
    return docFolder;
}

QString defaultConfigPath(const QString& programDir)
{
    const QString name = QString::fromLatin1(kConfigFileName);
    if (installedDocFolder(programDir).isEmpty() && canCreateFilesIn(programDir))
        return QDir(programDir).filePath(name);
    const QString dataDir = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    QDir().mkpath(dataDir);
    return QDir(dataDir).filePath(name);
}

}  // namespace velmor
