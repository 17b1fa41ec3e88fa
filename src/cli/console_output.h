#pragma once

#include <QByteArray>
#include <QString>

namespace velmor::cli {

// Standard output, checked: every write and its flush are looked at, and the
// first failure (a full disk, /dev/full, a closed output) is kept with the
// system's reason, so that the command can end with exit 4 and say why
// instead of ending well with nothing written.
void printOut(const QByteArray& bytes);
// Flushes what is still buffered; the reason standard output failed, or
// empty while it has not.
QString outputFailure();

}  // namespace velmor::cli
