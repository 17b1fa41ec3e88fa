#pragma once

#include "model/module_table.h"
#include "texts/language.h"

#include <QByteArray>
#include <QDateTime>
#include <QJsonObject>
#include <QString>

#include <optional>

namespace velmor {

// What an entry of the history tells of.
enum class EntryKind { Read, Write, Balance, Search, Save, Open, Failure };

// "read", "write", "balance", "search", "save", "open", "failure": the
// names the store keeps and the command line takes.
QString kindName(EntryKind kind);
std::optional<EntryKind> kindNamed(const QString& name);
// A kind or an outcome as the store keeps it, in `language`.
QString shownWord(const QString& stored, Language language);

// One thing that happened to a module's setup, or a search of lines. A
// module is the same across lines and addresses when its model and module
// number are.
struct HistoryEntry {
    qint64 id = 0;            // given by the store
    QDateTime time;           // UTC
    QString workstation;
    QString user;             // the operating system's user
    QString version;          // the program's
    QString line;             // as listed, or a network line's address
    int address = -1;         // -1: none (a search, a file)
    int moduleNumber = -1;    // -1: none
    QString model;
    EntryKind kind = EntryKind::Read;
    QString outcome;          // "done", or what went wrong
    QString detail;           // a file's path; the lines and modules of a search
    QByteArray image;         // the record's stored bytes, or nothing
    // The image's SHA-256 as the store keeps it, for an entry read without
    // its image (a list of the history).
    QString storedHash;

    // The image's SHA-256 in hex; empty for an entry that has none.
    QString imageHash() const;
    bool operator==(const HistoryEntry&) const = default;
};

// An entry made now, on this workstation by this user: of a module's record
// (its model, number and image), or of no module when `record` is null.
HistoryEntry entryNow(EntryKind kind, const ModuleRecord* record, const QString& line, int address);

// The outcome of a flow that did what it was asked.
inline const QString kOutcomeDone = QStringLiteral("done");

// An entry as one JSON object (the image in base64) and back; nothing when a
// field is missing or of the wrong type.
QJsonObject entryJson(const HistoryEntry& entry);
std::optional<HistoryEntry> entryFromJson(const QJsonObject& object);

}  // namespace velmor
