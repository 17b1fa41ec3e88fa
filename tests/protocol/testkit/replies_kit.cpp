#include "replies_kit.h"

#include "byte_check.h"

namespace velmor::testkit {

KindTraits traitsOf(ReplyKind kind)
{
    switch (kind) {
    case ReplyKind::Info: return {52, 0, 4, 17, 51};
    case ReplyKind::Calibration: return {52, 5, 16, 17, 51};
    case ReplyKind::Parameter: return {52, 0, 0, 17, 51};
    case ReplyKind::Short: return {7, 0, 9, 20, 6};
    }
    return {};
}

QByteArray makeReply(int n, int address, int echo, int group, QByteArrayView data)
{
    QByteArray frame = bytesOf({0xAA, 0xAA, n, address, echo, group});
    frame.append(data.toByteArray());
    frame.resize(n + 4, '\0');
    reseal(frame);
    return frame;
}

QByteArray validReply(ReplyKind kind, int group, QByteArrayView data)
{
    const KindTraits t = traitsOf(kind);
    return makeReply(t.n, 5, t.command + 0x30, group, data);
}

void reseal(QByteArray& frame)
{
    if (frame.size() < 3)
        return;
    const int n = static_cast<quint8>(frame[2]);
    if (frame.size() < n + 4)
        return;
    frame[n + 3] = static_cast<char>(wireSum(frame, n));
}

QByteArray replyTo(const Request& request, int address)
{
    QByteArray frame = request.frame();
    frame[3] = static_cast<char>(address);
    frame[4] = static_cast<char>(request.command + 0x30);
    reseal(frame);
    return frame;
}

}  // namespace velmor::testkit
