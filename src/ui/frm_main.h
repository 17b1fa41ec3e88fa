#pragma once

#include "link/module_search.h"
#include "link/operations.h"
#include "model/language.h"
#include "model/module_table.h"
#include "serial/com_port.h"
#include "serial/port_watcher.h"

#include <QMainWindow>

#include <memory>
#include <optional>

class QAction;
class QTabBar;

namespace velmor {

class PortSearchBar;

// The main window. It runs the flows of src/link and shows the module table;
// it decides nothing of its own. Message boxes go through `dialogs` (the
// window's own modal boxes when none is given).
class frmMain : public QMainWindow {
    Q_OBJECT
public:
    explicit frmMain(int languageMode, OperatorDialogs* dialogs = nullptr, QWidget* parent = nullptr);
    ~frmMain() override;

    // Start-up: the module table's defaults, the port list with its first
    // port selected, or the message that there is none.
    void Form_Load();

    void cmdSearch_Click();
    void TabStripCom_Click(int index);

    SetupState& state() { return state_; }

private:
    void buildMenus();
    void cmbComPort_Click(int number);
    void cmbModuleIndex_Click(int address);
    void showModuleTabs(int count);
    // A port came or went: applied at once when no flow runs, else when the
    // flow is over.
    void portsChanged(const QList<PortEntry>& ports);
    void applyPorts(const QList<PortEntry>& ports);
    // Runs an operator's command that talks to modules.
    template <typename Flow>
    void runFlow(Flow flow);
    // Locks the window's commands while an exchange runs.
    void EnableCommands(bool enabled);

    Language language_;
    SetupState state_;
    ComPort port_;
    std::unique_ptr<OperatorDialogs> ownDialogs_;
    OperatorDialogs& dialogs_;
    Operations operations_;
    QList<PortEntry> ports_;
    PortWatcher watcher_;
    bool flowRunning_ = false;
    std::optional<QList<PortEntry>> pendingPorts_;
    PortSearchBar* bar_;
    QTabBar* tabStripCom_;
    QAction* mnuOperateSearch_ = nullptr;
};

}  // namespace velmor
