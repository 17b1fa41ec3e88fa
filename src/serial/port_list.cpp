#include "port_list.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSerialPortInfo>

#include <algorithm>

#if defined(Q_OS_UNIX)
#include <unistd.h>
#endif

namespace velmor {

QString virtualPortsDirectory()
{
    const QString overridden = qEnvironmentVariable("VELMOR_PORTS_DIR");
    if (!overridden.isEmpty())
        return overridden;
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (!runtime.isEmpty())
        return runtime + QStringLiteral("/velmor-ports");
#if defined(Q_OS_UNIX)
    return QDir::tempPath() + QStringLiteral("/velmor-ports-") + QString::number(::getuid());
#else
    return QDir::tempPath() + QStringLiteral("/velmor-ports");
#endif
}

QList<PortEntry> listPorts()
{
    QList<PortEntry> systemPorts;
    for (const QSerialPortInfo& info : QSerialPortInfo::availablePorts())
        systemPorts.append({info.portName(), 0, info.systemLocation()});
    return listPorts(systemPorts, virtualPortsDirectory());
}

QList<PortEntry> listPorts(QList<PortEntry> ports, const QString& virtualDir)
{
    std::sort(ports.begin(), ports.end(), [](const PortEntry& a, const PortEntry& b) { return a.name < b.name; });

    const QFileInfoList links = QDir(virtualDir).entryInfoList(QDir::System | QDir::Files | QDir::NoDotAndDotDot,
                                                               QDir::Name);
    for (const QFileInfo& link : links) {
        if (!link.exists())  // the simulator that published it has gone
            continue;
        ports.append({link.fileName(), 0, link.absoluteFilePath()});
    }

    static const QRegularExpression comName(QStringLiteral("^COM(\\d+)$"));
    for (qsizetype i = 0; i < ports.size(); ++i) {
        const QRegularExpressionMatch m = comName.match(ports[i].name);
        ports[i].number = m.hasMatch() ? m.captured(1).toInt() : static_cast<int>(i + 1);
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
