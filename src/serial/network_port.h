#pragma once

#include <QString>

#include <optional>

namespace velmor {

// A line reached through a serial server on the network.
struct NetworkPort {
    enum class Kind {
        Raw,      // tcp://HOST:PORT, the server holds the line at 4800 8N1
        Rfc2217,  // rfc2217://HOST:PORT, telnet with the com-port option
    };

    Kind kind = Kind::Raw;
    QString host;
    quint16 port = 0;

    bool operator==(const NetworkPort&) const = default;
};

// The network line a port name stands for: tcp:// or rfc2217:// with a host
// and a port and nothing else. Anything else is no network port.
std::optional<NetworkPort> networkPort(const QString& device);
inline bool isNetworkPort(const QString& device) { return networkPort(device).has_value(); }
// Begins as a network line's name does (tcp: or rfc2217:), whether or not the
// rest is right: such a name is a malformed address, never a device.
bool namesNetworkScheme(const QString& device);

}  // namespace velmor
