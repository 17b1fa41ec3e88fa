#pragma once

#include "model/module_table.h"

namespace velmor::sim {

// A module's memory as it leaves the factory: the same (address, model, seed)
// always gives the same record. Name and channel count come from the model
// table, the capability codes from a per-model table of plausible codes, and
// every value of the module's channels is one its capabilities offer. Channels
// beyond the model's count keep the program's start values. modelCode is 0..8.
ModuleRecord simulatedModule(int address, int modelCode, quint32 seed);

// The balance value a balance leaves in a channel. It depends on the value
// before, so that every balance visibly moves it, and on nothing random.
qint32 balancedValue(quint32 seed, int address, int channel, qint32 before);

}  // namespace velmor::sim
