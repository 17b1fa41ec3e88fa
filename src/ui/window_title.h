#pragma once

#include "model/module_table.h"
#include "texts/language.h"

#include <QString>

namespace velmor {

// A module by its model and bus address: "TM-B8 at address 7".
QString moduleTitle(const ModuleRecord& module, Language language);

// The window's title: the module it shows (none before a search or a file
// gave one), the file it was last opened from or saved to, and the program's
// name, in that order ("TM-C16 at address 1 — bench.cfg — Velmor"); the
// program's name alone when there is neither.
QString windowTitle(const ModuleRecord* module, const QString& file, Language language);

}  // namespace velmor
