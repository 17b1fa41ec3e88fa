#include "port_list.h"

#include "published_port.h"
#include "user_folder.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>
#include <QSerialPortInfo>

#include <algorithm>


namespace velmor {

QString virtualPortsDirectory()
{
    const QString overridden = qEnvironmentVariable("VELMOR_PORTS_DIR");
    if (!overridden.isEmpty())
        return overridden;
    // The same for the program and the simulator of one user.
    return userRuntimeFolder(QStringLiteral("velmor-ports"));
}

bool systemPortListed(const QString& name)
{
    const QString wanted = qEnvironmentVariable("VELMOR_SYSTEM_PORTS").trimmed();
    if (wanted.isEmpty())
        return true;
    for (const QString& pattern : wanted.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        const QRegularExpression re(QRegularExpression::wildcardToRegularExpression(pattern.trimmed()));
        if (pattern.trimmed() != QLatin1String("none") && re.match(name).hasMatch())
            return true;
    }
    return false;
}

QList<PortEntry> listPorts()
{
    QList<PortEntry> systemPorts;
    for (const QSerialPortInfo& info : QSerialPortInfo::availablePorts())
        if (systemPortListed(info.portName()))
            systemPorts.append({info.portName(), 0, info.systemLocation()});
    return listPorts(systemPorts, virtualPortsDirectory());
}

QList<PortEntry> listPorts(QList<PortEntry> ports, const QString& virtualDir)
{
    std::sort(ports.begin(), ports.end(), [](const PortEntry& a, const PortEntry& b) { return a.name < b.name; });

    const QFileInfoList links = QDir(virtualDir).entryInfoList(QDir::System | QDir::Files | QDir::NoDotAndDotDot,
                                                               QDir::Name);
    for (const QFileInfo& link : links) {
        // Only the links themselves, whose pseudo-terminal is there and whose
        // simulator still runs: a link left by a killed one may lead to a
        // pseudo-terminal that another program has since been given.
        if (!link.isSymLink() || !link.exists() || !publishedPortAlive(link.absoluteFilePath()))
            continue;
        ports.append({link.fileName(), 0, link.absoluteFilePath()});
    }

    // COMn keeps its n; any other port takes its position in the list, or the
    // next number no port has yet, so that a number names one port only.
    static const QRegularExpression comName(QStringLiteral("^COM(\\d+)$"));
    QSet<int> taken;
    for (PortEntry& port : ports)
        port.number = 0;
    for (PortEntry& port : ports) {
        const QRegularExpressionMatch m = comName.match(port.name);
        if (m.hasMatch() && !taken.contains(m.captured(1).toInt())) {
            port.number = m.captured(1).toInt();
            taken.insert(port.number);
        }
    }
    for (qsizetype i = 0; i < ports.size(); ++i) {
        if (ports[i].number != 0)
            continue;
        int number = static_cast<int>(i + 1);
        while (taken.contains(number))
            ++number;
        ports[i].number = number;
        taken.insert(number);
    }
    return ports;
}

int nextPortNumber(const QList<PortEntry>& ports)
{
    int next = 1;
    for (const PortEntry& port : ports)
        next = std::max(next, port.number + 1);
    return next;
}

QList<PortEntry> withNetworkPorts(QList<PortEntry> ports, const QStringList& addresses)
{
    for (const QString& address : addresses) {
        const bool listed = std::any_of(ports.begin(), ports.end(), [&](const PortEntry& p) { return p.device == address; });
        if (!listed)
            ports.append(PortEntry{address, nextPortNumber(ports), address});
    }
    return ports;
}

const PortEntry* findPort(const QList<PortEntry>& ports, int number)
{
    for (const PortEntry& port : ports)
        if (port.number == number)
            return &port;
    return nullptr;
}

}  // namespace velmor
