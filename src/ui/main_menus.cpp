#include "main_menus.h"

#include "model/frame_log_texts.h"
#include "model/network_port_texts.h"
#include "model/report_texts.h"
#include "model/window_texts.h"

#include <QMenuBar>

namespace velmor {
namespace {

QAction* entry(QMenu* menu, const char* name, const Text& caption, Language language)
{
    QAction* action = menu->addAction(pick(caption, language));
    action->setObjectName(QLatin1String(name));
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
    QMenu* file = menuOf(bar, "MnuFile", win::kMnuFile, language);
    // Open and save wait while a flow runs: the record is in use.
    commandActions_ << wired(entry(file, "MnuFile_Open", win::kMnuFileOpen, language), &MainMenus::open)
                    << wired(entry(file, "MnuFile_Save", win::kMnuFileSave, language), &MainMenus::save)
                    << wired(entry(file, "MnuFile_SaveAs", win::kMnuFileSaveAs, language), &MainMenus::saveAs)
                    // Like Save As, it reports the record the window holds,
                    // found by a search or opened from a file.
                    << wired(entry(file, "MnuFile_ExportReport", report_text::kMnuFileExportReport, language),
                             &MainMenus::exportReport);
    file->addSeparator();
    wired(entry(file, "MnuFile_Exit", win::kMnuFileExit, language), &MainMenus::exit);

    QMenu* operate = menuOf(bar, "MnuOperate", win::kMnuOperate, language);
    commandActions_ << wired(entry(operate, "MnuOperate_Search", win::kMnuOperateSearch, language), &MainMenus::search)
                    << wired(entry(operate, "MnuOperate_SearchAll", net::kMnuOperateSearchAll, language),
                             &MainMenus::searchAll);
    moduleActions_ << wired(entry(operate, "MnuOperate_Send", win::kMnuOperateSend, language), &MainMenus::send)
                   << wired(entry(operate, "MnuOperate_Read", win::kMnuOperateRead, language), &MainMenus::read)
                   << wired(entry(operate, "MnuOperate_Balance", win::kMnuOperateBalance, language), &MainMenus::balance);
    commandActions_ << moduleActions_
                    << wired(entry(operate, "MnuOperate_Beckon", win::kMnuOperateBeckon, language), &MainMenus::beckon);

    view_ = menuOf(bar, "MnuView", log_text::kMnuView, language);

    QMenu* help = menuOf(bar, "MnuHelp", win::kMnuHelp, language);
    wired(entry(help, "MnuHelp_Content", win::kMnuHelpContent, language), &MainMenus::helpContent);
    wired(entry(help, "MnuHelp_About", win::kMnuHelpAbout, language), &MainMenus::about);
}

void MainMenus::addViewEntry(QAction* action) { view_->addAction(action); }

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
    for (QAction* action : commandActions_)
        action->setEnabled(commandsOn_ && (modulesFound_ || !moduleActions_.contains(action)));
}

}  // namespace velmor
