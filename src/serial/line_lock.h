#pragma once

#include <QLockFile>
#include <QString>

#include <memory>

namespace velmor {

// What a program holding a line is doing, for the refusal another one gives.
enum class LineActivity { Searching, Reading, Writing, Balancing, Beckoning };

// Who holds a line: the program's name, its process and what it does.
struct LineHolder {
    QString program;
    qint64 pid = 0;
    LineActivity activity = LineActivity::Reading;
};

// One line held against every other Velmor program for a whole flow, from its
// first request to its last; the port itself is still opened and closed
// around each exchange. The lock is a file named after the line's real device
// (a published link and its pseudo-terminal are one line), in a folder of the
// user's: $XDG_RUNTIME_DIR/velmor-lines, else velmor-lines-UID in the
// temporary folder. A lock left by a program that has ended is taken over.
class LineLock {
public:
    // How long a program waits for a line another one holds before it refuses.
    static constexpr int kWaitMs = 15000;

    explicit LineLock(const QString& device);
    ~LineLock();
    LineLock(const LineLock&) = delete;
    LineLock& operator=(const LineLock&) = delete;

    // Takes the line, waiting (in the event loop) while another program holds
    // it, at most `waitMs`. False when it is still held then; holder() says
    // by whom.
    bool take(LineActivity activity, int waitMs = kWaitMs);
    const LineHolder& holder() const { return holder_; }

    static QString folder();

private:
    bool tryTake(LineActivity activity);
    void readHolder();

    QString path_;
    std::unique_ptr<QLockFile> lock_;
    LineHolder holder_;
};

}  // namespace velmor
