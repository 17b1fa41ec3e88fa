#pragma once

#include <QString>
#include <QStringList>

namespace velmor {

// The network lines the operator added, kept in the user's settings for the
// next start; the only setting the program keeps.
QStringList rememberedNetworkPorts();
// Adds `address` at the end unless it is there already.
void rememberNetworkPort(const QString& address);

}  // namespace velmor
