#pragma once

#include <QString>

namespace velmor::sim {

// A line's name in the folder of published ports: a symbolic link NAME that
// leads to the line's device, which is how the program's port list finds it.
// Removed again when this object goes, or earlier with remove().
class PublishedLink {
public:
    PublishedLink() = default;
    PublishedLink(const PublishedLink&) = delete;
    PublishedLink& operator=(const PublishedLink&) = delete;
    ~PublishedLink() { remove(); }

    // Creates the folder when needed. A link of the same name left behind by a
    // simulator that is gone is replaced; one that still leads to a device is
    // another running line's, and publishing fails.
    bool publish(const QString& folder, const QString& name, const QString& device, QString* error);
    // Removes the link if it is still ours.
    void remove();
    QString path() const { return path_; }

private:
    QString path_;
    QString device_;
};

}  // namespace velmor::sim
