#include "user_folder.h"

#include <QDir>

#if defined(Q_OS_UNIX)
#include <unistd.h>
#endif

namespace velmor {

QString userRuntimeFolder(const QString& name)
{
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (!runtime.isEmpty())
        return runtime + QLatin1Char('/') + name;
#if defined(Q_OS_UNIX)
    return QDir::tempPath() + QLatin1Char('/') + name + QLatin1Char('-') + QString::number(::getuid());
#else
    return QDir::tempPath() + QLatin1Char('/') + name;
#endif
}

}  // namespace velmor
