// frmMain's wiring: the menus' entries and the panels' buttons to the flows
// they run, each with what the status bar says it did.

#include "frm_main.h"

#include "frame_log_pane.h"
#include "frm_about.h"
#include "help_manual.h"
#include "language_menu.h"
#include "main_menus.h"
#include "module_view.h"
#include "operation_panels.h"
#include "texts/desktop.h"
#include "texts/grid.h"

#include <QMenu>

namespace velmor {

void frmMain::wireMenus()
{
    connect(menus_, &MainMenus::open, this, &frmMain::MnuFile_Open_Click);
    connect(menus_, &MainMenus::openRecent, this, &frmMain::openRecentFile);
    connect(menus_, &MainMenus::save, this, &frmMain::MnuFile_Save_Click);
    connect(menus_, &MainMenus::saveAs, this, &frmMain::MnuFile_SaveAs_Click);
    connect(menus_, &MainMenus::exportReport, this, &frmMain::MnuFile_ExportReport_Click);
    connect(menus_, &MainMenus::history, this, &frmMain::MnuFile_History_Click);
    connect(menus_, &MainMenus::rackSave, this, &frmMain::MnuFile_RackSave_Click);
    connect(menus_, &MainMenus::rackCheck, this, &frmMain::MnuFile_RackCheck_Click);
    connect(menus_, &MainMenus::rackRestore, this, &frmMain::MnuFile_RackRestore_Click);
    connect(menus_, &MainMenus::rackReport, this, &frmMain::MnuFile_RackReport_Click);
    connect(menus_, &MainMenus::exit, this, &QWidget::close);
    connect(menus_, &MainMenus::search, this, &frmMain::cmdSearch_Click);
    connect(menus_, &MainMenus::searchAll, this, &frmMain::cmdSearchAll_Click);
    Operations& ops = operations_;
    using namespace texts::desktop;
    connect(menus_, &MainMenus::send, this,
            [this, &ops] { runFlow(did(kDidWriteEverything), [&ops] { ops.writeEverything(); }, EntryKind::Write); });
    connect(menus_, &MainMenus::read, this,
            [this, &ops] { runFlow(did(kDidReadEverything), [&ops] { ops.readEverything(); }, EntryKind::Read); });
    connect(menus_, &MainMenus::balance, this,
            [this, &ops] { runFlow(did(kDidBalance), [&ops] { ops.balanceAndReadBack(); }, EntryKind::Balance); });
    connect(menus_, &MainMenus::beckon, this, [this, &ops] { runFlow(didBeckon(), [&ops] { ops.beckon(); }); });
    connect(menus_, &MainMenus::helpContent, this, [this] { MnuHelp_Content_Click(language(), dialogs_); });
    connect(menus_, &MainMenus::about, this, [this] { frmAbout(language(), dialogs_, this).exec(); });
    menus_->viewMenu()->addAction(frameLog_->toggleViewAction());
    connect(new LanguageMenu(menus_->viewMenu(), language()), &LanguageMenu::chosen, this, &frmMain::notify);
}

void frmMain::wirePanels()
{
    using namespace texts::desktop;
    // A command of a panel as a flow, what the status bar says it did, and
    // what the history keeps of it when it worked (a whole read, a write, a
    // balance; of anything else only a failure).
    using Kept = std::optional<EntryKind>;
    const auto flow = [this](const Text& done, auto body, Kept kept = {}) {
        return [this, &done, body, kept] { runFlow(did(done), body, kept); };
    };
    // A group's command: the channel group by its channels, the adjust block by its number.
    const auto groupFlow = [this](const Text& done, bool channels, auto body, Kept kept = {}) {
        return [this, &done, channels, body, kept](int g) {
            const QString group = channels ? pick(texts::grid::kChannelGroupTabs[g], language()) : QString::number(g + 1);
            runFlow(did(done).arg(group), [=] { body(g); }, kept);
        };
    };
    Operations& ops = operations_;
    connect(frame1_, &OperationPanel::readGroup, this,
            groupFlow(kDidReadChannelGroup, true, [&ops](int g) { ops.readChannelGroup(g); }));
    connect(frame1_, &OperationPanel::sendGroup, this,
            groupFlow(kDidWriteChannelGroup, true, [&ops](int g) { ops.writeChannelGroup(g); }, EntryKind::Write));
    connect(frame1_, &OperationPanel::readAll, this, flow(kDidReadChannelGroups, [&ops] { ops.readChannelGroups(); }));
    connect(frame1_, &OperationPanel::sendAll, this, flow(kDidWriteEverything, [&ops] { ops.writeEverything(); }, EntryKind::Write));
    connect(frame1_, &OperationPanel::balance, this,
            flow(kDidBalance, [&ops] { ops.balanceAndReadBack(); }, EntryKind::Balance));
    connect(frame2_, &OperationPanel::readGroup, this,
            groupFlow(kDidReadAdjustBlock, false, [&ops](int g) { ops.readAdjustBlock(g); }));
    connect(frame2_, &OperationPanel::sendGroup, this,
            groupFlow(kDidWriteAdjustBlock, false, [&ops](int g) { ops.writeAdjustBlock(g); }, EntryKind::Write));
    connect(frame2_, &OperationPanel::readAll, this, flow(kDidReadAdjustBlocks, [&ops] { ops.readAdjustBlocks(); }));
    connect(frame2_, &OperationPanel::sendAll, this, flow(kDidWriteAdjustBlocks, [&ops] { ops.writeAdjustBlocks(); }, EntryKind::Write));
    connect(frame3_, &OperationPanel::readInfo, this, flow(kDidReadInfo, [&ops] { ops.readModuleInfo(); }));
    connect(frame3_, &OperationPanel::sendInfo, this,
            flow(kDidWriteInfo, [&ops] { ops.writeModuleInfo(); }, EntryKind::Write));
    connect(frame3_, &OperationPanel::beckon, this, [this, &ops] { runFlow(didBeckon(), [&ops] { ops.beckon(); }); });
    connect(frame3_, &OperationPanel::readAll, this,
            flow(kDidReadEverything, [&ops] { ops.readEverything(); }, EntryKind::Read));
    connect(frame3_, &OperationPanel::sendAll, this,
            flow(kDidWriteInfo, [&ops] { ops.confirmAndWriteModuleInfo(); }, EntryKind::Write));
    connect(&operations_, &Operations::requestStarted, this, &frmMain::requestStarted);
    connect(&operations_, &Operations::requestEnded, this, &frmMain::requestEnded);
    connect(&operations_.exchange(), &Exchange::replyStored, this, &frmMain::replyStored);
    connect(&operations_, &Operations::moduleRefreshed, &view_, &ModuleView::showAll);
}

}  // namespace velmor
