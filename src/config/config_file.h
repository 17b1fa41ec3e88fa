#pragma once

#include "model/module_table.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace velmor {

// A configuration file lives in a regular file. A FIFO would block the read
// forever and a device would swallow or flood it, so both are refused before
// they are opened; a path where nothing is yet is fine for a save.
bool isRegularFileOrAbsent(const QString& path);

// Writes the first kStoredBytes of the record's image to path, atomically: on
// failure any old file there stays whole and nothing new is left behind.
// False means the file could not be written (msg::kOpenConfigFail).
[[nodiscard]] bool saveConfigFile(const QString& path, const ModuleRecord& record);

// The first kStoredBytes + 1 bytes of a regular file: one more than a file
// of ours holds, so that a long file shows as such. Nothing when the file is
// missing, not a regular file or unreadable.
std::optional<QByteArray> readConfigBytes(const QString& path);

// Lays up to kStoredBytes of the file over the start of the record's image and
// takes the record back from it: a short file replaces only the fields it
// reaches. False means the file could not be opened or read; the record is then
// unchanged.
bool loadConfigFile(const QString& path, ModuleRecord& record);

}  // namespace velmor
