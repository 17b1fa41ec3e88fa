#pragma once

#include <QStringList>

namespace velmor::cli {

// velmor-cli [--json] [--trace] [--log FILE] [--lang zh|en] COMMAND [options];
// returns the exit code.
int runCli(const QStringList& arguments);

// Whether the command in `arguments` lays out text (a report's PDF), which
// needs the fonts that only a QGuiApplication reaches.
bool needsFonts(const QStringList& arguments);

}  // namespace velmor::cli
