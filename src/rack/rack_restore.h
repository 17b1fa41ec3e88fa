#pragma once

#include "history/history_entry.h"
#include "link/frame_row.h"
#include "link/operations.h"
#include "rack_check.h"

#include <QObject>

#include <atomic>

namespace velmor {

// What a restore did to one place of the rack.
enum class RestoreOutcome {
    Unchanged,       // it held the file's setup already
    Restored,        // every differing group went out and the read-back holds the file's setup
    RestoredInPart,  // some groups went out, or the read-back does not confirm them
    NotRestored,     // it was to be written and nothing went out
    Skipped,         // not written to: foreign, missing, extra, or its line stopped first
};

const Text& restoreOutcomeText(RestoreOutcome outcome);

struct RestoredModule {
    CheckedModule checked;
    RestoreOutcome outcome = RestoreOutcome::Unchanged;
    QList<WriteGroup> planned;  // the groups that differ
    QList<WriteGroup> sent;     // those the module acknowledged, in order
    // Why it was skipped, what was left out or went wrong, in the restore's
    // language; empty when it went as planned.
    QString why;
    // What the module holds after the restore, as read back; the file's setup
    // when it could not be read back.
    ModuleRecord after;
    bool readBack = false;
    // How its last failed exchange failed, if one did.
    Failure failure = Failure::None;
};

// The groups that make the module at a checked place hold the file's setup:
// those that differ from what answered there; every group where nothing did.
QList<WriteGroup> groupsToRestore(const CheckedModule& checked, Language language);

// What the operator settled before anything is sent.
struct RestoreChoices {
    // Foreign and missing places are written too (a module of another model
    // never: its memory has another layout).
    bool force = false;
    // The information write reaches every module on a line at once; it goes
    // out only to a module that is alone on its line, and only when the
    // operator has confirmed that it is.
    bool onlyOneModule = false;
};

// A rack restored from its file, all lines at once: on each line, one module
// after another, only the groups that differ from what the check read; then
// every module written to is read back and compared with the file. A line
// whose port fails (gone, or held by another program) stops; the other lines
// go on. Nothing is asked and nothing is said on the way: the result tells it
// all, and the lines' notices are kept.
class RackRestore : public QObject {
    Q_OBJECT
public:
    explicit RackRestore(Operations& frontEnd, QObject* parent = nullptr);

    QList<RestoredModule> restore(const QList<CheckedModule>& checked, const QList<PortEntry>& lines,
                                  const RestoreChoices& choices, Language language);
    // No module is begun after the ones in flight; those not begun are skipped.
    void stop() { stop_ = true; }

signals:
    // On `port`, `done` of the line's `total` modules to write are through.
    void lineProgress(const velmor::PortEntry& port, int done, int total);
    void frameLogged(const velmor::FrameRow& row);

private:
    Operations& frontEnd_;
    std::atomic<bool> stop_ = false;
};

// The history's entries of a restore from the rack file at `rackPath`: a
// write of each module something went out to, with what it holds after it
// (a failure when it could not be read back), naming the file.
QList<HistoryEntry> restoreEntries(const QList<RestoredModule>& restored, const QString& rackPath);

}  // namespace velmor
