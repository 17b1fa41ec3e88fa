// Searches four lines, modules on two of them, each a velmor-sim process
// pacing at the real 4800 baud 8N1: every line alone, all four one after
// another, and all four at once. Prints the times and the ratio of the
// search of all lines at once to the slowest line's search alone (target at
// most 1.1), and checks that both searches find the same modules in the same
// order.
#include "link/concurrent_search.h"
#include "link/module_search.h"
#include "support/sim_process.h"
#include "wire_time.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <algorithm>
#include <array>
#include <cstdio>
#include <memory>

using namespace velmor;
using namespace velmor::bench;

namespace {

// Each line's modules ("ADDRESS:MODEL"). Two lines hold one module each at
// an address past those searched, so that they stay silent.
const std::array<QStringList, 4> kLines = {
    QStringList{QStringLiteral("200:TM-A4")},
    QStringList{QStringLiteral("1:TM-C16")},
    QStringList{QStringLiteral("200:TM-A4")},
    QStringList{QStringLiteral("3:TM-A4"), QStringLiteral("7:TM-B8")},
};

struct Searched {
    double seconds = 0;
    QStringList modules;  // "PORT ADDRESS MODEL", in table order
};

// One search over `ports` with a module table of its own.
template <typename Search, typename Run>
Searched timeSearch(const QList<PortEntry>& ports, Run run)
{
    SetupState state;
    state.reset();
    state.languageMode = 2;  // English
    ComPort port;
    port.setPorts(ports);
    PrintedDialogs dialogs;
    Operations operations(state, port, dialogs);
    Search search(operations, dialogs);
    QElapsedTimer clock;
    clock.start();
    const int found = run(search, ports);
    Searched searched{static_cast<double>(clock.nsecsElapsed()) / 1e9, {}};
    for (int i = 0; i < found; ++i) {
        const ModuleRecord& m = state.table[static_cast<size_t>(i)];
        searched.modules << QStringLiteral("%1 %2 %3").arg(m.portNumber).arg(m.busAddress).arg(trimmedText(m.modelName));
    }
    return searched;
}

Searched oneByOne(const QList<PortEntry>& ports)
{
    return timeSearch<ModuleSearch>(ports, [](ModuleSearch& s, auto& p) { return s.searchLinesAndReport(p, p.first().number); });
}

Searched allAtOnce(const QList<PortEntry>& ports)
{
    return timeSearch<ConcurrentSearch>(ports,
                                        [](ConcurrentSearch& s, auto& p) { return s.searchAllAtOnce(p, p.first().number); });
}

}  // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    std::array<std::unique_ptr<testing::SimProcess>, 4> sims;
    QList<PortEntry> ports;
    for (size_t i = 0; i < kLines.size(); ++i) {
        sims[i] = std::make_unique<testing::SimProcess>();
        QStringList arguments{QStringLiteral("--name"), QStringLiteral("SIM%1").arg(i + 1), QStringLiteral("--turnaround"),
                              QString::number(kTurnaroundMs), QStringLiteral("--log"), QStringLiteral("/dev/null")};
        for (const QString& module : kLines[i])
            arguments << QStringLiteral("--module") << module;
        if (!sims[i]->start(arguments)) {
            std::fprintf(stderr, "velmor-sim did not start: %s\n", qPrintable(sims[i]->error()));
            return 1;
        }
        ports.append(PortEntry{sims[i]->portName(), static_cast<int>(i) + 1, sims[i]->linkPath()});
    }

    std::printf("search of four lines, modules on two, 4800 baud 8N1 paced simulators in their own processes\n");
    double slowest = 0;
    for (const PortEntry& port : ports) {
        const Searched alone = oneByOne({port});
        std::printf("%-6s alone: %6.2f s, %lld modules\n", qPrintable(port.name), alone.seconds,
                    static_cast<long long>(alone.modules.size()));
        slowest = std::max(slowest, alone.seconds);
    }
    const Searched serial = oneByOne(ports);
    const Searched parallel = allAtOnce(ports);
    std::printf("one line after another: %6.2f s (%.2f x the slowest line)\n", serial.seconds, serial.seconds / slowest);
    std::printf("all lines at once:      %6.2f s (%.3f x the slowest line, target <= 1.1)\n", parallel.seconds,
                parallel.seconds / slowest);
    std::printf("modules one after another: %s\n", qPrintable(serial.modules.join(QStringLiteral(", "))));
    std::printf("modules all at once:        %s\n", qPrintable(parallel.modules.join(QStringLiteral(", "))));
    const bool same = serial.modules == parallel.modules && serial.modules.size() == 3;
    std::printf("same modules in the same order: %s\n", same ? "yes" : "NO");
    for (auto& sim : sims)
        sim->stop();
    return same ? 0 : 1;
}
