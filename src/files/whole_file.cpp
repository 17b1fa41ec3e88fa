#include "whole_file.h"

#include <QFileInfo>
#include <QSaveFile>

#include <filesystem>
#include <system_error>

namespace velmor {

QString writeWholeFile(const QString& path, const QByteArray& bytes)
{
    QSaveFile file(path);
    // Unbuffered: Qt 6.4's buffered flush drops what a full disk refuses and
    // commits all the same.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return file.errorString();
    if (file.write(bytes) != bytes.size() || !file.commit())
        return file.errorString();
    return QString();
}

bool isRegularFileOrAbsent(const QString& path)
{
    const QFileInfo info(path);  // a link is judged by what it leads to
    return info.isFile() || (!info.exists() && !info.isSymLink());
}

bool isSameFile(const QString& a, const QString& b)
{
    std::error_code error;
    return std::filesystem::equivalent(std::filesystem::path(a.toStdU16String()),
                                       std::filesystem::path(b.toStdU16String()), error)
        && !error;
}

}  // namespace velmor
