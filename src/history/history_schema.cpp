#include "history_schema.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QStringList>

namespace velmor {
namespace {

// The two backends differ in how a row gets its number and what holds bytes.
struct Dialect {
    const char* key;    // "INTEGER PRIMARY KEY" or "BIGSERIAL PRIMARY KEY"
    const char* bytes;  // "BLOB" or "BYTEA"
};

// Migration n takes the tables from version n-1 to n.
QStringList migration(int version, const Dialect& d)
{
    switch (version) {
    case 1:
        return {
            QStringLiteral("CREATE TABLE entries ("
                           " id %1,"
                           " time_utc TEXT NOT NULL,"
                           " workstation TEXT NOT NULL,"
                           " os_user TEXT NOT NULL,"
                           " program_version TEXT NOT NULL,"
                           " line TEXT NOT NULL,"
                           " address INTEGER NOT NULL,"
                           " module_number INTEGER NOT NULL,"
                           " model TEXT NOT NULL,"
                           " kind TEXT NOT NULL,"
                           " outcome TEXT NOT NULL,"
                           " detail TEXT NOT NULL,"
                           " image %2 NOT NULL,"
                           " sha256 TEXT NOT NULL)")
                .arg(QLatin1String(d.key), QLatin1String(d.bytes)),
            QStringLiteral("CREATE INDEX entries_by_module ON entries (model, module_number, time_utc)"),
            QStringLiteral("CREATE INDEX entries_by_time ON entries (time_utc)"),
        };
    case 2:
        // A line and address asked of the history (history --port --address).
        return {QStringLiteral("CREATE INDEX entries_by_place ON entries (line, address, time_utc)")};
    default: return {};
    }
}

bool fail(const QSqlError& why, QString* error)
{
    if (error)
        *error = why.text();
    return false;
}

}  // namespace

bool migrateHistory(QSqlDatabase& db, QString* error, int target)
{
    const bool postgres = db.driverName() == QLatin1String("QPSQL");
    const Dialect dialect = postgres ? Dialect{"BIGSERIAL PRIMARY KEY", "BYTEA"} : Dialect{"INTEGER PRIMARY KEY", "BLOB"};
    if (!db.transaction())
        return fail(db.lastError(), error);
    QSqlQuery query(db);
    // Two workstations starting at once on a new shared store: the second
    // waits here for the first's tables.
    if (postgres && !query.exec(QStringLiteral("SELECT pg_advisory_xact_lock(7461)"))) {
        db.rollback();
        return fail(query.lastError(), error);
    }
    if (!query.exec(QStringLiteral("CREATE TABLE IF NOT EXISTS schema_version (version INTEGER NOT NULL)"))) {
        db.rollback();
        return fail(query.lastError(), error);
    }
    int version = 0;
    if (!query.exec(QStringLiteral("SELECT MAX(version) FROM schema_version"))) {
        db.rollback();
        return fail(query.lastError(), error);
    }
    if (query.next())
        version = query.value(0).toInt();
    if (version > kHistorySchemaVersion) {
        db.rollback();
        if (error)
            *error = QStringLiteral("the store is at schema version %1; this program knows %2").arg(version).arg(kHistorySchemaVersion);
        return false;
    }
    for (int next = version + 1; next <= target; ++next) {
        for (const QString& statement : migration(next, dialect)) {
            if (!query.exec(statement)) {
                const QSqlError why = query.lastError();
                db.rollback();
                return fail(why, error);
            }
        }
        query.prepare(QStringLiteral("INSERT INTO schema_version (version) VALUES (?)"));
        query.addBindValue(next);
        if (!query.exec()) {
            const QSqlError why = query.lastError();
            db.rollback();
            return fail(why, error);
        }
    }
    return db.commit() || fail(db.lastError(), error);
}

}  // namespace velmor
