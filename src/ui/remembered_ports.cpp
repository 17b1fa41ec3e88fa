#include "remembered_ports.h"

#include "operator_settings.h"

namespace velmor {
namespace {

const QString kKey = QStringLiteral("networkPorts");

}  // namespace

QStringList rememberedNetworkPorts()
{
    return OperatorSettings().value(kKey).toStringList();
}

void rememberNetworkPort(const QString& address)
{
    OperatorSettings settings;
    QStringList ports = settings.value(kKey).toStringList();
    if (ports.contains(address))
        return;
    ports.append(address);
    settings.setValue(kKey, ports);
}

}  // namespace velmor
