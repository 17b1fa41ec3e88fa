#include "recent_menu.h"

#include "operator_settings.h"
#include "texts/desktop.h"

#include <QFileInfo>
#include <QMenu>

namespace velmor {

RecentMenu::RecentMenu(QMenu* file, Language language) : QObject(file), menu_(file->addMenu(pick(texts::desktop::kMnuFileRecent, language)))
{
    menu_->setObjectName(QStringLiteral("MnuFile_Recent"));
    menu_->setToolTipsVisible(true);
    refresh();
}

void RecentMenu::refresh()
{
    menu_->clear();
    const QStringList files = recentFiles();
    for (int i = 0; i < files.size(); ++i) {
        const QString& path = files[i];
        // &1 to &8: each entry has its access key.
        QAction* action = menu_->addAction(QStringLiteral("&%1 %2").arg(i + 1).arg(QFileInfo(path).fileName()));
        action->setObjectName(QStringLiteral("MnuFile_Recent_%1").arg(i + 1));
        action->setToolTip(path);
        action->setStatusTip(path);
        connect(action, &QAction::triggered, this, [this, path] { emit chosen(path); });
    }
    apply();
}

void RecentMenu::setCommandsEnabled(bool enabled)
{
    commandsOn_ = enabled;
    apply();
}

void RecentMenu::apply() { menu_->menuAction()->setEnabled(commandsOn_ && !menu_->isEmpty()); }

}  // namespace velmor
