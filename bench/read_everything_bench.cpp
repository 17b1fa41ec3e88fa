// Reads a 16-channel module wholly, 17 exchanges, against velmor-sim pacing its
// bytes at the real 4800 baud 8N1, and prints how close the elapsed time comes
// to the ideal wire time and how much CPU the waiting costs.
#include "link/operations.h"
#include "support/sim_process.h"
#include "wire_time.h"

#include <QCoreApplication>

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
    const bool ok = printWholeReadRuns(kRuns, 1.05, [&] { return operations.cmdFrame3Receive(); });
    sim.stop();
    return ok ? 0 : 1;
}
