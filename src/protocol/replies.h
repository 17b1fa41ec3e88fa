#pragma once

#include "requests.h"

#include <QByteArrayView>
#include <QList>

namespace velmor {

// Why a reply was refused.
enum ParseStatus : int {
    kStatusBadStart = 1,     // first two bytes are not AA AA
    kStatusBadLength = 2,    // N too large for the kind
    kStatusBadChecksum = 3,  // sum mismatch (or the frame ends before its checksum)
    kStatusBadCommand = 4,   // echo is not the request's code plus 0x30
    kStatusBadGroup = 5,     // group selector out of the kind's range
};

// Each parser takes a frame that starts at the first AA, and the code of the
// request it answers. It checks start, length, checksum, echo and group in that
// order; only when all pass does it store into the record and return true. On
// refusal it sets parseStatus and leaves the record untouched. Kinds 2 and 3
// clear parseStatus first; kinds 1 and 4 leave it as it was until a refusal.
bool parseInfoReply(QByteArrayView frame, quint8 command, ModuleRecord& record, int& parseStatus);
bool parseCalibrationReply(QByteArrayView frame, quint8 command, ModuleRecord& record, int& parseStatus);
bool parseParameterReply(QByteArrayView frame, quint8 command, ModuleRecord& record, int& parseStatus);
bool parseShortReply(QByteArrayView frame, quint8 command, int& parseStatus);

bool parseReply(ReplyKind kind, QByteArrayView frame, quint8 command, ModuleRecord& record,
                int& parseStatus);

// The frame within what was received: from its first AA AA that is followed by
// a byte other than AA, to the end. Failing such a pair, from the first AA;
// with no AA at all, the last byte alone (both then fail the start check).
QByteArrayView frameWithin(QByteArrayView received);

// How many bytes at the start of `received` are whole, well-formed replies to
// requests that have already timed out (a module that answered too late),
// noise between them included. They are skipped rather than taken as this
// request's reply; everything else is left to the checks.
qsizetype staleReplyBytes(QByteArrayView received, const Request& request, const QList<Request>& timedOut);

// True once `expected` bytes stand in `received` counted from where its frame
// begins (as for frameWithin), so that noise ahead of a reply, a lone AA in it
// included, cannot make the reply look complete early.
bool replyComplete(QByteArrayView received, int expected);

}  // namespace velmor
