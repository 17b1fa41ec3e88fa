#pragma once

#include "history_entry.h"
#include "history_target.h"

#include <QList>
#include <QSqlDatabase>

namespace velmor {

// Which entries a look into the history wants; an empty field asks nothing.
struct HistoryFilter {
    QString model;
    int moduleNumber = -1;
    QString line;
    int address = -1;
    QDateTime since;
    std::optional<EntryKind> kind;
    // Each entry's image too; without, only its SHA-256 (a list reads fast).
    bool images = true;
    // A page of the entries: `limit` of them (all when negative) after the
    // first `offset`.
    int limit = -1;
    int offset = 0;
};

// The history in a database, SQLite or PostgreSQL, through Qt SQL. Each
// store holds a connection of its own, so that stores in several threads
// never share one.
class HistoryStore {
public:
    HistoryStore();
    ~HistoryStore();
    HistoryStore(const HistoryStore&) = delete;
    HistoryStore& operator=(const HistoryStore&) = delete;

    // Opens the store and brings its tables up to date. An SQLite file that
    // fails its integrity check, or is no database, is moved aside (its new
    // name in `movedAside`) and a new one started; false with `error` when
    // the store cannot be used. A store opened only to be read (`checked`
    // false) skips the check, which reads the whole file: the program that
    // writes the history checks it.
    bool open(const HistoryTarget& target, QString* error, QString* movedAside = nullptr, bool checked = true);
    bool isOpen() const;
    void close();

    // Adds the entry; its id is set. False with `error` when it was not written.
    bool add(HistoryEntry& entry, QString* error);
    // Newest first.
    QList<HistoryEntry> find(const HistoryFilter& filter, QString* error) const;
    std::optional<HistoryEntry> entry(qint64 id, QString* error) const;

private:
    bool openSqlite(const QString& path, QString* error);
    bool openPostgres(const HistoryTarget& target, QString* error);

    QString connection_;
    QSqlDatabase db_;
};

}  // namespace velmor
