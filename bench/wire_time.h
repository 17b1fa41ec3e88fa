#pragma once

// What the benchmarks share: the ideal wire time of a whole read at 4800 baud
// 8N1, the process's CPU time, and message boxes that go to standard error.

#include "link/operator_dialogs.h"

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
    void showMessage(const QString&, const QString& text) override { std::fprintf(stderr, "%s\n", qPrintable(text)); }
    bool confirm(const QString&, const QString&) override { return false; }
};

}  // namespace velmor::bench
