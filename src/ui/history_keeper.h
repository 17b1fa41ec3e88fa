#pragma once

#include "history/history_recorder.h"

#include <QObject>
#include <QThread>

#include <memory>

namespace velmor {

// The window's history, written in a thread of its own: an entry handed over
// after a flow never holds up the window, even while a shared store is slow
// or a server does not answer. Entries are written in the order handed over.
class HistoryKeeper : public QObject {
    Q_OBJECT
public:
    HistoryKeeper(const HistoryTarget& target, Language language);
    // Waits for the entries handed over to be written or queued.
    ~HistoryKeeper() override;

    void keep(const HistoryEntry& entry);
    // Blocks until every entry handed over so far has been written or queued.
    void settle();

signals:
    // What the operator is to be told of an entry (an outage, a damaged store).
    void told(const QString& text);

private:
    QThread thread_;
    class Writer;
    Writer* writer_;
};

}  // namespace velmor
