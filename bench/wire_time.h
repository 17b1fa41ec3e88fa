#pragma once

// What the benchmarks share: the ideal wire time of a whole read at 4800 baud
// 8N1, the process's CPU time, and message boxes that go to standard error.

#include "link/operations.h"

#include <QElapsedTimer>

#include <algorithm>
#include <cstdio>
#include <ctime>

namespace velmor::bench {

inline constexpr int kTurnaroundMs = 5;
inline constexpr int kWholeReadExchanges = 17;  // information, 4 groups, 4 adjust blocks, 8 pairs
inline constexpr int kBitsPerByte = 10;         // start, 8 data, stop
inline constexpr double kBaud = 4800.0;

inline double byteMs() { return 1000.0 * kBitsPerByte / kBaud; }

// Every exchange of a whole read: a 7-byte request, a 55-byte reply and the
// simulator's turnaround.
inline double wholeReadIdealMs() { return kWholeReadExchanges * ((7 + 55) * byteMs() + kTurnaroundMs); }

inline double cpuMs() { return 1000.0 * static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

class PrintedDialogs : public OperatorDialogs {
public:
    void showMessage(const QString&, const QString& text) override
    {
        ++shown;
        std::fprintf(stderr, "%s\n", qPrintable(text));
    }
    bool confirm(const QString&, const QString&) override { return false; }
    int shown = 0;
};

// The flows over one line, `device`, its module at address 1 current.
struct LineFlows {
    explicit LineFlows(const QString& device)
    {
        state.reset();
        port.setPorts({PortEntry{device, 1, device}});
        state.current().portNumber = 1;
        state.current().busAddress = 1;
    }
    SetupState state;
    ComPort port;
    PrintedDialogs dialogs;
    Operations operations{state, port, dialogs};
};

// Runs a whole read `runs` times and prints each run's elapsed time over the
// ideal wire time and CPU over elapsed, then the worst of both against the
// targets. False when a read failed.
template <typename WholeRead>
bool printWholeReadRuns(int runs, double timeTarget, WholeRead read)
{
    std::printf("ideal wire time: %d x ((7 + 55) bytes x %.4f ms + %d ms turnaround) = %.1f ms\n", kWholeReadExchanges,
                byteMs(), kTurnaroundMs, wholeReadIdealMs());
    std::printf("%-4s %12s %14s %12s %12s\n", "run", "elapsed ms", "elapsed/ideal", "cpu ms", "cpu/elapsed");
    double worstTime = 0, worstCpu = 0;
    for (int run = 1; run <= runs; ++run) {
        const double cpuBefore = cpuMs();
        QElapsedTimer clock;
        clock.start();
        const bool ok = read();
        const double elapsed = static_cast<double>(clock.nsecsElapsed()) / 1e6;
        const double cpu = cpuMs() - cpuBefore;
        if (!ok) {
            std::fprintf(stderr, "run %d failed\n", run);
            return false;
        }
        std::printf("%-4d %12.1f %14.3f %12.1f %12.3f\n", run, elapsed, elapsed / wholeReadIdealMs(), cpu, cpu / elapsed);
        worstTime = std::max(worstTime, elapsed / wholeReadIdealMs());
        worstCpu = std::max(worstCpu, cpu / elapsed);
    }
    std::printf("worst elapsed/ideal %.3f (target <= %.2f), worst cpu/elapsed %.3f (target <= 0.05)\n", worstTime,
                timeTarget, worstCpu);
    return true;
}

}  // namespace velmor::bench
