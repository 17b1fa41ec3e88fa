#include "arguments.h"

#include <QCoreApplication>

namespace velmor::texts::arguments {

QString versionLine()
{
    return QStringLiteral("%1 %2\n").arg(QCoreApplication::applicationName(), QCoreApplication::applicationVersion());
}

}  // namespace velmor::texts::arguments
