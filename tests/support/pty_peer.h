#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QElapsedTimer>
#include <QList>
#include <QSocketNotifier>
#include <QString>

#include <memory>

namespace velmor::testing {

// The program's end of a simulated line, opened with plain POSIX calls, for
// tests that look at the bytes and their timing without the program's serial
// code. Reading runs from the event loop, like the in-process line itself.
class PtyPeer {
public:
    struct Arrival {
        qint64 ns;       // on the peer's clock, see nowNs()
        QByteArray bytes;
    };

    explicit PtyPeer(const QString& device);
    ~PtyPeer();
    PtyPeer(const PtyPeer&) = delete;
    PtyPeer& operator=(const PtyPeer&) = delete;

    bool isOpen() const { return fd_ >= 0; }
    QString error() const { return error_; }
    // The far end went away: a read failed or saw the end of the line.
    bool hungUp() const { return hungUp_; }

    bool write(QByteArrayView bytes);
    // Runs the event loop until at least `count` bytes wait in received(), or
    // the time is up; true when they are there.
    bool waitForBytes(int count, int timeoutMs = 2000);
    // Keeps the line silent for `ms`, collecting whatever arrives: silence as
    // a stimulus (a partial request dropped after a quiet line), not a wait.
    void stayQuiet(int ms);
    // Writes `probe` and runs the event loop until `answer` has come last;
    // returns all received since the last clear(). A line answers in turn,
    // so whatever an earlier request drew has come before the answer: an
    // earlier request went unanswered when the result is `answer` alone.
    QByteArray probe(QByteArrayView probe, const QByteArray& answer, int timeoutMs = 2000);
    // Writes a request, then waits for `expected` bytes; returns what came.
    QByteArray exchange(QByteArrayView request, int expected, int timeoutMs = 2000);

    QByteArray received() const { return received_; }
    const QList<Arrival>& arrivals() const { return arrivals_; }
    qint64 nowNs() const { return clock_.nsecsElapsed(); }
    void clear();
    void close();

private:
    void readAvailable();

    int fd_ = -1;
    std::unique_ptr<QSocketNotifier> notifier_;
    QElapsedTimer clock_;
    QByteArray received_;
    QList<Arrival> arrivals_;
    bool hungUp_ = false;
    QString error_;
};

}  // namespace velmor::testing
