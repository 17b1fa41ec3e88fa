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
    // Runs the event loop for a while, collecting whatever arrives.
    void idle(int ms);
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
