#pragma once

#include "frame_display.h"
#include "grid_editing.h"
#include "history/history_entry.h"
#include "history/history_target.h"
#include "link/concurrent_search.h"
#include "link/module_search.h"
#include "link/operations.h"
#include "link/port_lines.h"
#include "model/module_table.h"
#include "module_view.h"
#include "rack/rack_check.h"
#include "rack_results_dialog.h"
#include "serial/com_port.h"
#include "serial/port_watcher.h"
#include "texts/language.h"

#include <QMainWindow>

#include <functional>
#include <memory>

class QStackedWidget;
class QTabBar;

namespace velmor {

class AdjustPanel;
class ChannelSetupPanel;
class FileChooser;
class HistoryKeeper;
class FrameLogPane;
class MainMenus;
class ModuleInfoPanel;
class OperationPanel;
class PortSearchBar;
class UnsentEdits;

// The main window. It runs the flows of src/link and shows the module table;
// it decides nothing of its own. Message boxes go through `dialogs` (the
// window's own modal boxes when none is given).
class frmMain : public QMainWindow {
    Q_OBJECT
public:
    // `dialogs` and `files` default to the window's own message boxes and the
    // system's file dialogs.
    explicit frmMain(int languageMode, OperatorDialogs* dialogs = nullptr, FileChooser* files = nullptr,
                     QWidget* parent = nullptr);
    ~frmMain() override;

    // Start-up: the module table's defaults, the port list with its first
    // port selected, or the message that there is none.
    void Form_Load();
    // Once shown: the size and place the last run left (within the screens
    // there are now), or at a first start a size that shows the whole
    // channel grid within the window's screen.
    void placeOnScreen();

    void cmdSearch_Click();
    // "Search all lines at once": the same result, each line searched in parallel.
    void cmdSearchAll_Click();
    void TabStripCom_Click(int index);
    // Shows Frame1, Frame2 or Frame3 (index 0, 1, 2).
    void TabStrip1_Click(int index);

    void MnuFile_Open_Click();
    // Opens a configuration file as File > Open does, with its messages.
    void openConfigFile(const QString& path);
    // An entry of File > Recent Files: opened, or taken off the list with a
    // message when the file is gone.
    void openRecentFile(const QString& path);
    void MnuFile_Save_Click();
    void MnuFile_SaveAs_Click();
    // The current module's setup report, as PDF or HTML by the file's suffix.
    void MnuFile_ExportReport_Click();

