#pragma once

#include <QString>

#include <optional>

namespace velmor {

// Where the history is kept: nowhere, an SQLite file, or a PostgreSQL
// database that several workstations share.
struct HistoryTarget {
    enum class Kind { Off, SQLite, PostgreSQL };
    Kind kind = Kind::Off;
    QString path;      // the SQLite file
    QString user;      // PostgreSQL; the password comes from ~/.pgpass or PGPASSWORD
    QString host;
    int port = 5432;
    QString database;

    // "off", the file's path, or "postgresql://user@host:port/db".
    QString text() const;
};

// The environment variable that names the store, as --history does.
inline constexpr char kHistoryVariable[] = "VELMOR_HISTORY";

// "off", "postgresql://user@host:port/db" (or postgres://; user, port and
// database optional) or the path of an SQLite file. Nothing for a URL of
// another scheme or one that carries a password, which we never keep: it
// belongs in ~/.pgpass or PGPASSWORD.
std::optional<HistoryTarget> historyTargetNamed(const QString& text);

// The embedded default: history.sqlite in the user's application-data folder.
HistoryTarget defaultHistoryTarget();

// The store a front end uses: off with --no-history; else --history's
// (`given`, when not empty), else VELMOR_HISTORY's, else the setting's,
// else the default. `error` names a value that is not a store.
std::optional<HistoryTarget> chosenHistoryTarget(bool noHistory, const QString& given, const QString& setting,
                                                 QString* error);

}  // namespace velmor
