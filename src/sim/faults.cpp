#include "faults.h"

#include "protocol/frame.h"

#include <algorithm>

namespace velmor::sim {
namespace {

struct KindInfo {
    FaultKind kind;
    const char* name;
    int defaultParam;
};

constexpr KindInfo kKinds[] = {
    {FaultKind::Noise, "noise", 0},     {FaultKind::Checksum, "checksum", 0},
    {FaultKind::Echo, "echo", 0},       {FaultKind::Truncate, "truncate", 1},
    {FaultKind::Silence, "silence", 0}, {FaultKind::Late, "late", 1500},
    {FaultKind::Split, "split", 100},   {FaultKind::Dropoff, "dropoff", 0},
    {FaultKind::Tail, "tail", kFullFrameLength - 1},
};

const KindInfo& infoOf(FaultKind kind)
{
    return *std::find_if(std::begin(kKinds), std::end(kKinds), [kind](const KindInfo& k) { return k.kind == kind; });
}

int paramOf(const Fault& f) { return f.param < 0 ? infoOf(f.kind).defaultParam : f.param; }

const QByteArray kNoise("\x00\x55", 2);
constexpr int kPieces = 3;
constexpr quint8 kIdleLine = 0xFF;

quint8& byteAt(QByteArray& bytes, qsizetype i) { return reinterpret_cast<quint8&>(bytes[i]); }

// The reply answers with the request's own command; the checksum is made
// right again so that only the echo is wrong.
void breakEcho(QByteArray& frame)
{
    byteAt(frame, kCommandOffset) = static_cast<quint8>(byteAt(frame, kCommandOffset) - kReplyOffset);
    const int n = byteAt(frame, kLengthOffset);
    byteAt(frame, n + 3) = checksumOf(reinterpret_cast<const quint8*>(frame.constData()), n);
}

}  // namespace

QList<const Fault*> FaultPlan::active(int address, int exchange) const
{
    QList<const Fault*> found;
    for (const Fault& f : faults_)
        if (f.address == address && f.kind != FaultKind::Dropoff && (f.at == 0 || f.at == exchange))
            found.append(&f);
    return found;
}

bool FaultPlan::silent(int address, int exchange) const
{
    for (const Fault& f : faults_) {
        if (f.address != address)
            continue;
        if (f.kind == FaultKind::Dropoff && exchange > f.at)
            return true;
    }
    const QList<const Fault*> now = active(address, exchange);
    return std::any_of(now.begin(), now.end(), [](const Fault* f) { return f->kind == FaultKind::Silence; });
}

Outgoing FaultPlan::shape(int address, int exchange, const QByteArray& reply) const
{
    const QList<const Fault*> now = active(address, exchange);
    auto find = [&now](FaultKind kind) -> const Fault* {
        const auto it = std::find_if(now.begin(), now.end(), [kind](const Fault* f) { return f->kind == kind; });
        return it == now.end() ? nullptr : *it;
    };

    // Fixed order: damage the frame, then put noise ahead, then time it.
    Outgoing out;
    out.bytes = reply;
    if (find(FaultKind::Echo))
        breakEcho(out.bytes);
    if (find(FaultKind::Checksum))
        byteAt(out.bytes, out.bytes.size() - 1) += 1;
    if (const Fault* f = find(FaultKind::Truncate))
        out.bytes.chop(std::min<qsizetype>(paramOf(*f), out.bytes.size()));
    if (const Fault* f = find(FaultKind::Tail))
        out.bytes.prepend(out.bytes.right(paramOf(*f)));
    if (find(FaultKind::Noise))
        out.bytes.prepend(kNoise);
    if (const Fault* f = find(FaultKind::Split)) {
        out.gapMs = paramOf(*f);
        for (int piece = 1; piece < kPieces; ++piece)
            out.pieceStarts.append(static_cast<int>(out.bytes.size() * piece / kPieces));
    }
    if (const Fault* f = find(FaultKind::Late))
        out.delayMs = paramOf(*f);
    return out;
}

Outgoing collide(const QList<Outgoing>& replies)
{
    Outgoing out;
    for (const Outgoing& r : replies) {
        if (out.bytes.size() < r.bytes.size())
            out.bytes.append(QByteArray(r.bytes.size() - out.bytes.size(), static_cast<char>(kIdleLine)));
        for (qsizetype i = 0; i < r.bytes.size(); ++i)
            byteAt(out.bytes, i) &= static_cast<quint8>(r.bytes[i]);
        out.delayMs = std::max(out.delayMs, r.delayMs);
        out.gapMs = std::max(out.gapMs, r.gapMs);
        out.pieceStarts.append(r.pieceStarts);
    }
    std::sort(out.pieceStarts.begin(), out.pieceStarts.end());
    out.pieceStarts.erase(std::unique(out.pieceStarts.begin(), out.pieceStarts.end()), out.pieceStarts.end());
    return out;
}

std::optional<Fault> parseFault(QStringView text, QString* error)
{
    auto fail = [&](const QString& why) -> std::optional<Fault> {
        if (error)
            *error = QStringLiteral("fault \"%1\": %2").arg(text, why);
        return std::nullopt;
    };
    const QList<QStringView> parts = text.split(QLatin1Char(':'));
    if (parts.size() < 2 || parts.size() > 4)
        return fail(QStringLiteral("expected ADDR:KIND[:AT[:PARAM]]"));

    Fault f;
    bool ok = false;
    f.address = parts[0].toInt(&ok);
    if (!ok || f.address < 0 || f.address >= kBroadcastAddress)
        return fail(QStringLiteral("the address must be 0 to 254"));
    const auto kind = std::find_if(std::begin(kKinds), std::end(kKinds),
                                   [&](const KindInfo& k) { return parts[1] == QLatin1String(k.name); });
    if (kind == std::end(kKinds))
        return fail(QStringLiteral("unknown kind; one of %1").arg(faultKindNames().join(QStringLiteral(", "))));
    f.kind = kind->kind;
    if (parts.size() > 2 && !parts[2].isEmpty()) {
        f.at = parts[2].toInt(&ok);
        if (!ok || f.at < 0)
            return fail(QStringLiteral("AT must be a number from 0"));
    }
    if (parts.size() > 3) {
        f.param = parts[3].toInt(&ok);
        if (!ok || f.param < 0)
            return fail(QStringLiteral("PARAM must be a number from 0"));
    }
    return f;
}

QStringList faultKindNames()
{
    QStringList names;
    for (const KindInfo& k : kKinds)
        names.append(QLatin1String(k.name));
    return names;
}

}  // namespace velmor::sim
