#pragma once

#include "model/module_table.h"

#include <QString>

namespace velmor {

// Writes the first kStoredBytes of the record's image to path, atomically: on
// failure any old file there stays whole and nothing new is left behind.
// False means the file could not be written (msg::kOpenConfigFail).
[[nodiscard]] bool saveConfigFile(const QString& path, const ModuleRecord& record);

// Lays up to kStoredBytes of the file over the start of the record's image and
// takes the record back from it: a short file replaces only the fields it
// reaches. False means the file could not be opened or read; the record is then
// unchanged.
bool loadConfigFile(const QString& path, ModuleRecord& record);

}  // namespace velmor
