#include "history_store.h"

#include "history_schema.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QUuid>

#include <limits>

namespace velmor {
namespace {

constexpr const char* kColumns =
    "id, time_utc, workstation, os_user, program_version, line, address, module_number, model, kind, outcome, "
    "detail, sha256, image";
// The same without the image.
constexpr const char* kListColumns =
    "id, time_utc, workstation, os_user, program_version, line, address, module_number, model, kind, outcome, "
    "detail, sha256";

bool fail(const QString& why, QString* error)
{
    if (error)
        *error = why;
    return false;
}

// Qt SQL binds a null string or byte array as NULL; the store's columns hold
// empty texts and images instead.
QVariant bound(const QString& text) { return text.isNull() ? QVariant(QStringLiteral("")) : QVariant(text); }
QVariant bound(const QByteArray& bytes) { return bytes.isNull() ? QVariant(QByteArray("", 0)) : QVariant(bytes); }

QString timeText(const QDateTime& time) { return time.toUTC().toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss.zzzZ")); }

HistoryEntry entryOfRow(const QSqlQuery& q)
{
    HistoryEntry e;
    e.id = q.value(0).toLongLong();
    e.time = QDateTime::fromString(q.value(1).toString(), Qt::ISODateWithMs);
    e.workstation = q.value(2).toString();
    e.user = q.value(3).toString();
    e.version = q.value(4).toString();
    e.line = q.value(5).toString();
    e.address = q.value(6).toInt();
    e.moduleNumber = q.value(7).toInt();
    e.model = q.value(8).toString();
    e.kind = kindNamed(q.value(9).toString()).value_or(EntryKind::Failure);
    e.outcome = q.value(10).toString();
    e.detail = q.value(11).toString();
    e.storedHash = q.value(12).toString();
    if (q.record().count() > 13)
        e.image = q.value(13).toByteArray();
    return e;
}

// An SQLite file that is not whole: the check fails, or it is no database at all.
bool sqliteWhole(QSqlDatabase& db)
{
    QSqlQuery check(db);
    return check.exec(QStringLiteral("PRAGMA quick_check")) && check.next()
        && check.value(0).toString() == QLatin1String("ok");
}

}  // namespace

HistoryStore::HistoryStore()
    : connection_(QStringLiteral("velmor-history-") + QUuid::createUuid().toString(QUuid::WithoutBraces))
{
}

HistoryStore::~HistoryStore() { close(); }

void HistoryStore::close()
{
    if (db_.isValid()) {
        db_.close();
        db_ = QSqlDatabase();
        QSqlDatabase::removeDatabase(connection_);
    }
}

bool HistoryStore::isOpen() const { return db_.isOpen(); }

bool HistoryStore::open(const HistoryTarget& target, QString* error, QString* movedAside, bool checked)
{
    close();
    switch (target.kind) {
    case HistoryTarget::Kind::Off: return fail(QStringLiteral("the history is off"), error);
    case HistoryTarget::Kind::PostgreSQL:
        if (!openPostgres(target, error))
            return false;
        break;
    case HistoryTarget::Kind::SQLite:
        if (!openSqlite(target.path, error))
            return false;
        if (checked && !sqliteWhole(db_)) {
            // Kept for whoever wants to look into it; never written over.
            close();
            const QString aside = target.path + QStringLiteral(".damaged-")
                                + QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyyMMdd-HHmmss"));
            if (!QFile::rename(target.path, aside))
                return fail(QStringLiteral("%1 is damaged and cannot be moved aside").arg(target.path), error);
            for (const char* companion : {"-wal", "-shm"})
                QFile::rename(target.path + QLatin1String(companion), aside + QLatin1String(companion));
            if (movedAside)
                *movedAside = aside;
            if (!openSqlite(target.path, error))
                return false;
        }
        break;
    }
    if (!migrateHistory(db_, error)) {
        close();
        return false;
    }
    return true;
}

bool HistoryStore::openSqlite(const QString& path, QString* error)
{
    if (!QSqlDatabase::isDriverAvailable(QStringLiteral("QSQLITE")))
        return fail(QStringLiteral("the Qt SQL driver for SQLite is not installed"), error);
    QDir().mkpath(QFileInfo(path).absolutePath());
    db_ = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection_);
    db_.setDatabaseName(path);
    // Another Velmor program may be writing: wait for it rather than fail.
    db_.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=5000"));
    if (!db_.open()) {
        const QString why = db_.lastError().text();
        close();
        return fail(QStringLiteral("%1: %2").arg(path, why), error);
    }
    QSqlQuery(db_).exec(QStringLiteral("PRAGMA journal_mode=WAL"));
    return true;
}

bool HistoryStore::openPostgres(const HistoryTarget& target, QString* error)
{
    if (!QSqlDatabase::isDriverAvailable(QStringLiteral("QPSQL")))
        return fail(QStringLiteral("the Qt SQL driver for PostgreSQL is not installed"), error);
    db_ = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), connection_);
    db_.setHostName(target.host);
    db_.setPort(target.port);
    db_.setUserName(target.user);
    db_.setDatabaseName(target.database);
    db_.setConnectOptions(QStringLiteral("connect_timeout=5"));
    if (!db_.open()) {
        const QString why = db_.lastError().text();
        close();
        return fail(QStringLiteral("%1: %2").arg(target.text(), why.trimmed()), error);
    }
    return true;
}

