#pragma once

#include "language.h"

// Captions of the network lines and of searching every line at once.
namespace velmor::texts::network {

// The last entry of the port chooser.
inline constexpr Text kAddNetworkPort{"添加网络端口...", "Add network port..."};
inline constexpr Text kAddNetworkPortPrompt{"网络端口（tcp://主机:端口 或 rfc2217://主机:端口）：",
                                            "Network port (tcp://HOST:PORT or rfc2217://HOST:PORT):"};
inline constexpr Text kNotANetworkPort{"不是网络端口：请输入 tcp://主机:端口 或 rfc2217://主机:端口。",
                                       "Not a network port: give tcp://HOST:PORT or rfc2217://HOST:PORT."};
inline constexpr Text kMnuOperateSearchAll{"同时搜索所有线路(&L)", "Search all &lines at once"};

}  // namespace velmor::texts::network
