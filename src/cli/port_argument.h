#pragma once

#include "serial/port_list.h"

namespace velmor::cli {

// The ports in their order, each device once: a port given twice, or by its
// name and by its path, is one line.
QList<PortEntry> distinctPorts(const QList<PortEntry>& ports);

}  // namespace velmor::cli
