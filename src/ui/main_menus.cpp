#include "main_menus.h"

#include "texts/frame_log.h"
#include "texts/history.h"
#include "texts/network.h"
#include "texts/rack.h"
#include "texts/report.h"
#include "recent_menu.h"
#include "texts/window.h"

#include <QKeySequence>
#include <QMenuBar>

namespace velmor {
namespace {

QAction* entry(QMenu* menu, const char* name, const Text& caption, Language language)
{
    QAction* action = menu->addAction(pick(caption, language));
    action->setObjectName(QLatin1String(name));
    return action;
}

// The platform's keys for a standard command (Ctrl+O, Ctrl+S ... on Linux),
// or `otherwise` where the platform binds none (Save As on Windows and under
// a desktop without its own key theme).
QAction* withKeys(QAction* action, QKeySequence::StandardKey key, const QKeySequence& otherwise = {})
{
    action->setShortcuts(key);
    if (action->shortcuts().isEmpty())
        action->setShortcut(otherwise);
    return action;
}

QMenu* menuOf(QMenuBar* bar, const char* name, const Text& caption, Language language)
{
    QMenu* menu = bar->addMenu(pick(caption, language));
    menu->setObjectName(QLatin1String(name));
    return menu;
}

}  // namespace

MainMenus::MainMenus(QMenuBar* bar, Language language) : QObject(bar)
{
    const auto wired = [this](QAction* action, void (MainMenus::*signal)()) {
        connect(action, &QAction::triggered, this, signal);
        return action;
    };
    QMenu* file = menuOf(bar, "MnuFile", texts::window::kMnuFile, language);
    // Open and save wait while a flow runs: the record is in use.
    commandActions_ << wired(withKeys(entry(file, "MnuFile_Open", texts::window::kMnuFileOpen, language), QKeySequence::Open),
                             &MainMenus::open);
    recent_ = new RecentMenu(file, language);
    connect(recent_, &RecentMenu::chosen, this, &MainMenus::openRecent);
    commandActions_ << wired(withKeys(entry(file, "MnuFile_Save", texts::window::kMnuFileSave, language), QKeySequence::Save),
                             &MainMenus::save)
                    << wired(withKeys(entry(file, "MnuFile_SaveAs", texts::window::kMnuFileSaveAs, language),
                                      QKeySequence::SaveAs, QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S)),
                             &MainMenus::saveAs)
                    // Like Save As, it reports the record the window holds,
                    // found by a search or opened from a file.
                    << wired(entry(file, "MnuFile_ExportReport", texts::report::kMnuFileExportReport, language),
                             &MainMenus::exportReport);
    QAction* history = entry(file, "MnuFile_History", texts::history::kMnuFileHistory, language);
    history->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_H));
    commandActions_ << wired(history, &MainMenus::history);
    // Every module on every line at once; each talks to the lines or reads files.
    QMenu* rack = file->addMenu(pick(texts::rack::kMnuFileRack, language));
    rack->setObjectName(QStringLiteral("MnuFile_Rack"));
    commandActions_ << wired(entry(rack, "MnuFile_RackSave", texts::rack::kMnuRackSave, language), &MainMenus::rackSave)
                    << wired(entry(rack, "MnuFile_RackCheck", texts::rack::kMnuRackCheck, language), &MainMenus::rackCheck)
                    << wired(entry(rack, "MnuFile_RackRestore", texts::rack::kMnuRackRestore, language),
                             &MainMenus::rackRestore)
                    << wired(entry(rack, "MnuFile_RackReport", texts::rack::kMnuRackReport, language),
                             &MainMenus::rackReport);
    file->addSeparator();
    wired(withKeys(entry(file, "MnuFile_Exit", texts::window::kMnuFileExit, language), QKeySequence::Quit,
                   QKeySequence(Qt::CTRL | Qt::Key_Q)),
          &MainMenus::exit);

    QMenu* operate = menuOf(bar, "MnuOperate", texts::window::kMnuOperate, language);
    QAction* search = entry(operate, "MnuOperate_Search", texts::window::kMnuOperateSearch, language);
    search->setShortcut(Qt::Key_F5);
    commandActions_ << wired(search, &MainMenus::search)
                    << wired(entry(operate, "MnuOperate_SearchAll", texts::network::kMnuOperateSearchAll, language),
                             &MainMenus::searchAll);
    moduleActions_ << wired(entry(operate, "MnuOperate_Send", texts::window::kMnuOperateSend, language), &MainMenus::send)
                   << wired(entry(operate, "MnuOperate_Read", texts::window::kMnuOperateRead, language), &MainMenus::read)
                   << wired(entry(operate, "MnuOperate_Balance", texts::window::kMnuOperateBalance, language), &MainMenus::balance);
    commandActions_ << moduleActions_
                    << wired(entry(operate, "MnuOperate_Beckon", texts::window::kMnuOperateBeckon, language), &MainMenus::beckon);

    view_ = menuOf(bar, "MnuView", texts::frame_log::kMnuView, language);

    QMenu* help = menuOf(bar, "MnuHelp", texts::window::kMnuHelp, language);
    wired(entry(help, "MnuHelp_Content", texts::window::kMnuHelpContent, language), &MainMenus::helpContent);
    wired(entry(help, "MnuHelp_About", texts::window::kMnuHelpAbout, language), &MainMenus::about);
}

void MainMenus::setCommandsEnabled(bool enabled)
{
    commandsOn_ = enabled;
    refresh();
}

void MainMenus::setModulesFound(bool found)
{
    modulesFound_ = found;
    refresh();
}

void MainMenus::refresh()
{
    recent_->setCommandsEnabled(commandsOn_);
    for (QAction* action : commandActions_)
        action->setEnabled(commandsOn_ && (modulesFound_ || !moduleActions_.contains(action)));
}

}  // namespace velmor
