#pragma once

#include "history_queue.h"
#include "history_store.h"
#include "texts/language.h"

namespace velmor {

// What became of an entry handed to the recorder, for the front end to tell.
struct RecordNotice {
    enum class Kind {
        None,         // written, or waiting in an outage already told
        OutageBegan,  // the store is away: the entry waits in `where` (told once)
        NotKept,      // neither the store nor the queue took it
        MovedAside,   // the store was damaged: moved to `where`, a new one started
    };
    Kind kind = Kind::None;
    QString why;    // the store's or the system's reason
    QString where;  // the queue's file, or the damaged store's new name
};

// What the operator is told of a notice; empty for none.
QString recordNoticeText(const RecordNotice& notice, Language language);

// What the front ends hand their flows' results to. An entry goes into the
// store; while the store cannot be reached, or its disk is full, it waits in
// the queue and goes in, in order, before the next entry that can be written.
// Nothing it does fails the operator's command.
class HistoryRecorder {
public:
    HistoryRecorder(const HistoryTarget& target, const QString& queuePath);

    bool isOff() const { return target_.kind == HistoryTarget::Kind::Off; }
    const HistoryTarget& target() const { return target_; }

    RecordNotice record(const HistoryEntry& entry);

    // The store, opened on first use; null when the history is off or the
    // store cannot be opened (`error` says why).
    HistoryStore* store(QString* error);

private:
    // The queue's entries into the store, oldest first; false when some still wait.
    bool catchUp(HistoryStore& store, QString* error);

    HistoryTarget target_;
    HistoryQueue queue_;
    HistoryStore store_;
    QString movedAside_;  // not yet told
};

}  // namespace velmor
