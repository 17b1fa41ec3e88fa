#include "pty_pair.h"

#include <QElapsedTimer>

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <cstdlib>

PtyPair::PtyPair()
{
    master_ = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
    if (master_ < 0 || ::grantpt(master_) != 0 || ::unlockpt(master_) != 0) {
        hangUp();
        return;
    }
    slavePath_ = QString::fromLocal8Bit(::ptsname(master_));
    // Keep one slave descriptor open in raw mode, so that the line neither
    // echoes nor hangs up while the code under test has its port closed.
    slaveKeeper_ = ::open(slavePath_.toLocal8Bit().constData(), O_RDWR | O_NOCTTY | O_NONBLOCK);
    termios raw{};
    if (slaveKeeper_ >= 0 && ::tcgetattr(slaveKeeper_, &raw) == 0) {
        ::cfmakeraw(&raw);
        ::tcsetattr(slaveKeeper_, TCSANOW, &raw);
    }
}

PtyPair::~PtyPair()
{
    hangUp();
}

void PtyPair::send(const QByteArray& bytes)
{
    if (master_ >= 0)
        (void)!::write(master_, bytes.constData(), static_cast<size_t>(bytes.size()));
}

QByteArray PtyPair::receive(int count, int ms)
{
    QByteArray out;
    QElapsedTimer clock;
    clock.start();
    while (master_ >= 0 && out.size() < count && clock.elapsed() < ms) {
        pollfd p{master_, POLLIN, 0};
        if (::poll(&p, 1, 20) <= 0)
            continue;
        char buffer[512];
        const ssize_t n = ::read(master_, buffer, sizeof buffer);
        if (n > 0)
            out.append(buffer, n);
    }
    return out;
}

void PtyPair::hangUp()
{
    if (slaveKeeper_ >= 0)
        ::close(slaveKeeper_);
    if (master_ >= 0)
        ::close(master_);
    slaveKeeper_ = -1;
    master_ = -1;
}
