// Reads a 16-channel module wholly, 17 exchanges, against velmor-sim pacing its
// bytes at the real 4800 baud 8N1, and prints how close the elapsed time comes
// to the ideal wire time and how much CPU the waiting costs: over the local
// pseudo-terminal, then through a ser2net on the loopback, raw (tcp://) and
// with RFC 2217 (rfc2217://), when ser2net is installed.
#include "link/operations.h"
#include "support/ser2net_process.h"
#include "support/sim_process.h"
#include "wire_time.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QThread>

#include <cstdio>

using namespace velmor;
using namespace velmor::bench;

namespace {

constexpr int kRuns = 5;
constexpr double kTarget = 1.05;

// Whole reads over the line `device`; false when one failed.
bool readOver(const char* route, const QString& device)
{
    LineFlows line(device);
    std::printf("\n%s: %s\n", route, qPrintable(device));
    return printWholeReadRuns(kRuns, kTarget, [&] { return line.operations.readEverything(); });
}

}  // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    testing::SimProcess sim;
    if (!sim.start({QStringLiteral("--module"), QStringLiteral("1:TM-C16"), QStringLiteral("--turnaround"),
                    QString::number(kTurnaroundMs), QStringLiteral("--log"), QStringLiteral("/dev/null")})) {
        std::fprintf(stderr, "velmor-sim did not start: %s\n", qPrintable(sim.error()));
        return 1;
    }
    std::printf("read everything of a 16-channel module, 4800 baud 8N1 paced simulator in its own process\n");
    bool ok = readOver("local pseudo-terminal", sim.linkPath());

    if (testing::Ser2netProcess::executable().isEmpty()) {
        std::printf("\nser2net is not installed: no figures through it\n");
        return ok ? 0 : 1;
    }
    using Accepter = testing::Ser2netProcess::Accepter;
    testing::Ser2netProcess server;
    const QString pty = QFileInfo(sim.linkPath()).symLinkTarget();
    const int raw = server.addConnection(Accepter::Raw, pty);
    const int telnet = server.addConnection(Accepter::Rfc2217, pty);
    if (!server.start()) {
        std::fprintf(stderr, "ser2net did not start: %s\n", qPrintable(server.error()));
        return 1;
    }
    ok = readOver("ser2net on the loopback, raw", server.url(raw)) && ok;
    // ser2net lets the device go a moment after the raw connection closes.
    QThread::msleep(1000);
    ok = readOver("ser2net on the loopback, RFC 2217", server.url(telnet)) && ok;
    server.stop();
    sim.stop();
    return ok ? 0 : 1;
}
