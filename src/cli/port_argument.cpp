#include "port_argument.h"

#include "serial/network_port.h"

#include <QFileInfo>
#include <QSet>

#include <algorithm>

namespace velmor::cli {

std::optional<PortEntry> resolvePort(const QString& argument, QList<PortEntry>& ports)
{
    bool isNumber = false;
    const int number = argument.toInt(&isNumber);
    for (const PortEntry& port : ports) {
        if ((isNumber && port.number == number) || port.name == argument || port.device == argument)
            return port;
    }
    // A network line is named by its address, which says more than its last part.
    const bool network = isNetworkPort(argument);
    if (!network && !argument.startsWith(QLatin1Char('/')) && !QFileInfo(argument).isAbsolute())
        return std::nullopt;
    int next = 1;
    for (const PortEntry& port : ports)
        next = std::max(next, port.number + 1);
    const PortEntry added{network ? argument : QFileInfo(argument).fileName(), next, argument};
    ports.append(added);
    return added;
}

QList<PortEntry> distinctPorts(const QList<PortEntry>& ports)
{
    QList<PortEntry> out;
    QSet<QString> seen;
    for (const PortEntry& port : ports) {
        const QString real = QFileInfo(port.device).canonicalFilePath();
        const QString key = real.isEmpty() ? port.device : real;
        if (!seen.contains(key)) {
            seen.insert(key);
            out.append(port);
        }
    }
    return out;
}

}  // namespace velmor::cli
