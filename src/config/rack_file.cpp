#include "rack_file.h"

#include "config_image.h"
#include "files/whole_file.h"
#include "image_layout.h"
#include "model/fixed_text.h"
#include "record_check.h"
#include "texts/rack.h"

#include <QCryptographicHash>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>

#include <limits>

namespace velmor {
namespace {

const QString kFormat = QStringLiteral("velmor-rack");

QString sha256Of(const QByteArray& bytes)
{
    return QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex());
}

bool isWhole(const QJsonValue& value, int lowest, int highest)
{
    return value.isDouble() && value.toDouble() == value.toInt() && value.toInt() >= lowest && value.toInt() <= highest;
}

// One module of the document; the name of its first wrong field otherwise.
std::optional<RackModule> moduleOf(const QJsonObject& o, const QStringList& lines, QString& wrong, bool& damaged)
{
    RackModule m;
    const auto field = [&](const char* name, bool ok) {
        if (!ok && wrong.isEmpty())
            wrong = QLatin1String(name);
        return ok;
    };
    if (!field("line", o.value(QStringLiteral("line")).isString() && lines.contains(o.value(QStringLiteral("line")).toString()))
        || !field("address", isWhole(o.value(QStringLiteral("address")), 0, 254))
        || !field("model", o.value(QStringLiteral("model")).isString())
        || !field("moduleNumber", isWhole(o.value(QStringLiteral("moduleNumber")), 0, 65535))
        || !field("image", o.value(QStringLiteral("image")).isString())
        || !field("sha256", o.value(QStringLiteral("sha256")).isString()))
        return std::nullopt;
    m.line = o.value(QStringLiteral("line")).toString();
    m.address = o.value(QStringLiteral("address")).toInt();
    m.model = o.value(QStringLiteral("model")).toString();
    m.moduleNumber = o.value(QStringLiteral("moduleNumber")).toInt();
    const auto image = QByteArray::fromBase64Encoding(o.value(QStringLiteral("image")).toString().toLatin1(),
                                                      QByteArray::AbortOnBase64DecodingErrors);
    if (!field("image", image && (*image).size() == kStoredBytes))
        return std::nullopt;
    m.image = *image;
    if (sha256Of(m.image) != o.value(QStringLiteral("sha256")).toString()) {
        damaged = true;
        return std::nullopt;
    }
    // The image is a module's record, and the one the module is named by.
    const ModuleRecord record = recordFromImage(m.image);
    if (!field("image", checkStoredRecord(m.image).fault == RecordFault::None)
        || !field("model", trimmedText(record.modelName) == m.model)
        || !field("moduleNumber", record.moduleNumber == m.moduleNumber))
        return std::nullopt;
    return m;
}

}  // namespace

QByteArray rackJson(const Rack& rack)
{
    QJsonArray modules;
    for (const RackModule& m : rack.modules)
        modules.append(QJsonObject{{QStringLiteral("line"), m.line},
                                   {QStringLiteral("address"), m.address},
                                   {QStringLiteral("model"), m.model},
                                   {QStringLiteral("moduleNumber"), m.moduleNumber},
                                   {QStringLiteral("image"), QString::fromLatin1(m.image.toBase64())},
                                   {QStringLiteral("sha256"), sha256Of(m.image)}});
    return QJsonDocument(QJsonObject{{QStringLiteral("format"), kFormat},
                                     {QStringLiteral("formatVersion"), kRackFormatVersion},
                                     {QStringLiteral("time"), rack.time.toUTC().toString(Qt::ISODateWithMs)},
                                     {QStringLiteral("programVersion"), rack.version},
                                     {QStringLiteral("lines"), QJsonArray::fromStringList(rack.lines)},
                                     {QStringLiteral("modules"), modules}})
        .toJson();
}

std::optional<Rack> rackFromJson(const QByteArray& bytes, const QString& name, Language language, QString* error)
{
    using namespace texts::rack;
    const auto refuse = [&](const QString& why) {
        if (error)
            *error = why;
        return std::nullopt;
    };
    QJsonParseError parse;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &parse);
    if (parse.error != QJsonParseError::NoError)
        return refuse(pick(kNotJson, language).arg(name, parse.errorString()));
    const QJsonObject o = document.object();
    if (!document.isObject() || o.value(QStringLiteral("format")).toString() != kFormat)
        return refuse(pick(kNotRack, language).arg(name));
    const QJsonValue version = o.value(QStringLiteral("formatVersion"));
    if (!isWhole(version, 0, std::numeric_limits<int>::max()))
        return refuse(pick(kBadField, language).arg(name, QStringLiteral("formatVersion")));
    if (version.toInt() != kRackFormatVersion)
        return refuse(pick(kUnknownVersion, language).arg(name).arg(version.toInt()).arg(kRackFormatVersion));
    Rack rack;
    rack.time = QDateTime::fromString(o.value(QStringLiteral("time")).toString(), Qt::ISODateWithMs);
    if (!rack.time.isValid())
        return refuse(pick(kBadField, language).arg(name, QStringLiteral("time")));
    if (!o.value(QStringLiteral("programVersion")).isString())
        return refuse(pick(kBadField, language).arg(name, QStringLiteral("programVersion")));
    rack.version = o.value(QStringLiteral("programVersion")).toString();
    const QJsonValue lines = o.value(QStringLiteral("lines"));
    for (const QJsonValue& line : lines.toArray()) {
        if (!line.isString() || line.toString().isEmpty())
            return refuse(pick(kBadField, language).arg(name, QStringLiteral("lines")));
        rack.lines << line.toString();
    }
    if (!lines.isArray() || !o.value(QStringLiteral("modules")).isArray())
        return refuse(pick(kBadField, language).arg(name, lines.isArray() ? QStringLiteral("modules") : QStringLiteral("lines")));
    QSet<QPair<QString, int>> places;
    const QJsonArray modules = o.value(QStringLiteral("modules")).toArray();
    for (qsizetype i = 0; i < modules.size(); ++i) {
        QString wrong;
        bool damaged = false;
        const std::optional<RackModule> m = moduleOf(modules[i].toObject(), rack.lines, wrong, damaged);
        if (damaged)
            return refuse(pick(kBadImage, language).arg(name).arg(i + 1));
        if (!modules[i].isObject() || !m)
            return refuse(pick(kBadModule, language).arg(name).arg(i + 1).arg(wrong.isEmpty() ? QStringLiteral("line") : wrong));
        if (places.contains({m->line, m->address}))
            return refuse(pick(kTwice, language).arg(name, m->line).arg(m->address));
        places.insert({m->line, m->address});
        rack.modules << *m;
    }
    return rack;
}

QString writeRackFile(const QString& path, const Rack& rack) { return writeWholeFile(path, rackJson(rack)); }

std::optional<Rack> readRackFile(const QString& path, Language language, QString* error)
{
    QFile file(path);
    if (!isRegularFileOrAbsent(path) || !file.open(QIODevice::ReadOnly)) {
        if (error)
            *error = pick(texts::rack::kCannotRead, language).arg(path, file.errorString());
        return std::nullopt;
    }
    return rackFromJson(file.readAll(), path, language, error);
}

}  // namespace velmor
