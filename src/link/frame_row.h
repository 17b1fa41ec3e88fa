#pragma once

#include <QByteArray>
#include <QMetaType>
#include <QString>

namespace velmor {

enum class FrameDirection { Out, In };

// What became of a frame. A request is Sent; the bytes that came back for it
// are Accepted or Refused by the reply checks, or TimedOut (whatever had
// arrived when the wait ran out); bytes ahead of them that answer an earlier,
// timed-out request are SkippedLate.
enum class FrameOutcome { Sent, Accepted, Refused, TimedOut, SkippedLate };

// One row of the frame log. A plain value: an exchange in a worker thread
// hands it over a queued connection.
struct FrameRow {
    qint64 msecsSinceEpoch = 0;  // when it happened, by frameLogClock()
    QString line{};              // the port's name as listed
    FrameDirection direction = FrameDirection::Out;
    QByteArray frame{};
    FrameOutcome outcome = FrameOutcome::Sent;
    int status = 0;  // the reply check's status of a Refused row (1 to 5), else 0
};

// Milliseconds since the epoch: the system clock read once, then a monotonic
// timer, so that the rows of a run never go back in time even when the
// system clock is set back. Safe from any thread.
qint64 frameLogClock();

}  // namespace velmor

Q_DECLARE_METATYPE(velmor::FrameRow)
