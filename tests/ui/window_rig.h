#pragma once

#include "link_rig.h"
#include "ui/frm_main.h"

#include <QAction>
#include <QWidget>

namespace velmor::testing {

inline constexpr int kChinese = 1;
inline constexpr int kEnglish = 2;

// The control of that object name, or the test ends: a missing control is a
// defect of the window, not of the test.
template <typename T>
T* child(QWidget& window, const QString& name)
{
    T* found = window.findChild<T*>(name);
    if (!found)
        qFatal("no %s", qPrintable(name));
    return found;
}

template <typename T>
T* child(QWidget& window, const char* name)
{
    return child<T>(window, QString::fromLatin1(name));
}

// The main window shown and started, its message boxes recorded.
struct WindowRig {
    explicit WindowRig(int languageMode = kEnglish) : window(languageMode, &dialogs)
    {
        window.show();
        window.Form_Load();
    }

    RecordingDialogs dialogs;
    frmMain window;
};

}  // namespace velmor::testing
