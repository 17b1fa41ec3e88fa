#pragma once

#include "faults.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QList>
#include <QObject>
#include <QTimer>

namespace velmor::sim {

inline constexpr qint64 kNsPerMs = 1'000'000;
// One byte at 4800 baud 8N1: start bit, 8 data bits, stop bit.
inline constexpr qint64 kByteNs4800 = 10 * 1'000'000'000LL / 4800;

// When byte i of a reply is due, counted from its first byte: i byte times,
// plus a gap before every piece that has begun by then.
qint64 byteOffsetNs(const Outgoing& out, int i, qint64 byteNs);

// Puts replies on the line one byte time apart (or all at once when the byte
// time is 0), one reply after the other as on a real line, in the order they
// are due. It wakes with a
// precise timer when the next byte is due and hands over every byte due by
// then; it never spins. The schedule of a reply starts when its first byte
// actually goes out, so that a late wake-up never squeezes the bytes together.
class Pacer : public QObject {
    Q_OBJECT
public:
    // `clock` is the line's clock, shared so that request and reply times agree.
    Pacer(qint64 byteNs, const QElapsedTimer& clock, QObject* parent = nullptr);

    qint64 byteNs() const { return byteNs_; }
    bool idle() const { return queue_.isEmpty(); }
    // First byte at startNs plus the reply's delay, or once the line is free;
    // a reply due earlier goes first.
    void send(const Outgoing& out, qint64 startNs);
    void stop();

signals:
    void bytesDue(const QByteArray& bytes);
    void transmitted(const QByteArray& whole);  // its last byte went out
    void drained();                             // and nothing else waits

private:
    struct Transmission {
        Outgoing out;
        qint64 startNs = 0;
        qint64 baseNs = -1;  // when its first byte went out
        int next = 0;
    };

    void wake();

    qint64 byteNs_;
    const QElapsedTimer& clock_;
    QList<Transmission> queue_;
    qint64 freeNs_ = 0;  // the line is busy until then
    QTimer timer_;
};

}  // namespace velmor::sim
