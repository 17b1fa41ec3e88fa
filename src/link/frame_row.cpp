#include "frame_row.h"

#include <QDateTime>
#include <QElapsedTimer>

namespace velmor {
namespace {

struct Clock {
    Clock() { since.start(); }
    qint64 start = QDateTime::currentMSecsSinceEpoch();
    QElapsedTimer since;
};

}  // namespace

qint64 frameLogClock()
{
    static const Clock clock;  // made once, thread-safe
    return clock.start + clock.since.elapsed();
}

}  // namespace velmor
