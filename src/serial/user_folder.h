#pragma once

#include <QString>

namespace velmor {

// A folder that the programs of one user share while they run (published
// ports, line locks), and that differs between users:
// $XDG_RUNTIME_DIR/NAME, else NAME-UID in the temporary folder.
QString userRuntimeFolder(const QString& name);

}  // namespace velmor
