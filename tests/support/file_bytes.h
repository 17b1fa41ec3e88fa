#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

namespace velmor::testing {

// A file's bytes, empty when it cannot be read.
inline QByteArray fileBytes(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace velmor::testing
