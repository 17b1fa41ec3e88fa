#pragma once

#include "link/exchange.h"

#include <QElapsedTimer>
#include <QString>

namespace velmor::testing {

// How long the window goes without a sign of life: an operator event
// dispatched or handled, a request sent, an exchange ended. Each sign says
// how long the next may take: the longest wait the program makes on its own
// (the 2000 ms time-out, or the balance's settling after a balance reply)
// plus a second. A longer silence is a hang, and the first one is kept.
class Liveness {
public:
    static constexpr int kSpareMs = 1000;
    static constexpr int kAfterAnythingMs = Exchange::kOverAfterSearch + kSpareMs;

    void start()
    {
        quiet_.start();
        allowedMs_ = kAfterAnythingMs;
    }

    // A sign of life; `nextWithinMs` is the time the next one has.
    void beat(const QString& during, int nextWithinMs = kAfterAnythingMs)
    {
        note(during);
        quiet_.restart();
        allowedMs_ = nextWithinMs;
    }

    // Looked at while nothing happens: a silence already too long is a hang
    // even before it ends.
    void look(const QString& during) { note(during); }

    qint64 overdueMs() const { return quiet_.elapsed() - allowedMs_; }
    qint64 longestQuietMs() const { return longestMs_; }
    int longestQuietAllowedMs() const { return longestAllowedMs_; }
    QString longestQuietDuring() const { return longestDuring_; }
    QString firstHang() const { return hang_; }

private:
    void note(const QString& during)
    {
        const qint64 quiet = quiet_.elapsed();
        if (quiet > longestMs_) {
            longestMs_ = quiet;
            longestAllowedMs_ = allowedMs_;
            longestDuring_ = during;
        }
        if (quiet > allowedMs_ && hang_.isEmpty())
            hang_ = QStringLiteral("%1 ms without a sign of life (at most %2 ms allowed) during %3")
                        .arg(quiet)
                        .arg(allowedMs_)
                        .arg(during);
    }

    QElapsedTimer quiet_;
    int allowedMs_ = kAfterAnythingMs;
    qint64 longestMs_ = 0;
    int longestAllowedMs_ = kAfterAnythingMs;
    QString longestDuring_;
    QString hang_;
};

}  // namespace velmor::testing
