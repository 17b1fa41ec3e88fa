#pragma once

#include "port_list.h"

#include <QObject>
#include <QTimer>

namespace velmor {

// Follows the port list while the program runs: a USB adapter plugged in or
// a simulator started appears, one that goes away disappears. The list is
// looked at once a second; a change is told once. Looking costs a walk over
// every tty the system has, so it pauses while nothing may change anyway
// (a flow is running) and looks at once when it goes on.
class PortWatcher : public QObject {
    Q_OBJECT
public:
    static constexpr int kIntervalMs = 1000;

    explicit PortWatcher(QObject* parent = nullptr);

    // The list the next change is measured against.
    void setKnown(const QList<PortEntry>& ports) { known_ = ports; }

    void pause();
    void resume();

signals:
    void portsChanged(const QList<velmor::PortEntry>& ports);

private:
    void look();

    QList<PortEntry> known_;
    QTimer timer_;
};

}  // namespace velmor
