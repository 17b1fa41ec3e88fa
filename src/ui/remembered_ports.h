#pragma once

#include <QString>
#include <QStringList>

namespace velmor {

// The network lines the operator added, kept in the operator's settings for
// the next start.
QStringList rememberedNetworkPorts();
// Adds `address` at the end unless it is there already.
void rememberNetworkPort(const QString& address);

}  // namespace velmor
