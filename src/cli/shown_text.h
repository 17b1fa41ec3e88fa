#pragma once

#include <QString>
#include <QStringView>

namespace velmor::cli {

// Text from a module, a file or a folder as it may go to a terminal: control
// characters (C0, DEL and C1, line breaks and tabs included) become \xNN, so
// that no byte of theirs can move the cursor, clear the screen or break a
// line of the output apart.
QString shownText(QStringView text);

}  // namespace velmor::cli
