#pragma once

#include "model/module_table.h"
#include "serial/port_list.h"

#include <QStringList>

#include <optional>

namespace velmor {

// The lines a front end offers, each numbered by its place: the machine's
// ports, then network lines. Both front ends keep theirs here; the port code
// opens a line by its number.
class PortLines {
public:
    const QList<PortEntry>& ports() const { return ports_; }
    bool isEmpty() const { return ports_.isEmpty(); }
    // The line listed under `number`, or null.
    const PortEntry* find(int number) const { return findPort(ports_, number); }

    // The machine's ports, then the network lines at `networkAddresses`. A
    // line's number is its place, which a new port may shift: the modules of
    // `table` keep their line by its device, not by its number.
    void update(const QList<PortEntry>& systemPorts, const QStringList& networkAddresses, ModuleTable& table);

    // The line that `argument` names: a number or a name as listed, a device
    // path, or a network line (tcp://HOST:PORT, rfc2217://HOST:PORT). A path or
    // a network line that is not listed joins the end, so that the port code
    // can open it by its number. Empty when it names no line.
    std::optional<PortEntry> resolve(const QString& argument);

private:
    QList<PortEntry> ports_;
};

}  // namespace velmor
