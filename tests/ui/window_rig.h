#pragma once

#include "child_control.h"
#include "link_rig.h"
#include "serial/port_list.h"
#include "support/sim_line.h"
#include "ui/file_chooser.h"
#include "ui/frm_main.h"

#include <QAction>
#include <QComboBox>
#include <QTabBar>
#include <QTemporaryDir>
#include <QWidget>

#include <memory>

namespace velmor::testing {

inline constexpr int kChinese = 1;
inline constexpr int kEnglish = 2;

// The window with a port and a module's address chosen, as an operator picks
// them in the two lists.
inline void chooseModuleAt(frmMain& window, const QString& portName, int address)
{
    auto* ports = child<QComboBox>(window, QStringLiteral("cmbComPort"));
    const int port = ports->findText(portName);
    ports->setCurrentIndex(port);
    emit ports->activated(port);
    auto* addresses = child<QComboBox>(window, QStringLiteral("cmbModuleIndex"));
    const int index = addresses->findData(address);
    addresses->setCurrentIndex(index);
    emit addresses->activated(index);
}

// The module tabs' texts, left to right ("1 TM-C16", ...).
inline QStringList moduleTabTexts(frmMain& window)
{
    auto* tabs = child<QTabBar>(window, "TabStripCom");
    QStringList texts;
    for (int i = 0; i < tabs->count(); ++i)
        texts << tabs->tabText(i);
    return texts;
}

inline void chooseModule(frmMain& window, const SimLine& line, int address)
{
    chooseModuleAt(window, line.portName(), address);
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
// Tests list none of the machine's ports: when the test has published no line
// of its own, the rig publishes one with nothing on it (SIM0), as a machine's
// own unused port, so that the window does not start with "No COM port in
// the computer.".
struct WindowRig {
    explicit WindowRig(int languageMode = kEnglish)
        : quietLine(listPorts().isEmpty() ? std::make_unique<SimLine>(QList<sim::ModuleAt>{}, Pacing::Fast,
                                                                      QStringLiteral("SIM0"))
                                          : nullptr)
        , window(languageMode, &dialogs, &files)
    {
        window.setConfigPath(folder.filePath(QStringLiteral("TestConfig.cfg")));
        window.show();
        window.Form_Load();
    }

    QTemporaryDir folder;
    std::unique_ptr<SimLine> quietLine;
    RecordingDialogs dialogs;
    ScriptedFiles files;
    frmMain window;
};

}  // namespace velmor::testing
