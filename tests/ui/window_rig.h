#pragma once

#include "link_rig.h"
#include "ui/file_chooser.h"
#include "ui/frm_main.h"

#include <QAction>
#include <QComboBox>
#include <QTemporaryDir>
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

// The window with the line's port and the module's address chosen, as an
// operator picks them in the two lists.
inline void chooseModule(frmMain& window, const SimLine& line, int address)
{
    auto* ports = child<QComboBox>(window, QStringLiteral("cmbComPort"));
    const int port = ports->findText(line.portName());
    ports->setCurrentIndex(port);
    emit ports->activated(port);
    auto* addresses = child<QComboBox>(window, QStringLiteral("cmbModuleIndex"));
    const int index = addresses->findData(address);
    addresses->setCurrentIndex(index);
    emit addresses->activated(index);
}

// File dialogs answered with the names the test sets; empty is Cancel.
struct ScriptedFiles : FileChooser {
    QString openFileName() override { return openAnswer; }
    QString saveFileName() override { return saveAnswer; }
    // The report's dialog answers as the save dialog does, and keeps the
    // types it was offered.
    QString reportFileName(const QString& pdfFilter, const QString& htmlFilter) override
    {
        reportFilters = {pdfFilter, htmlFilter};
        return saveAnswer;
    }
    QString openAnswer;
    QString saveAnswer;
    QStringList reportFilters;
};

// The main window shown and started, its message boxes recorded, its file
// dialogs scripted and its default configuration file in a folder of its own.
struct WindowRig {
    explicit WindowRig(int languageMode = kEnglish) : window(languageMode, &dialogs, &files)
    {
        window.setConfigPath(folder.filePath(QStringLiteral("TestConfig.cfg")));
        window.show();
        window.Form_Load();
    }

    QTemporaryDir folder;
    RecordingDialogs dialogs;
    ScriptedFiles files;
    frmMain window;
};

}  // namespace velmor::testing
