#pragma once

#include <QByteArray>
#include <QString>

namespace velmor {

// Every file the programs write (configuration files, reports, exports, the
// simulator's state) goes through here: whole or not at all. The bytes go to
// a new file beside the target, unbuffered (so that a short write on a full
// disk shows at once), are synced, and only then take the target's name.
// Returns an empty text when the file was written; otherwise the system's
// reason ("No space left on device"), with any old file left whole and
// nothing new left behind.
[[nodiscard]] QString writeWholeFile(const QString& path, const QByteArray& bytes);

// A file is read from or written to a regular file. A FIFO would block for
// ever and a device would swallow or flood it, so both are refused before
// they are opened; a path where nothing is yet is fine for a write.
bool isRegularFileOrAbsent(const QString& path);

// Whether two paths name one file, by any path (a link, "..", another hard
// link). False when either is not there.
bool isSameFile(const QString& a, const QString& b);

}  // namespace velmor
