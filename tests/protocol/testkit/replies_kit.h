#pragma once

#include "protocol/requests.h"

#include <QByteArray>
#include <QByteArrayView>

namespace velmor::testkit {

// What each parser is expected to take: N below nBelow, a selector in
// groupFirst..groupLast, and the request code its replies usually answer.
struct KindTraits {
    int nBelow;
    int groupFirst;
    int groupLast;   // last selector that is stored
    quint8 command;
    int n;           // N of the replies a module sends for this kind
};
KindTraits traitsOf(ReplyKind kind);

// AA AA n address echo group data..., zero-filled up to N bytes, then the
// checksum.
QByteArray makeReply(int n, int address, int echo, int group, QByteArrayView data = {});

// A reply of the given kind that its parser accepts.
QByteArray validReply(ReplyKind kind, int group, QByteArrayView data = {});

// Rewrites the checksum at offset N+3 from the frame's own N; does nothing to
// a frame too short to hold it.
void reseal(QByteArray& frame);

// The reply a module gives in the layout of the request: the request frame
// with the module's address, the command plus 0x30 and a fresh checksum.
QByteArray replyTo(const Request& request, int address);

}  // namespace velmor::testkit
