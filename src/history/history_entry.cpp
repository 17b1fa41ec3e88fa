#include "history_entry.h"

#include "config/config_image.h"
#include "model/fixed_text.h"
#include "texts/history.h"

#include <QCryptographicHash>
#include <QSysInfo>

#ifdef Q_OS_UNIX
#include <pwd.h>
#include <unistd.h>
#endif
#include <QJsonValue>

namespace velmor {
namespace {

constexpr const char* kKindNames[] = {"read", "write", "balance", "search", "save", "open", "failure"};

QString operatingSystemUser()
{
    for (const char* name : {"USER", "LOGNAME", "USERNAME"})
        if (const QString user = qEnvironmentVariable(name); !user.isEmpty())
            return user;
#ifdef Q_OS_UNIX
    // A service or a container's root may have no such variable.
    if (const passwd* entry = getpwuid(geteuid()))
        return QString::fromLocal8Bit(entry->pw_name);
#endif
    return QString();
}

}  // namespace

QString kindName(EntryKind kind) { return QString::fromLatin1(kKindNames[static_cast<int>(kind)]); }

std::optional<EntryKind> kindNamed(const QString& name)
{
    for (int i = 0; i < static_cast<int>(std::size(kKindNames)); ++i)
        if (name == QLatin1String(kKindNames[i]))
            return static_cast<EntryKind>(i);
    return std::nullopt;
}

QString shownWord(const QString& stored, Language language)
{
    for (const Text& word : texts::history::kStoredWords)
        if (stored == QLatin1String(word.en))
            return pick(word, language);
    return stored;
}

QString HistoryEntry::imageHash() const
{
    return image.isEmpty() ? storedHash
                           : QString::fromLatin1(QCryptographicHash::hash(image, QCryptographicHash::Sha256).toHex());
}

HistoryEntry entryNow(EntryKind kind, const ModuleRecord* record, const QString& line, int address)
{
    HistoryEntry entry;
    entry.time = QDateTime::currentDateTimeUtc();
    entry.workstation = QSysInfo::machineHostName();
    entry.user = operatingSystemUser();
    entry.version = QStringLiteral(VELMOR_VERSION);
    entry.line = line;
    entry.address = address;
    entry.kind = kind;
    entry.outcome = kOutcomeDone;
    if (record) {
        entry.moduleNumber = record->moduleNumber;
        entry.model = trimmedText(record->modelName);
        entry.image = configImage(*record).left(kStoredBytes);
        entry.storedHash = entry.imageHash();
    }
    return entry;
}

QJsonObject entryJson(const HistoryEntry& entry)
{
    return {
        {QStringLiteral("id"), entry.id},
        {QStringLiteral("time"), entry.time.toUTC().toString(Qt::ISODateWithMs)},
        {QStringLiteral("workstation"), entry.workstation},
        {QStringLiteral("user"), entry.user},
        {QStringLiteral("version"), entry.version},
        {QStringLiteral("line"), entry.line},
        {QStringLiteral("address"), entry.address},
        {QStringLiteral("moduleNumber"), entry.moduleNumber},
        {QStringLiteral("model"), entry.model},
        {QStringLiteral("kind"), kindName(entry.kind)},
        {QStringLiteral("outcome"), entry.outcome},
        {QStringLiteral("detail"), entry.detail},
        {QStringLiteral("image"), QString::fromLatin1(entry.image.toBase64())},
        {QStringLiteral("sha256"), entry.imageHash()},
    };
}

std::optional<HistoryEntry> entryFromJson(const QJsonObject& o)
{
    const QStringList texts{QStringLiteral("time"),  QStringLiteral("workstation"), QStringLiteral("user"),
                            QStringLiteral("version"), QStringLiteral("line"),    QStringLiteral("model"),
                            QStringLiteral("kind"),  QStringLiteral("outcome"),   QStringLiteral("detail"),
                            QStringLiteral("image"), QStringLiteral("sha256")};
    for (const QString& key : texts)
        if (!o.value(key).isString())
            return std::nullopt;
    for (const char* key : {"id", "address", "moduleNumber"})
        if (!o.value(QLatin1String(key)).isDouble())
            return std::nullopt;
    HistoryEntry entry;
    entry.id = o.value(QStringLiteral("id")).toInteger();
    entry.time = QDateTime::fromString(o.value(QStringLiteral("time")).toString(), Qt::ISODateWithMs);
    entry.workstation = o.value(QStringLiteral("workstation")).toString();
    entry.user = o.value(QStringLiteral("user")).toString();
    entry.version = o.value(QStringLiteral("version")).toString();
    entry.line = o.value(QStringLiteral("line")).toString();
    entry.address = o.value(QStringLiteral("address")).toInt();
    entry.moduleNumber = o.value(QStringLiteral("moduleNumber")).toInt();
    entry.model = o.value(QStringLiteral("model")).toString();
    const std::optional<EntryKind> kind = kindNamed(o.value(QStringLiteral("kind")).toString());
    const auto image = QByteArray::fromBase64Encoding(o.value(QStringLiteral("image")).toString().toLatin1(),
                                                      QByteArray::AbortOnBase64DecodingErrors);
    if (!entry.time.isValid() || !kind || !image)
        return std::nullopt;
    entry.kind = *kind;
    entry.outcome = o.value(QStringLiteral("outcome")).toString();
    entry.detail = o.value(QStringLiteral("detail")).toString();
    entry.image = *image;
    entry.storedHash = o.value(QStringLiteral("sha256")).toString();
    if (!entry.image.isEmpty() && QString::fromLatin1(QCryptographicHash::hash(entry.image, QCryptographicHash::Sha256).toHex())
                                      != entry.storedHash)
        return std::nullopt;
    return entry;
}

}  // namespace velmor
