#pragma once

#include "history_entry.h"

#include <QList>
#include <QString>

namespace velmor {

// Entries that wait on disk while their store is away: one JSON object per
// line of a file, appended to, read back whole and emptied once written.
// A line that is not a whole entry (a write cut short) is dropped on reading.
class HistoryQueue {
public:
    // The queue's file: history-queue.jsonl beside the default store.
    static QString defaultPath();
    explicit HistoryQueue(QString path) : path_(std::move(path)) {}

    const QString& path() const { return path_; }
    // False when the entry could not be kept either (the disk is full).
    bool append(const HistoryEntry& entry) const;
    QList<HistoryEntry> entries() const;
    bool isEmpty() const;
    // Takes the first `count` entries off the queue (those written); the
    // system's reason when the file could not be rewritten.
    QString drop(qsizetype count) const;

private:
    QString path_;
};

}  // namespace velmor
