#include "port_watcher.h"

namespace velmor {

PortWatcher::PortWatcher(QObject* parent) : QObject(parent)
{
    connect(&timer_, &QTimer::timeout, this, &PortWatcher::look);
    timer_.start(kIntervalMs);
}

void PortWatcher::pause() { timer_.stop(); }

void PortWatcher::resume()
{
    timer_.start(kIntervalMs);
    look();
}

void PortWatcher::look()
{
    const QList<PortEntry> now = listPorts();
    if (now == known_)
        return;
    known_ = now;
    emit portsChanged(now);
}

}  // namespace velmor
