#pragma once

#include "serial/port_list.h"

#include <optional>

namespace velmor::cli {

// The port a --port argument names: a number as listed, a name as listed, a
// device path, or a network line (tcp://HOST:PORT, rfc2217://HOST:PORT). A
// path or a network line that is not listed is added to `ports` so that the
// port code can open it by its number.
std::optional<PortEntry> resolvePort(const QString& argument, QList<PortEntry>& ports);

// The ports in their order, each device once: a port given twice, or by its
// name and by its path, is one line.
QList<PortEntry> distinctPorts(const QList<PortEntry>& ports);

}  // namespace velmor::cli
