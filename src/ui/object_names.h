#pragma once

#include <QString>

namespace velmor {

// The object name of element i of a control array: "NAME[i]".
inline QString arrayName(const char* name, int i)
{
    return QStringLiteral("%1[%2]").arg(QLatin1String(name)).arg(i);
}

}  // namespace velmor
