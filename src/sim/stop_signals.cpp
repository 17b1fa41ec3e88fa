#include "stop_signals.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace velmor::sim {
namespace {

int pipeEnds[2] = {-1, -1};
// SIGHUP too: a simulator started from a terminal that closes must still
// take its published port down.
constexpr int kStopSignals[] = {SIGINT, SIGTERM, SIGHUP};

void onSignal(int)
{
    const int saved = errno;
    const char byte = 1;
    [[maybe_unused]] const ssize_t n = ::write(pipeEnds[1], &byte, 1);
    errno = saved;
}

}  // namespace

StopSignals::StopSignals(QObject* parent)
    : QObject(parent)
{
}

StopSignals::~StopSignals()
{
    if (pipeEnds[0] < 0)
        return;
    for (int number : kStopSignals)
        std::signal(number, SIG_DFL);
    for (int& fd : pipeEnds) {
        ::close(fd);
        fd = -1;
    }
}

bool StopSignals::install(QString* error)
{
    if (::pipe2(pipeEnds, O_CLOEXEC | O_NONBLOCK) != 0) {
        if (error)
            *error = QStringLiteral("pipe: %1").arg(qt_error_string(errno));
        return false;
    }
    notifier_ = new QSocketNotifier(pipeEnds[0], QSocketNotifier::Read, this);
    connect(notifier_, &QSocketNotifier::activated, this, [this] {
        char bytes[16];
        while (::read(pipeEnds[0], bytes, sizeof bytes) > 0) {
        }
        emit received();
    });
    struct sigaction action {};
    action.sa_handler = onSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    for (int number : kStopSignals)
        ::sigaction(number, &action, nullptr);
    return true;
}

}  // namespace velmor::sim
