#include "pacing.h"

#include <algorithm>

namespace velmor::sim {

qint64 byteOffsetNs(const Outgoing& out, int i, qint64 byteNs)
{
    const auto gaps = std::count_if(out.pieceStarts.begin(), out.pieceStarts.end(), [i](int s) { return s <= i; });
    return i * byteNs + gaps * out.gapMs * kNsPerMs;
}

Pacer::Pacer(qint64 byteNs, const QElapsedTimer& clock, QObject* parent)
    : QObject(parent)
    , byteNs_(byteNs)
    , clock_(clock)
{
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    connect(&timer_, &QTimer::timeout, this, &Pacer::wake);
}

void Pacer::send(const Outgoing& out, qint64 startNs)
{
    // Replies wait their turn by the time they are due, not by the order of
    // their requests: a module answering late holds the line only once its
    // own first byte goes out, and a prompt reply to a later request goes
    // out ahead of it. The reply on the line now keeps its place.
    const auto due = [](const Transmission& t) { return t.startNs + t.out.delayMs * kNsPerMs; };
    const Transmission added{out, startNs};
    auto at = queue_.begin();
    if (at != queue_.end() && at->baseNs >= 0)
        ++at;
    at = std::find_if(at, queue_.end(), [&](const Transmission& t) { return due(t) > due(added); });
    queue_.insert(at, added);
    timer_.start(0);  // the head may have changed: wake() plans again
}

void Pacer::stop()
{
    queue_.clear();
    timer_.stop();
}

void Pacer::wake()
{
    const qint64 now = clock_.nsecsElapsed();
    QByteArray due;
    QList<QByteArray> finished;
    qint64 nextNs = -1;
    while (!queue_.isEmpty()) {
        Transmission& t = queue_.front();
        if (t.baseNs < 0) {
            const qint64 firstNs = std::max(t.startNs + t.out.delayMs * kNsPerMs, freeNs_);
            if (now < firstNs) {
                nextNs = firstNs;
                break;
            }
            t.baseNs = now;
        }
        const int size = static_cast<int>(t.out.bytes.size());
        while (t.next < size && t.baseNs + byteOffsetNs(t.out, t.next, byteNs_) <= now)
            due.append(t.out.bytes[t.next++]);
        if (t.next < size) {
            nextNs = t.baseNs + byteOffsetNs(t.out, t.next, byteNs_);
            break;
        }
        freeNs_ = size > 0 ? t.baseNs + byteOffsetNs(t.out, size - 1, byteNs_) + byteNs_ : now;
        finished.append(t.out.bytes);
        queue_.removeFirst();
    }
    if (nextNs >= 0)
        timer_.start(static_cast<int>((nextNs - now + kNsPerMs - 1) / kNsPerMs));

    // Signals last: a receiver may stop the pacer.
    if (!due.isEmpty())
        emit bytesDue(due);
    for (const QByteArray& whole : finished)
        emit transmitted(whole);
    if (!finished.isEmpty() && queue_.isEmpty())
        emit drained();
}

}  // namespace velmor::sim
