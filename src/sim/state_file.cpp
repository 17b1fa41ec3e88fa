#include "state_file.h"

#include "files/whole_file.h"
#include "model/record_json.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace velmor::sim {
namespace {

const QLatin1String kModulesKey("modules");

bool fail(QString* error, const QString& why)
{
    if (error)
        *error = why;
    return false;
}

}  // namespace

bool loadState(const QString& path, QList<ModuleRecord>& modules, QString* error)
{
    // A FIFO or a device would block the read, or never end it.
    if (!QFileInfo(path).isFile())
        return fail(error, QStringLiteral("%1 is not a regular file").arg(path));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return fail(error, QStringLiteral("cannot read %1: %2").arg(path, file.errorString()));
    QJsonParseError parse;
    const QJsonDocument doc = QJsonDocument::fromJson(file.readAll(), &parse);
    if (doc.isNull())
        return fail(error, QStringLiteral("%1: %2").arg(path, parse.errorString()));
    if (!doc.isObject() || !doc.object().value(kModulesKey).isArray())
        return fail(error, QStringLiteral("%1: expected {\"modules\": [...]}").arg(path));

    QList<ModuleRecord> loaded;
    const QJsonArray array = doc.object().value(kModulesKey).toArray();
    for (qsizetype i = 0; i < array.size(); ++i) {
        ModuleRecord record = defaultModule();
        QString why;
        if (!array[i].isObject() || !recordFromJson(array[i].toObject(), record, &why))
            return fail(error, QStringLiteral("%1: modules[%2]: %3")
                                   .arg(path)
                                   .arg(i)
                                   .arg(why.isEmpty() ? QStringLiteral("expected an object") : why));
        loaded.append(record);
    }
    modules = loaded;
    return true;
}

bool saveState(const QString& path, const QList<ModuleRecord>& modules, QString* error)
{
    QJsonArray array;
    for (const ModuleRecord& record : modules)
        array.append(recordToJson(record));
    const QString failure = writeWholeFile(path, QJsonDocument(QJsonObject{{kModulesKey, array}}).toJson());
    if (!failure.isEmpty())
        return fail(error, QStringLiteral("cannot write the state %1 (%2); the previous state is kept").arg(path, failure));
    return true;
}

}  // namespace velmor::sim
