#pragma once

#include <QLockFile>
#include <QString>

#include <memory>

namespace velmor {

// A simulated line publishes itself as a symbolic link NAME in the folder of
// virtual ports, leading to its pseudo-terminal, beside a lock file NAME.lock
// that it holds while it runs. The lock names the owning process, so a link
// left behind by a simulator that was killed is known to be dead even when its
// pseudo-terminal number now belongs to another program.
class PublishedPort {
public:
    PublishedPort() = default;
    PublishedPort(const PublishedPort&) = delete;
    PublishedPort& operator=(const PublishedPort&) = delete;
    ~PublishedPort() { remove(); }

    // Creates the folder when needed. A name left behind by an owner that is
    // gone is taken over; one whose owner still runs is refused.
    bool publish(const QString& folder, const QString& name, const QString& device, QString* error);
    // Removes the link if it is still ours, then the lock.
    void remove();
    QString path() const { return path_; }

private:
    QString path_;
    QString device_;
    std::unique_ptr<QLockFile> lock_;
};

// The lock file that stands beside a published link.
QString publishedPortLockPath(const QString& linkPath);

// Whether a path names a published port: a symbolic link with a lock file
// beside it, or any entry of the folder of virtual ports.
bool isPublishedPort(const QString& path);

// True while the process that published the link still runs. A link whose
// owner is gone is removed on the way, so that its name is free again.
bool publishedPortAlive(const QString& linkPath);

}  // namespace velmor
