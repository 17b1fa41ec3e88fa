#pragma once

#include <QString>
#include <QWidget>

namespace velmor::testing {

// The control of that object name, or the test ends: a missing control is a
// defect of the window or dialog, not of the test.
template <typename T>
T* child(QWidget& parent, const QString& name)
{
    T* found = parent.findChild<T*>(name);
    if (!found)
        qFatal("no %s", qPrintable(name));
    return found;
}

template <typename T>
T* child(QWidget& parent, const char* name)
{
    return child<T>(parent, QString::fromLatin1(name));
}

}  // namespace velmor::testing
