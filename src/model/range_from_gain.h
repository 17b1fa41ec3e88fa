#pragma once

#include "module_table.h"

#include <QString>

namespace velmor {

// Works the range of channel index `channel` out of its gain and excitation
// texts read as numbers ("100uA" counts as 100, taken literally on purpose),
// stores it into `fullRange` and returns the range cell's text, formatted from
// the value before it was narrowed to float.
QString applyRangeFromGain(ModuleRecord& module, int channel);

}  // namespace velmor
