#include "port_watcher.h"

#include <QFileInfo>

namespace velmor {
namespace {

// Where the system shows serial devices as they come and go: a new adapter
// in the first, the end of a simulator's pseudo-terminal in the second.
const QStringList kSystemFolders{QStringLiteral("/dev"), QStringLiteral("/dev/pts")};

}  // namespace

PortWatcher::PortWatcher(QObject* parent) : PortWatcher(kSystemFolders, parent) {}

PortWatcher::PortWatcher(const QStringList& deviceFolders, QObject* parent)
    : QObject(parent), deviceFolders_(deviceFolders)
{
    settle_.setSingleShot(true);
    settle_.setInterval(kSettleMs);
    connect(&settle_, &QTimer::timeout, this, &PortWatcher::look);
    connect(&fallback_, &QTimer::timeout, this, &PortWatcher::changed);
    connect(&folders_, &QFileSystemWatcher::directoryChanged, this, &PortWatcher::changed);
    watchFolders();
}

void PortWatcher::watchFolders()
{
    QStringList wanted;
    for (const QString& folder : deviceFolders_)
        if (QFileInfo(folder).isDir())
            wanted << folder;
    const QString published = virtualPortsDirectory();
    // A folder that is not there yet is seen being made in its parent.
    wanted << (QFileInfo(published).isDir() ? published : QFileInfo(published).absolutePath());
    const QStringList watched = folders_.directories();
    for (const QString& folder : watched)
        if (!wanted.contains(folder))
            folders_.removePath(folder);
    for (const QString& folder : wanted)
        if (!watched.contains(folder))
            folders_.addPath(folder);
    if (folders_.directories().isEmpty())
        fallback_.start(kFallbackIntervalMs);
    else
        fallback_.stop();
}

void PortWatcher::changed()
{
    if (paused_) {
        missed_ = true;
        return;
    }
    if (!settle_.isActive())
        settle_.start();
}

void PortWatcher::pause()
{
    paused_ = true;
    if (settle_.isActive()) {
        settle_.stop();
        missed_ = true;
    }
}

void PortWatcher::resume()
{
    paused_ = false;
    if (missed_) {
        missed_ = false;
        look();
    }
}

void PortWatcher::look()
{
    watchFolders();
    const QList<PortEntry> now = listPorts();
    if (now == known_)
        return;
    known_ = now;
    emit portsChanged(now);
}

}  // namespace velmor