    SetupState& state() { return state_; }
    // The file that Save, Exit and closing the window write.
    QString configPath() const { return configPath_; }
    void setConfigPath(const QString& path) { configPath_ = path; }
    // The file the record was last opened from or saved to; empty before any.
    QString documentPath() const { return documentPath_; }
    // From now on what the flows do and the files used are kept in this
    // history (none before: a window made in a test keeps nothing).
    void useHistory(const HistoryTarget& target);
    // Waits until what was handed to the history has been written or queued.
    void settleHistory();
    // File > History...: the current module's history, to compare and restore.
    void MnuFile_History_Click();
    // Writes an entry's setup to the current module, after a confirmation
    // that lists what changes: only the groups that differ from what the
    // module holds, through the normal write flow; an entry of another model
    // is refused.
    void restoreEntry(const HistoryEntry& entry);
    // File > Rack: every module on every line at once, saved as a rack file,
    // checked against one, restored to one (only the groups that differ), or
    // reported as one document. Each shows its results window.
    void MnuFile_RackSave_Click();
    void MnuFile_RackCheck_Click();
    void MnuFile_RackRestore_Click();
    void MnuFile_RackReport_Click();

protected:
    // Closing saves as File > Save does; during a flow it waits for the
    // exchange in flight to end and sends nothing more.
    void closeEvent(QCloseEvent* event) override;
    // One file dropped on the window opens as File > Open does.
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void wireMenus();
    void save(const QString& path);
    QWidget* buildFrames();
    void wirePanels();
    // The request's frame text, its group's tab, and its frame locked.
    void requestStarted(const Request& request);
    void requestEnded(const Request& request, bool portOpened);
    // TabStrip1 and the frames of the flow's requests back, once no flow runs.
    void unlockPanels();
    // An accepted reply: its frame rebuilt from the record under its label,
    // and everything that shows the module refreshed.
    void replyStored(const Request& request, const QByteArray& frame);
    // The panel that shows a block: the balance is the channel setup's.
    OperationPanel* panelOf(Block block) const;
    // The three frames and the Balance, Read and Send entries, after a search.
    void operationsEnabled(bool enabled);
    void cmbComPort_Click(int number);
    void cmbModuleIndex_Click(int address);
    void showModuleTabs(int count);
    // The search behind cmdSearch or "Search all lines at once", as a flow
    // over `ports`; a rack's search hands `every` module it found.
    template <typename Search>
    void runSearch(int (Search::*body)(const QList<PortEntry>&, int), const QList<PortEntry>& ports,
                   const QString& done, QList<ConcurrentSearch::Found>* every = nullptr);
    QString searchDone() const;
    // Every line of `ports` searched at once, as a flow, and every module it found.
    QList<ConcurrentSearch::Found> searchRack(const QList<PortEntry>& ports, const QString& done);
    // A rack file read and its lines searched and compared with it, as a
    // flow; nothing when the file is refused or a line is not listed (the
    // operator was told).
    std::optional<QList<CheckedModule>> checkRackFile(const QString& path, QList<PortEntry>& ports);
    // What a rack flow did, in the results window.
    void showRackResults(const QString& title, const QString& summary, const QList<RackResultRow>& rows);
    // "Add network port...": asks for the address, remembers it and selects it.
    void addNetworkPort();
    // The machine's ports, with the remembered network lines after them. A
    // port came or went: the watcher pauses while a flow runs, so this comes
    // only between flows.
    void applyPorts(const QList<PortEntry>& systemPorts);
    // Runs an operator's command that talks to modules; then the status bar
    // says what was `done` and what it took, unless the flow gave a notice.
    // The history keeps an entry of `kept` when it worked, its failure when
    // an exchange failed, unless `keepsItsOwn` (a search keeps its own).
    void runFlow(const QString& done, const std::function<void()>& flow, std::optional<EntryKind> kept = std::nullopt,
                 bool keepsItsOwn = false);
    // An entry into the history; what the operator must know of it, in the status bar.
    void keep(const HistoryEntry& entry);
    // The line of the current module, as listed.
    QString currentLine() const;
    // What a command did to the current module ("Read everything of %1").
    QString did(const Text& done) const;
    QString didBeckon() const;
    // A frame sent, counted for the status bar's summary.
    void countFrame(const FrameRow& row);
    // Locks the window's commands while an exchange runs.
    void EnableCommands(bool enabled);
    // A notice in the status bar, beside what the window's boxes say: it
    // stays until the next one.
    void notify(const QString& text);
    // After a search: which modules were not read wholly, in the status bar
    // and in their tabs' tool tips.
    void markUnreadModules(const QList<int>& unread);
    // The search in the history: its lines and modules, and a read of each
    // module it read wholly.
    void keepSearch(const QList<int>& unread);
    // The title names the module shown and the file of the record.
    void showTitle();
    // The file last opened or saved: the title's, and the first of the recent files.
    void fileInUse(const QString& path);

    // The language the window was started in: the state holds it, once.
    Language language() const { return languageOf(state_.languageMode); }

    SetupState state_;
    ComPort port_;
    std::unique_ptr<OperatorDialogs> ownDialogs_;
    OperatorDialogs& dialogs_;
    std::unique_ptr<FileChooser> ownFiles_;
    FileChooser& files_;
    QString configPath_;
    QString documentPath_;
    // The file the current record was opened from, until a flow or another
    // module's tab takes its place: the report's source.
    QString openedFrom_;
    // The size a first start gave the window, while the operator keeps it: a
    // search that widens the grid's columns grows the window to show them.
    QSize fittedSize_;
    bool closePending_ = false;
    Operations operations_;
    PortLines lines_;
    PortWatcher watcher_;
    bool flowRunning_ = false;
    bool noticed_ = false;  // a notice went to the status bar since the flow began
    int framesSent_ = 0;
    PortSearchBar* bar_;
    QTabBar* tabStripCom_;
    QTabBar* tabStrip1_;
    QStackedWidget* frames_;
    ChannelSetupPanel* frame1_;
    AdjustPanel* frame2_;
    ModuleInfoPanel* frame3_;
    MainMenus* menus_;
    FrameLogPane* frameLog_;
    FrameDisplay display_;
    ModuleView view_;
    GridEditing editing_;
    std::unique_ptr<HistoryKeeper> history_;
    HistoryTarget historyTarget_;
    UnsentEdits* unsent_;
    bool operationsOn_ = true;
    QList<OperationPanel*> lockedPanels_;
};

}  // namespace velmor
