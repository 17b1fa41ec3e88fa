#include "port_lines.h"

#include "serial/network_port.h"

#include <QFileInfo>

#include <algorithm>

namespace velmor {

void PortLines::update(const QList<PortEntry>& systemPorts, const QStringList& networkAddresses, ModuleTable& table)
{
    const QList<PortEntry> ports = withNetworkPorts(systemPorts, networkAddresses);
    for (ModuleRecord& module : table) {
        const PortEntry* before = find(module.portNumber);
        const auto after = before ? std::find_if(ports.begin(), ports.end(),
                                                 [&](const PortEntry& p) { return p.device == before->device; })
                                  : ports.end();
        if (after != ports.end())
            module.portNumber = static_cast<qint16>(after->number);
    }
    ports_ = ports;
}

std::optional<PortEntry> PortLines::resolve(const QString& argument)
{
    bool isNumber = false;
    const int number = argument.toInt(&isNumber);
    for (const PortEntry& port : ports_) {
        if ((isNumber && port.number == number) || port.name == argument || port.device == argument)
            return port;
    }
    // A network line is named by its address, which says more than its last part.
    const bool network = isNetworkPort(argument);
    if (!network && !argument.startsWith(QLatin1Char('/')) && !QFileInfo(argument).isAbsolute())
        return std::nullopt;
    const PortEntry added{network ? argument : QFileInfo(argument).fileName(), nextPortNumber(ports_), argument};
    ports_.append(added);
    return added;
}

}  // namespace velmor
