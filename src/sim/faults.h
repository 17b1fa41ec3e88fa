#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringView>

#include <optional>

namespace velmor::sim {

enum class FaultKind {
    Noise,     // 00 55 ahead of the reply
    Checksum,  // last byte one off
    Echo,      // the command itself instead of command + 0x30 (checksum still right)
    Truncate,  // the last `param` bytes missing (default 1)
    Silence,   // no reply
    Late,      // reply `param` ms later than usual (default 1500, past the wait)
    Split,     // reply in three pieces with `param` ms between them (default 100)
    Dropoff,   // answers its first `at` exchanges, silent from then on
    Tail,      // the reply's own last `param` bytes ahead of it (default 54: a lone AA and the
               // rest), as a line server passes on the end of a reply that came too late
};

// A fault of the module that started at `address`. `at` 0 means every exchange
// of that module, n its n-th only (1-based, counting the requests it answered
// or should have answered); for Dropoff it is the number of exchanges before
// the module goes quiet. A negative `param` takes the kind's default.
struct Fault {
    int address = 0;
    FaultKind kind = FaultKind::Silence;
    int at = 0;
    int param = -1;

    bool operator==(const Fault&) const = default;
};

// A module's reply as it leaves for the line: its bytes and its timing on top
// of the line's turnaround.
struct Outgoing {
    QByteArray bytes{};
    int delayMs = 0;           // extra wait before the first byte
    int gapMs = 0;             // wait before each piece after the first
    QList<int> pieceStarts{};  // indices of bytes that begin a new piece

    bool operator==(const Outgoing&) const = default;
};

class FaultPlan {
public:
    void add(const Fault& fault) { faults_.append(fault); }
    void clear() { faults_.clear(); }

    // The module stays silent on this exchange (and does not act on the request).
    bool silent(int address, int exchange) const;
    // The reply with every fault of this exchange applied.
    Outgoing shape(int address, int exchange, const QByteArray& reply) const;

private:
    QList<const Fault*> active(int address, int exchange) const;

    QList<Fault> faults_;
};

// Replies that several modules send at once overlap on the shared line: each
// byte is the AND of theirs (the idle line is high, a 0 bit wins), the timing
// is the slowest one's.
Outgoing collide(const QList<Outgoing>& replies);

// "ADDR:KIND[:AT[:PARAM]]", e.g. "3:late", "3:truncate:2:5", "1:dropoff:4".
std::optional<Fault> parseFault(QStringView text, QString* error);
// The kinds by the names parseFault takes, in enum order.
QStringList faultKindNames();

}  // namespace velmor::sim
