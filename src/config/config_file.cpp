#include "config_file.h"

#include "config_image.h"
#include "image_layout.h"
#include "texts/message.h"

#include <QFile>
#include <QFileInfo>

namespace velmor {
namespace {

void tell(QString* reason, const QString& why)
{
    if (reason)
        *reason = why;
}

}  // namespace

bool saveConfigFile(const QString& path, const ModuleRecord& record, QString* reason)
{
    if (!isRegularFileOrAbsent(path)) {
        tell(reason, QString());
        return false;
    }
    const QString failure = writeWholeFile(path, configImage(record).first(kStoredBytes));
    tell(reason, failure);
    return failure.isEmpty();
}

std::optional<QByteArray> readConfigBytes(const QString& path, QString* reason)
{
    const QFileInfo info(path);
    if (info.exists() && !info.isFile()) {
        tell(reason, QString());
        return std::nullopt;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        tell(reason, file.errorString());
        return std::nullopt;
    }
    const QByteArray bytes = file.read(kStoredBytes + 1);
    if (file.error() != QFileDevice::NoError) {
        tell(reason, file.errorString());
        return std::nullopt;
    }
    return bytes;
}

QString shortFileNotice(const QString& path, qsizetype size, Language language)
{
    if (size >= kStoredBytes)
        return QString();
    return texts::message::shortFile(path, size, kStoredBytes, firstChannelNotWhollyRead(size), size >= moduleImage::kChannels,
                          language);
}

bool loadConfigFile(const QString& path, ModuleRecord& record, QString* reason, qsizetype* size)
{
    const std::optional<QByteArray> bytes = readConfigBytes(path, reason);
    if (!bytes)
        return false;
    if (size)
        *size = bytes->size();
    applyImage(bytes->first(std::min<qsizetype>(bytes->size(), kStoredBytes)), record);
    return true;
}

}  // namespace velmor
