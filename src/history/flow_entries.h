#pragma once

#include "history_entry.h"

#include <QList>
#include <QStringList>

#include <optional>

namespace velmor {

// The entries both front ends keep of what their flows did.

// The end of a flow on one module on `line`: an entry of `kind` with the
// module's image when it worked (`failure` empty; nothing without a kind),
// else a failure event of the line and address that names the flow and how
// it failed. A failed flow's record holds no module's own model and number.
std::optional<HistoryEntry> flowEntry(const ModuleRecord& module, const QString& line, std::optional<EntryKind> kind,
                                      const QString& failure, const QString& flow);

// A configuration file saved or opened: its absolute path, the record as its
// image. An opened file's line is that of the machine it came from: none.
HistoryEntry fileEntry(EntryKind kind, const ModuleRecord& module, const QString& line, const QString& path);

// One module a search found, on the line it was found on.
struct FoundModule {
    QString line;
    const ModuleRecord* module = nullptr;
    bool readWholly = true;
};

// A search of `lines`: a read of each module it read wholly, then the search
// itself naming the modules ("SIM1:5 TM-B8 23444"); its outcome is `failure`,
// "none found", or done.
QList<HistoryEntry> searchEntries(const QStringList& lines, const QList<FoundModule>& found, const QString& failure);

}  // namespace velmor
