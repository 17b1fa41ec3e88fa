#pragma once

#include "module_table.h"

namespace velmor {

// Picks the gain of channel index `channel` from its reference values: the
// largest step whose full scale still reaches `fullRange`, searched from the
// largest step down; 0 when no step does. Writes `gain` only.
void chooseGain(ModuleRecord& module, int channel);

}  // namespace velmor
