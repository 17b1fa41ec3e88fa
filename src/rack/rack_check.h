#pragma once

#include "config/rack_file.h"
#include "edit/setup_differences.h"
#include "link/concurrent_search.h"

namespace velmor {

// A module of a search, as a rack file keeps it.
RackModule rackModuleOf(const ConcurrentSearch::Found& found);

// Where a module of the rack stands against the file.
enum class RackStatus {
    Same,       // answers and holds what the file holds
    Different,  // answers, the same module, with other settings
    Missing,    // does not answer
    Foreign,    // another model or module number answers there
    Extra,      // answers at a place the file does not name
};

const Text& rackStatusText(RackStatus status);

// One place of a rack, checked.
struct CheckedModule {
    RackStatus status = RackStatus::Same;
    RackModule kept;  // the file's (empty for an extra module)
    RackModule live;  // what answered (empty for a missing one)
    // Different: each differing cell, the file's text before, the module's after.
    QList<CellDifference> cells;

    // The module a table of results names: the one that answers there, or
    // the file's when none does.
    const RackModule& shown() const { return status == RackStatus::Missing ? kept : live; }
};

// The live rack against the file, module by module: matched by line and
// address, then confirmed by model and module number, in the file's order;
// the extra modules after them. The cells compared are those a write sends.
QList<CheckedModule> checkRack(const Rack& rack, const QList<RackModule>& live, Language language);

// The record a rack module's image holds.
ModuleRecord rackRecord(const RackModule& module);

}  // namespace velmor
