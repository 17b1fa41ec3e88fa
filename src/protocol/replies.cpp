#include "replies.h"

#include "blocks.h"

#include <algorithm>

namespace velmor {
namespace {

struct Limits {
    int nBelow;        // N must be less than this
    int payloadBytes;  // size of the zeroed payload buffer
    int groupFirst;
    int groupLast;
};

constexpr Limits kInfoLimits{52, kPayloadBytes, 0, 4};
constexpr Limits kCalibrationLimits{52, kPayloadBytes, 5, 20};
constexpr Limits kParameterLimits{52, kPayloadBytes, 0, 0};
constexpr Limits kShortLimits{7, kAckLength, 0, 9};

quint8 byteAt(QByteArrayView frame, qsizetype i) { return static_cast<quint8>(frame[i]); }

// The six checks. On success the payload holds frame bytes 3..N+3.
bool check(QByteArrayView frame, quint8 command, const Limits& limits, Payload& p, int& status)
{
    if (frame.size() < 2 || byteAt(frame, 0) != kFrameStart || byteAt(frame, 1) != kFrameStart) {
        status = kStatusBadStart;
        return false;
    }
    if (frame.size() <= kLengthOffset || byteAt(frame, kLengthOffset) >= limits.nBelow) {
        status = kStatusBadLength;
        return false;
    }
    const int n = byteAt(frame, kLengthOffset);
    if (frame.size() < n + 4) {
        status = kStatusBadChecksum;
        return false;
    }
    unsigned sum = 0;
    for (int i = 0; i < n; ++i)
        sum += byteAt(frame, kAddressOffset + i);
    if (static_cast<quint8>(sum & 0xFF) != byteAt(frame, n + 3)) {
        status = kStatusBadChecksum;
        return false;
    }
    p.fill(0);
    for (int i = 0; i <= n && i < limits.payloadBytes; ++i)
        p[static_cast<size_t>(i)] = byteAt(frame, kAddressOffset + i);
    if (p[1] != static_cast<quint8>(command + kReplyOffset)) {
        status = kStatusBadCommand;
        return false;
    }
    if (p[2] < limits.groupFirst || p[2] > limits.groupLast) {
        status = kStatusBadGroup;
        return false;
    }
    return true;
}

}  // namespace

bool parseInfoReply(QByteArrayView frame, quint8 command, ModuleRecord& record, int& parseStatus)
{
    Payload p;
    if (!check(frame, command, kInfoLimits, p, parseStatus))
        return false;
    record.busAddress = p[0];
    if (p[2] == kGroupInfo)
        takeShortInfoBlock(p, record);
    else
        takeChannelGroup(p, p[2] - kGroupChannelsFirst, record);
    return true;
}

bool parseCalibrationReply(QByteArrayView frame, quint8 command, ModuleRecord& record, int& parseStatus)
{
    parseStatus = 0;
    Payload p;
    if (!check(frame, command, kCalibrationLimits, p, parseStatus))
        return false;
    const int k = p[2] - kGroupAdjustFirst;
    const int pair = k - kChannelGroups;
    // Selectors 17..20 would name channels past the sixteenth; nothing is stored.
    if (pair >= kCalibrationPairs) {
        parseStatus = kStatusBadGroup;
        return false;
    }
    record.busAddress = p[0];
    if (k < kChannelGroups)
        takeAdjustBlock(p, k, record);
    else
        takeCalibrationPair(p, pair, record);
    return true;
}

bool parseParameterReply(QByteArrayView frame, quint8 command, ModuleRecord& record, int& parseStatus)
{
    parseStatus = 0;
    Payload p;
    if (!check(frame, command, kParameterLimits, p, parseStatus))
        return false;
    record.busAddress = p[0];
    takeInfoBlock(p, record);
    return true;
}

bool parseShortReply(QByteArrayView frame, quint8 command, int& parseStatus)
{
    Payload p;
    return check(frame, command, kShortLimits, p, parseStatus);
}

bool parseReply(ReplyKind kind, QByteArrayView frame, quint8 command, ModuleRecord& record, int& parseStatus)
{
    switch (kind) {
    case ReplyKind::Info: return parseInfoReply(frame, command, record, parseStatus);
    case ReplyKind::Calibration: return parseCalibrationReply(frame, command, record, parseStatus);
    case ReplyKind::Parameter: return parseParameterReply(frame, command, record, parseStatus);
    case ReplyKind::Short: return parseShortReply(frame, command, parseStatus);
    }
    return false;
}

namespace {

bool isStartByte(QByteArrayView v, qsizetype i) { return i < v.size() && byteAt(v, i) == kFrameStart; }

// A frame can begin at `i`: AA AA and then a byte other than AA (a length byte
// never is), or as much of that as has arrived so far.
bool beginsFrame(QByteArrayView v, qsizetype i)
{
    const qsizetype left = v.size() - i;
    return isStartByte(v, i) && (left == 1 || (isStartByte(v, i + 1) && (left == 2 || !isStartByte(v, i + 2))));
}

// Where a frame begins in `received`, looking from `from`: the first place that
// beginsFrame; failing one, the first AA; -1 when there is none. A lone AA,
// such as the tail of a reply that came too late, is not taken for the start
// of a frame, nor is an AA of noise just ahead of the reply's own pair.
qsizetype frameStart(QByteArrayView received, qsizetype from)
{
    const auto next = [&](qsizetype i) { return received.indexOf(static_cast<char>(kFrameStart), i); };
    const qsizetype first = next(from);
    for (qsizetype i = first; i >= 0; i = next(i + 1)) {
        if (beginsFrame(received, i))
            return i;
    }
    return first;
}

}  // namespace

QByteArrayView frameWithin(QByteArrayView received)
{
    const qsizetype start = frameStart(received, 0);
    if (start >= 0)
        return received.sliced(start);
    return received.isEmpty() ? received : received.sliced(received.size() - 1);
}

namespace {

// A complete frame with a valid checksum at the start of `v`, or 0.
qsizetype wellFormedLength(QByteArrayView v)
{
    if (v.size() < 4 || byteAt(v, 0) != kFrameStart || byteAt(v, 1) != kFrameStart)
        return 0;
    const int n = byteAt(v, kLengthOffset);
    if (n < 3 || n >= kPayloadBytes || v.size() < n + 4)
        return 0;
    unsigned sum = 0;
    for (int i = 0; i < n; ++i)
        sum += byteAt(v, kAddressOffset + i);
    return static_cast<quint8>(sum & 0xFF) == byteAt(v, n + 3) ? n + 4 : 0;
}

// The frame is the reply a module gives to this request.
bool answers(QByteArrayView frame, const Request& request)
{
    const quint8 address = request.bytes[kAddressOffset];
    return byteAt(frame, kCommandOffset) == static_cast<quint8>(request.command + kReplyOffset)
        && byteAt(frame, kGroupOffset) == request.bytes[kGroupOffset]
        && (address == kBroadcastAddress || byteAt(frame, kAddressOffset) == address);
}

bool answersAny(QByteArrayView frame, const QList<Request>& requests)
{
    return std::any_of(requests.begin(), requests.end(), [&](const Request& r) { return answers(frame, r); });
}

}  // namespace

qsizetype staleReplyBytes(QByteArrayView received, const Request& request, const QList<Request>& timedOut)
{
    qsizetype skipped = 0;
    qsizetype pos = frameStart(received, 0);
    while (pos >= 0) {
        const QByteArrayView rest = received.sliced(pos);
        const qsizetype length = wellFormedLength(rest);
        if (length == 0 || answers(rest, request) || !answersAny(rest, timedOut))
            break;
        skipped = pos + length;
        pos = frameStart(received, skipped);
    }
    return skipped;
}

bool replyComplete(QByteArrayView received, int expected)
{
    const qsizetype start = frameStart(received, 0);
    return start >= 0 && received.size() - start >= expected;
}

}  // namespace velmor
