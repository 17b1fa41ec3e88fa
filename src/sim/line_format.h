#pragma once

#include <QString>

struct termios;

namespace velmor::sim {

// The settings a serial line is set to: what a program on the far side of
// the pseudo-terminal asked for.
struct LineFormat {
    int baudRate = 0;  // 0 for a rate that has no number here
    int dataBits = 8;
    char parity = 'N';  // N, E or O
    int stopBits = 1;

    // "4800 8N1"
    QString text() const;
    bool operator==(const LineFormat&) const = default;
};

LineFormat lineFormatOf(const termios& settings);

}  // namespace velmor::sim
