#include "network_port.h"

#include <QUrl>

namespace velmor {

std::optional<NetworkPort> networkPort(const QString& device)
{
    const QUrl url(device, QUrl::StrictMode);
    if (!url.isValid() || url.host().isEmpty() || url.port() <= 0)
        return std::nullopt;
    if (!url.path().isEmpty() || url.hasQuery() || url.hasFragment() || !url.userInfo().isEmpty())
        return std::nullopt;
    NetworkPort port;
    if (url.scheme() == QLatin1String("tcp"))
        port.kind = NetworkPort::Kind::Raw;
    else if (url.scheme() == QLatin1String("rfc2217"))
        port.kind = NetworkPort::Kind::Rfc2217;
    else
        return std::nullopt;
    port.host = url.host();
    port.port = static_cast<quint16>(url.port());
    return port;
}

bool namesNetworkScheme(const QString& device)
{
    return device.startsWith(QLatin1String("tcp:"), Qt::CaseInsensitive)
        || device.startsWith(QLatin1String("rfc2217:"), Qt::CaseInsensitive);
}

}  // namespace velmor
