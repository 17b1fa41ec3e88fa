#pragma once

// The history as a test reads it back: the entries of a store, oldest first,
// and their kinds.

#include "history/history_store.h"

#include <QStringList>

#include <algorithm>

namespace velmor::testing {

inline QList<HistoryEntry> entriesIn(const QString& store)
{
    HistoryStore opened;
    QString error;
    if (!opened.open(*historyTargetNamed(store), &error))
        qWarning("%s", qPrintable(error));
    QList<HistoryEntry> entries = opened.find({}, &error);
    std::reverse(entries.begin(), entries.end());
    return entries;
}

inline QStringList kindsOf(const QList<HistoryEntry>& entries)
{
    QStringList kinds;
    for (const HistoryEntry& e : entries)
        kinds << kindName(e.kind);
    return kinds;
}

}  // namespace velmor::testing
