#include "pty_peer.h"

#include <QTest>

#include <cerrno>
#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

namespace velmor::testing {

PtyPeer::PtyPeer(const QString& device)
{
    clock_.start();
    fd_ = ::open(device.toLocal8Bit().constData(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (fd_ < 0) {
        error_ = QStringLiteral("open %1: %2").arg(device, qt_error_string(errno));
        return;
    }
    termios settings{};
    if (::tcgetattr(fd_, &settings) == 0) {
        ::cfmakeraw(&settings);
        ::tcsetattr(fd_, TCSANOW, &settings);
    }
    // Whatever waited before this open is not ours, as a port purges on open.
    ::tcflush(fd_, TCIFLUSH);
    notifier_ = std::make_unique<QSocketNotifier>(fd_, QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] { readAvailable(); });
}

PtyPeer::~PtyPeer() { close(); }

bool PtyPeer::write(QByteArrayView bytes)
{
    if (fd_ < 0)
        return false;
    return ::write(fd_, bytes.data(), static_cast<size_t>(bytes.size())) == bytes.size();
}

bool PtyPeer::waitForBytes(int count, int timeoutMs)
{
    return QTest::qWaitFor([&] { return received_.size() >= count || hungUp_; }, timeoutMs)
        && received_.size() >= count;
}

void PtyPeer::stayQuiet(int ms) { QTest::qWait(ms); }

QByteArray PtyPeer::probe(QByteArrayView probe, const QByteArray& answer, int timeoutMs)
{
    // The result shows whether the answer came; the wait's own verdict adds nothing.
    if (write(probe))
        (void)QTest::qWaitFor([&] { return received_.endsWith(answer) || hungUp_; }, timeoutMs);
    return received_;
}

QByteArray PtyPeer::exchange(QByteArrayView request, int expected, int timeoutMs)
{
    clear();
    if (!write(request))
        return {};
    waitForBytes(expected, timeoutMs);
    return received_;
}

void PtyPeer::clear()
{
    received_.clear();
    arrivals_.clear();
}

void PtyPeer::close()
{
    notifier_.reset();
    if (fd_ >= 0)
        ::close(fd_);
    fd_ = -1;
}

void PtyPeer::readAvailable()
{
    char chunk[512];
    for (;;) {
        const ssize_t n = ::read(fd_, chunk, sizeof chunk);
        if (n > 0) {
            received_.append(chunk, n);
            arrivals_.append({clock_.nsecsElapsed(), QByteArray(chunk, n)});
            continue;
        }
        if (n < 0 && (errno == EAGAIN || errno == EINTR))
            return;
        // EIO or end of file: the master side has gone.
        hungUp_ = true;
        notifier_->setEnabled(false);
        return;
    }
}

}  // namespace velmor::testing
