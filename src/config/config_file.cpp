#include "config_file.h"

#include "config_image.h"

#include <QFile>
#include <QSaveFile>

namespace velmor {

bool saveConfigFile(const QString& path, const ModuleRecord& record)
{
    QSaveFile file(path);
    // Unbuffered: a short write (disk full) then shows in write()'s count,
    // whereas Qt 6.4's buffered flush drops the rest silently and commits.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return false;
    const QByteArray stored = configImage(record).first(kStoredBytes);
    return file.write(stored) == stored.size() && file.commit();
}

bool loadConfigFile(const QString& path, ModuleRecord& record)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray stored = file.read(kStoredBytes);
    if (file.error() != QFileDevice::NoError)
        return false;
    applyImage(stored, record);
    return true;
}

}  // namespace velmor
