#include "config_file.h"

#include "config_image.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace velmor {

bool isRegularFileOrAbsent(const QString& path)
{
    const QFileInfo info(path);  // a link is judged by what it leads to
    return info.isFile() || (!info.exists() && !info.isSymLink());
}

bool saveConfigFile(const QString& path, const ModuleRecord& record)
{
    if (!isRegularFileOrAbsent(path))
        return false;
    QSaveFile file(path);
    // Unbuffered: a short write (disk full) then shows in write()'s count,
    // whereas Qt 6.4's buffered flush drops the rest silently and commits.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return false;
    const QByteArray stored = configImage(record).first(kStoredBytes);
    return file.write(stored) == stored.size() && file.commit();
}

std::optional<QByteArray> readConfigBytes(const QString& path)
{
    if (!QFileInfo(path).isFile())
        return std::nullopt;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray bytes = file.read(kStoredBytes + 1);
    if (file.error() != QFileDevice::NoError)
        return std::nullopt;
    return bytes;
}

bool loadConfigFile(const QString& path, ModuleRecord& record)
{
    const std::optional<QByteArray> bytes = readConfigBytes(path);
    if (!bytes)
        return false;
    applyImage(bytes->first(std::min<qsizetype>(bytes->size(), kStoredBytes)), record);
    return true;
}

}  // namespace velmor
