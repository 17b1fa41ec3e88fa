#pragma once

#include <QSqlDatabase>
#include <QString>

namespace velmor {

// The history's tables, one schema for both backends: the schema_version
// table holds the version the tables are at, and each migration takes them
// one version further. A store at a later version than this program knows is
// left alone.
inline constexpr int kHistorySchemaVersion = 2;

// Brings the store's tables up to `version` (kHistorySchemaVersion unless a
// test builds an older store) in one transaction; false with `error` when it
// could not.
bool migrateHistory(QSqlDatabase& db, QString* error, int version = kHistorySchemaVersion);

}  // namespace velmor
