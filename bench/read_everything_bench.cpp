// Reads a 16-channel module wholly, 17 exchanges, against velmor-sim pacing its
// bytes at the real 4800 baud 8N1, and prints how close the elapsed time comes
// to the ideal wire time and how much CPU the waiting costs.
#include "link/operations.h"
#include "support/sim_process.h"
#include "wire_time.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <algorithm>
#include <cstdio>

using namespace velmor;
using namespace velmor::bench;

namespace {

constexpr int kRuns = 5;

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
    SetupState state;
    state.reset();
    ComPort port;
    port.setPorts({PortEntry{sim.portName(), 1, sim.linkPath()}});
    PrintedDialogs dialogs;
    Operations operations(state, port, dialogs);
    state.current().portNumber = 1;
    state.current().busAddress = 1;

    std::printf("read everything of a 16-channel module, 4800 baud 8N1 paced simulator in its own process\n");
    std::printf("ideal wire time: %d x ((7 + 55) bytes x %.4f ms + %d ms turnaround) = %.1f ms\n", kWholeReadExchanges,
                byteMs(), kTurnaroundMs, wholeReadIdealMs());
    std::printf("%-4s %12s %14s %12s %12s\n", "run", "elapsed ms", "elapsed/ideal", "cpu ms", "cpu/elapsed");
    double worstTime = 0, worstCpu = 0;
    for (int run = 1; run <= kRuns; ++run) {
        const double cpuBefore = cpuMs();
        QElapsedTimer clock;
        clock.start();
        const bool ok = operations.cmdFrame3Receive();
        const double elapsed = static_cast<double>(clock.nsecsElapsed()) / 1e6;
        const double cpu = cpuMs() - cpuBefore;
        if (!ok) {
            std::fprintf(stderr, "run %d failed\n", run);
            return 1;
        }
        std::printf("%-4d %12.1f %14.3f %12.1f %12.3f\n", run, elapsed, elapsed / wholeReadIdealMs(), cpu, cpu / elapsed);
        worstTime = std::max(worstTime, elapsed / wholeReadIdealMs());
        worstCpu = std::max(worstCpu, cpu / elapsed);
    }
    std::printf("worst elapsed/ideal %.3f (target <= 1.05), worst cpu/elapsed %.3f (target <= 0.05)\n", worstTime, worstCpu);
    sim.stop();
    return 0;
}
