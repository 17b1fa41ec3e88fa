#pragma once

#include <QStringList>

namespace velmor::cli {

// velmor-cli [--json] [--trace] [--log FILE] [--lang zh|en] COMMAND [options];
// returns the exit code.
int runCli(const QStringList& arguments);

}  // namespace velmor::cli