bool HistoryStore::add(HistoryEntry& entry, QString* error)
{
    if (!db_.isOpen())
        return fail(QStringLiteral("the history store is not open"), error);
    QSqlQuery q(db_);
    q.prepare(QStringLiteral("INSERT INTO entries (time_utc, workstation, os_user, program_version, line, address, "
                             "module_number, model, kind, outcome, detail, image, sha256) "
                             "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?) RETURNING id"));
    for (const QVariant& value : {bound(timeText(entry.time)), bound(entry.workstation), bound(entry.user),
                                  bound(entry.version), bound(entry.line), QVariant(entry.address),
                                  QVariant(entry.moduleNumber), bound(entry.model), bound(kindName(entry.kind)),
                                  bound(entry.outcome), bound(entry.detail), bound(entry.image),
                                  bound(entry.imageHash())})
        q.addBindValue(value);
    if (!q.exec() || !q.next())
        return fail(q.lastError().text(), error);
    entry.id = q.value(0).toLongLong();
    return true;
}

QList<HistoryEntry> HistoryStore::find(const HistoryFilter& filter, QString* error) const
{
    QStringList where;
    QVariantList values;
    const auto ask = [&](const char* condition, const QVariant& value) {
        where << QLatin1String(condition);
        values << value;
    };
    if (!filter.model.isEmpty())
        ask("model = ?", filter.model);
    if (filter.moduleNumber >= 0)
        ask("module_number = ?", filter.moduleNumber);
    if (!filter.line.isEmpty())
        ask("line = ?", filter.line);
    if (filter.address >= 0)
        ask("address = ?", filter.address);
    if (filter.since.isValid())
        ask("time_utc >= ?", timeText(filter.since));
    if (filter.kind)
        ask("kind = ?", kindName(*filter.kind));
    QSqlQuery q(db_);
    q.prepare(QStringLiteral("SELECT %1 FROM entries%2 ORDER BY time_utc DESC, id DESC LIMIT %3 OFFSET %4")
                  .arg(QLatin1String(filter.images ? kColumns : kListColumns), where.isEmpty() ? QString() : QStringLiteral(" WHERE ") + where.join(QStringLiteral(" AND ")))
                  .arg(filter.limit < 0 ? std::numeric_limits<int>::max() : filter.limit)
                  .arg(filter.offset));
    for (const QVariant& value : values)
        q.addBindValue(value);
    QList<HistoryEntry> found;
    if (!q.exec()) {
        fail(q.lastError().text(), error);
        return found;
    }
    while (q.next())
        found << entryOfRow(q);
    return found;
}

std::optional<HistoryEntry> HistoryStore::entry(qint64 id, QString* error) const
{
    QSqlQuery q(db_);
    q.prepare(QStringLiteral("SELECT %1 FROM entries WHERE id = ?").arg(QLatin1String(kColumns)));
    q.addBindValue(id);
    if (!q.exec()) {
        fail(q.lastError().text(), error);
        return std::nullopt;
    }
    if (!q.next())
        return std::nullopt;
    return entryOfRow(q);
}

}  // namespace velmor
