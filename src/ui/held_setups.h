#pragma once

#include "model/module_table.h"
#include "protocol/requests.h"

#include <memory>

namespace velmor {

// What each module of the table holds, as far as its replies said: every
// accepted reply, to a read or to a write, carries the module's own memory of
// its block. An edit shown in the window and not in here has not been sent.
class HeldSetups {
public:
    HeldSetups();

    // Every record as the table has it now: at start, and after a search has
    // read the modules.
    void takeAll(const ModuleTable& table);
    // One record as it stands: a configuration file was opened into it.
    void take(int slot, const ModuleRecord& record);
    // A reply accepted for the module in `slot`, stored as the record stored it.
    void replyStored(int slot, const Request& request, const QByteArray& frame);

    const ModuleRecord& of(int slot) const { return table_->at(static_cast<size_t>(slot)); }

private:
    std::unique_ptr<ModuleTable> table_;
};

}  // namespace velmor
