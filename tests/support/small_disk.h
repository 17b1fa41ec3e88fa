#pragma once

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace velmor::testing {

// A folder on a disk with little room: a tmpfs of `bytes` mounted there when
// the machine lets this process mount (as root), so that writes past the
// room fail with "No space left on device". Where it cannot, the folder is an
// ordinary one and wrap() runs a program with RLIMIT_FSIZE at `bytes`, so
// that writes past it fail with "File too large" (SIGXFSZ ignored); how()
// says which, for the test's output.
class SmallDisk {
public:
    explicit SmallDisk(qint64 bytes, bool readOnly = false);
    ~SmallDisk();
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

    bool isValid() const { return dir_.isValid(); }
    bool mounted() const { return mounted_; }
    // A read-only disk can only be a mount: false where mounting is refused.
    bool readOnlyAvailable() const { return !readOnly_ || mounted_; }
    QString path() const { return dir_.path(); }
    QString filePath(const QString& name) const { return dir_.filePath(name); }
    // "a tmpfs of 16 kB", or why not and what stands in for it.
    QString how() const { return how_; }
    // The program and arguments to start so that the disk's limit holds for it.
    QStringList wrap(const QString& program, const QStringList& arguments) const;
    // Leaves `leave` bytes of room: a mount is filled up to that, and without
    // one the file-size limit becomes `leave`.
    void fill(qint64 leave);

private:
    QTemporaryDir dir_;
    qint64 bytes_;
    qint64 limit_;  // the file-size limit where there is no mount
    bool readOnly_;
    bool mounted_ = false;
    QString how_;
};

}  // namespace velmor::testing
