#pragma once

#include "texts/language.h"

#include <QObject>

class QMenu;

namespace velmor {

// File > Recent Files: the files last opened or saved (the operator's
// settings), the latest first, each by its name with its path as its tip.
// Empty, the entry is greyed.
class RecentMenu : public QObject {
    Q_OBJECT
public:
    RecentMenu(QMenu* file, Language language);

    QMenu* menu() const { return menu_; }
    // Lists the files anew, after one was opened or saved.
    void refresh();
    // Locked with the window's commands while a flow runs.
    void setCommandsEnabled(bool enabled);

signals:
    void chosen(const QString& path);

private:
    void apply();

    QMenu* menu_;
    bool commandsOn_ = true;
};

}  // namespace velmor
