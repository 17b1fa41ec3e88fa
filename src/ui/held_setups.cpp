#include "held_setups.h"

#include "protocol/replies.h"

namespace velmor {

HeldSetups::HeldSetups()
    : table_(std::make_unique<ModuleTable>())
{
}

void HeldSetups::takeAll(const ModuleTable& table) { *table_ = table; }

void HeldSetups::take(int slot, const ModuleRecord& record) { table_->at(static_cast<size_t>(slot)) = record; }

void HeldSetups::replyStored(int slot, const Request& request, const QByteArray& frame)
{
    // The record took this reply already, so it passes the same checks here.
    int status = 0;
    parseReply(request.kind, frame, request.command, table_->at(static_cast<size_t>(slot)), status);
}

}  // namespace velmor
