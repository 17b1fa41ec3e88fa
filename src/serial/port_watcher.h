#pragma once

#include "port_list.h"

#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>

namespace velmor {

// Follows the port list while the program runs: a USB adapter plugged in or
// a simulator started appears, one that goes away disappears. It listens to
// the system instead of looking again and again: the device folder (a new
// adapter), the folder of pseudo-terminals (a simulator's line ending) and
// the folder of published ports. A burst of changes is looked at once, a
// moment after it; a change of the list is told once. While a flow runs
// nothing may change, so changes wait until it has ended. Where none of the
// folders can be watched, the list is looked at every few seconds instead.
class PortWatcher : public QObject {
    Q_OBJECT
public:
    // How long after a change the list is looked at, so that a burst
    // (a device node and its links, say) costs one look.
    static constexpr int kSettleMs = 150;
    static constexpr int kFallbackIntervalMs = 2000;

    // Watches the system's folders of devices and pseudo-terminals.
    explicit PortWatcher(QObject* parent = nullptr);
    // Watches `deviceFolders` in their place.
    PortWatcher(const QStringList& deviceFolders, QObject* parent = nullptr);

    // The list the next change is measured against.
    void setKnown(const QList<PortEntry>& ports) { known_ = ports; }

    void pause();
    void resume();

signals:
    void portsChanged(const QList<velmor::PortEntry>& ports);

private:
    // Watches the folders that exist, and the parent of the published
    // ports' folder until that folder exists.
    void watchFolders();
    void changed();
    void look();

    QStringList deviceFolders_;
    QList<PortEntry> known_;
    QFileSystemWatcher folders_;
    QTimer settle_;
    QTimer fallback_;
    bool paused_ = false;
    bool missed_ = false;  // a change came while paused
};

}  // namespace velmor
