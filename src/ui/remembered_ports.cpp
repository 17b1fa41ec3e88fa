#include "remembered_ports.h"

#include <QSettings>

namespace velmor {
namespace {

const QString kKey = QStringLiteral("networkPorts");

}  // namespace

QStringList rememberedNetworkPorts()
{
    return QSettings(QStringLiteral("velmor"), QStringLiteral("velmor")).value(kKey).toStringList();
}

void rememberNetworkPort(const QString& address)
{
    QSettings settings(QStringLiteral("velmor"), QStringLiteral("velmor"));
    QStringList ports = settings.value(kKey).toStringList();
    if (ports.contains(address))
        return;
    ports.append(address);
    settings.setValue(kKey, ports);
}

}  // namespace velmor
