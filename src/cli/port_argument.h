#pragma once

#include "serial/port_list.h"

#include <optional>

namespace velmor::cli {

// The port a --port argument names: a number as listed, a name as listed, or
// a device path. A path that is not listed is added to `ports` so that the
// port code can open it by its number.
std::optional<PortEntry> resolvePort(const QString& argument, QList<PortEntry>& ports);

}  // namespace velmor::cli
