#include "history_queue.h"

#include "files/whole_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QStandardPaths>

namespace velmor {

QString HistoryQueue::defaultPath()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return QDir(folder).filePath(QStringLiteral("velmor/history-queue.jsonl"));
}

bool HistoryQueue::append(const HistoryEntry& entry) const
{
    QDir().mkpath(QFileInfo(path_).absolutePath());
    QFile file(path_);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append))
        return false;
    const QByteArray line = QJsonDocument(entryJson(entry)).toJson(QJsonDocument::Compact) + '\n';
    return file.write(line) == line.size() && file.flush();
}

QList<HistoryEntry> HistoryQueue::entries() const
{
    QList<HistoryEntry> out;
    QFile file(path_);
    if (!file.open(QIODevice::ReadOnly))
        return out;
    while (!file.atEnd()) {
        const QJsonDocument document = QJsonDocument::fromJson(file.readLine());
        if (const std::optional<HistoryEntry> entry = entryFromJson(document.object()); document.isObject() && entry)
            out << *entry;
    }
    return out;
}

bool HistoryQueue::isEmpty() const { return QFileInfo(path_).size() == 0; }

QString HistoryQueue::drop(qsizetype count) const
{
    const QList<HistoryEntry> left = entries().mid(count);
    if (left.isEmpty()) {
        QFile file(path_);
        return !file.exists() || file.remove() ? QString() : file.errorString();
    }
    QByteArray text;
    for (const HistoryEntry& entry : left)
        text += QJsonDocument(entryJson(entry)).toJson(QJsonDocument::Compact) + '\n';
    return writeWholeFile(path_, text);
}

}  // namespace velmor
