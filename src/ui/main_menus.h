#pragma once

#include "texts/language.h"

#include <QList>
#include <QObject>

class QAction;
class QMenu;
class QMenuBar;

namespace velmor {

class RecentMenu;

// The File, Operate, View and Help menus. Entries that start an exchange or
// touch the record are locked with the buttons; Balance, Read and Send only
// work once modules have been found.
class MainMenus : public QObject {
    Q_OBJECT
public:
    MainMenus(QMenuBar* bar, Language language);

    void setCommandsEnabled(bool enabled);
    void setModulesFound(bool found);
    // The View menu, whose entries show or hide a pane or choose the language.
    QMenu* viewMenu() const { return view_; }
    // File > Recent Files, listed anew after a file was opened or saved.
    RecentMenu* recentFiles() const { return recent_; }

signals:
    void open();
    void openRecent(const QString& path);
    void save();
    void saveAs();
    void exportReport();
    void history();
    void rackSave();
    void rackCheck();
    void rackRestore();
    void rackReport();
    void exit();
    void search();
    void searchAll();
    void send();
    void read();
    void balance();
    void beckon();
    void helpContent();
    void about();

private:
    void refresh();

    QMenu* view_;
    RecentMenu* recent_;
    QList<QAction*> commandActions_;
    QList<QAction*> moduleActions_;
    bool commandsOn_ = true;
    bool modulesFound_ = true;
};

}  // namespace velmor
