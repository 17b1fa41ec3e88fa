#include "port_argument.h"

#include <QFileInfo>
#include <QSet>

namespace velmor::cli {

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
