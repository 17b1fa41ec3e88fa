#include "pseudo_terminal.h"

#include <QSocketNotifier>

#include <cerrno>
#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

namespace velmor::sim {
namespace {

QString systemError(const char* call) { return QStringLiteral("%1: %2").arg(QLatin1String(call), qt_error_string(errno)); }

bool closeOnExec(int fd) { return ::fcntl(fd, F_SETFD, FD_CLOEXEC) == 0; }

}  // namespace

PseudoTerminal::PseudoTerminal(QObject* parent) : QObject(parent) {}

PseudoTerminal::~PseudoTerminal() { close(); }

bool PseudoTerminal::open(QString* error)
{
    auto fail = [&](const char* call) {
        if (error)
            *error = systemError(call);
        close();
        return false;
    };
    master_ = ::posix_openpt(O_RDWR | O_NOCTTY);
    if (master_ < 0)
        return fail("posix_openpt");
    // Programs this process starts must not hold the line open.
    if (!closeOnExec(master_) || ::fcntl(master_, F_SETFL, O_NONBLOCK) != 0)
        return fail("fcntl");
    if (::grantpt(master_) != 0)
        return fail("grantpt");
    if (::unlockpt(master_) != 0)
        return fail("unlockpt");
    const char* name = ::ptsname(master_);
    if (!name)
        return fail("ptsname");
    devicePath_ = QString::fromLocal8Bit(name);

    slave_ = ::open(name, O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (slave_ < 0)
        return fail("open");
    // Raw, so that no echo or line editing touches the frames before the program
    // sets its own port settings.
    termios settings{};
    if (::tcgetattr(slave_, &settings) != 0)
        return fail("tcgetattr");
    ::cfmakeraw(&settings);
    if (::tcsetattr(slave_, TCSANOW, &settings) != 0)
        return fail("tcsetattr");

    notifier_ = new QSocketNotifier(master_, QSocketNotifier::Read, this);
    connect(notifier_, &QSocketNotifier::activated, this, &PseudoTerminal::readyRead);
    return true;
}

std::optional<LineFormat> PseudoTerminal::lineFormat() const
{
    termios settings{};
    if (slave_ < 0 || ::tcgetattr(slave_, &settings) != 0)
        return std::nullopt;
    return lineFormatOf(settings);
}

QByteArray PseudoTerminal::readAll()
{
    QByteArray bytes;
    char chunk[512];
    ssize_t n = 0;
    while (master_ >= 0 && (n = ::read(master_, chunk, sizeof chunk)) > 0)
        bytes.append(chunk, n);
    return bytes;
}

void PseudoTerminal::write(const QByteArray& bytes)
{
    if (!isOpen())
        return;
    [[maybe_unused]] const ssize_t written = ::write(master_, bytes.constData(), static_cast<size_t>(bytes.size()));
}

void PseudoTerminal::close()
{
    if (notifier_) {
        notifier_->setEnabled(false);
        notifier_->deleteLater();
        notifier_ = nullptr;
    }
    for (int* fd : {&slave_, &master_}) {
        if (*fd >= 0)
            ::close(*fd);
        *fd = -1;
    }
}

}  // namespace velmor::sim
