#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace velmor {

// One entry of the port chooser.
struct PortEntry {
    QString name;    // as listed: COM3, ttyUSB0, SIM1
    int number = 0;  // n of a COMn name, else the 1-based position in the list
    QString device;  // what is opened: a device path, a published link or a network address

    bool operator==(const PortEntry&) const = default;
};

// Where a running simulator publishes its ports as symbolic links:
// VELMOR_PORTS_DIR if set, else $XDG_RUNTIME_DIR/velmor-ports, else a per-user
// folder in the temporary directory.
QString virtualPortsDirectory();

// Which of the machine's own serial ports are listed, from VELMOR_SYSTEM_PORTS:
// unset or empty, all of them; "none", none; else a comma-separated list of
// name patterns (ttyUSB*,ttyACM*), for a machine whose built-in ports lead
// nowhere.
bool systemPortListed(const QString& name);

// The system's serial ports in a stable order, then the published virtual
// ports whose simulator still runs, numbered as above.
QList<PortEntry> listPorts();
// systemPorts: name and device of each system port; numbers are given here.
QList<PortEntry> listPorts(QList<PortEntry> systemPorts, const QString& virtualDir);

// The number a port added after `ports` takes: one past the highest.
int nextPortNumber(const QList<PortEntry>& ports);
// `ports`, then the network lines `addresses` not listed yet, each named by
// its address and numbered after the ports before it.
QList<PortEntry> withNetworkPorts(QList<PortEntry> ports, const QStringList& addresses);

// The entry numbered n, or null.
const PortEntry* findPort(const QList<PortEntry>& ports, int number);

}  // namespace velmor
