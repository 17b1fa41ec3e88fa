#pragma once

#include "edit/setup_differences.h"
#include "link/operations.h"

namespace velmor {

// Sends one group of the current module's record; true when the module
// acknowledged it. The information goes out without the "Only one module."
// question: the flow that sends it has settled that already.
bool sendWriteGroup(Operations& operations, const WriteGroup& group);

// Every group a module of this record's model holds, in the order a whole
// write sends them.
QList<WriteGroup> everyWriteGroup(const ModuleRecord& record);

}  // namespace velmor
