#pragma once

#include "files/whole_file.h"
#include "model/module_table.h"
#include "texts/language.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace velmor {

// Writes the first kStoredBytes of the record's image to path, whole or not at
// all (writeWholeFile). False means the file could not be written
// (texts::message::kOpenConfigFail); `reason` then holds the system's reason, or nothing
// when the path is not a regular file (a FIFO, a device), which is refused
// before anything is opened.
[[nodiscard]] bool saveConfigFile(const QString& path, const ModuleRecord& record, QString* reason = nullptr);

// The first kStoredBytes + 1 bytes of a regular file: one more than a file
// of ours holds, so that a long file shows as such. Nothing when the file is
// missing, not a regular file or unreadable; `reason` then says why (the
// system's reason, empty for a file that is not regular).
std::optional<QByteArray> readConfigBytes(const QString& path, QString* reason = nullptr);

// Lays up to kStoredBytes of the file over the start of the record's image and
// takes the record back from it: a short file replaces only the fields it
// reaches. False means the file could not be opened or read; the record is then
// unchanged and `reason` says why (empty for a file that is not regular).
// `size`, when given, receives the bytes the file held (at most kStoredBytes + 1).
bool loadConfigFile(const QString& path, ModuleRecord& record, QString* reason = nullptr, qsizetype* size = nullptr);

// What Open says beside its work of a file shorter than a module's record,
// which replaced only the start of the record ("... channels 8-16 kept their
// values"); empty for a file of kStoredBytes or more.
QString shortFileNotice(const QString& path, qsizetype size, Language language);

}  // namespace velmor
