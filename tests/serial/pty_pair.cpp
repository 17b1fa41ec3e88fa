#include "pty_pair.h"

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

PtyPair::PtyPair()
{
    master_ = ::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
    if (master_ < 0 || ::grantpt(master_) != 0 || ::unlockpt(master_) != 0) {
        close();
        return;
    }
    slavePath_ = QString::fromLocal8Bit(::ptsname(master_));
    // One slave descriptor of our own, opened before the code under test takes
    // the port for itself, to read the settings through. It starts the line at
    // 9600 baud 7E2, so that every setting seen later was made by that code.
    slaveKeeper_ = ::open(slavePath_.toLocal8Bit().constData(), O_RDWR | O_NOCTTY | O_NONBLOCK);
    termios other{};
    if (slaveKeeper_ >= 0 && ::tcgetattr(slaveKeeper_, &other) == 0) {
        ::cfsetspeed(&other, B9600);
        other.c_cflag = (other.c_cflag & ~CSIZE) | CS7 | PARENB | CSTOPB;
        ::tcsetattr(slaveKeeper_, TCSANOW, &other);
    }
}

PtyPair::~PtyPair()
{
    close();
}

termios PtyPair::lineSettings() const
{
    termios settings{};
    if (slaveKeeper_ >= 0)
        ::tcgetattr(slaveKeeper_, &settings);
    return settings;
}

void PtyPair::close()
{
    if (slaveKeeper_ >= 0)
        ::close(slaveKeeper_);
    if (master_ >= 0)
        ::close(master_);
    slaveKeeper_ = -1;
    master_ = -1;
}
