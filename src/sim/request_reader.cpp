#include "request_reader.h"

#include "protocol/frame.h"

namespace velmor::sim {
namespace {

constexpr char kStart = static_cast<char>(kFrameStart);
constexpr int kEnvelopeBytes = 4;  // AA AA N ... checksum

int lengthOf(QByteArrayView frame) { return static_cast<quint8>(frame[kLengthOffset]) + kEnvelopeBytes; }

}  // namespace

QList<ReceivedRequest> RequestReader::feed(QByteArrayView bytes, qint64 nowNs)
{
    if (!buffer_.isEmpty() && nowNs - lastNs_ >= kQuietDropNs)
        buffer_.clear();
    if (buffer_.isEmpty())
        startNs_ = nowNs;
    lastNs_ = nowNs;
    buffer_.append(bytes);

    QList<ReceivedRequest> complete;
    for (;;) {
        skipNoise();
        if (buffer_.size() <= kLengthOffset || buffer_.size() < lengthOf(buffer_))
            break;
        const int length = lengthOf(buffer_);
        complete.append({buffer_.first(length), startNs_});
        buffer_.remove(0, length);
        startNs_ = nowNs;
    }
    return complete;
}

void RequestReader::skipNoise()
{
    qsizetype start = 0;
    while (start < buffer_.size()
           && !(buffer_[start] == kStart && (start + 1 == buffer_.size() || buffer_[start + 1] == kStart)))
        ++start;
    if (start > 0) {
        buffer_.remove(0, start);
        startNs_ = lastNs_;
    }
}

bool requestIntact(QByteArrayView frame)
{
    if (frame.size() <= kLengthOffset || static_cast<quint8>(frame[0]) != kFrameStart
        || static_cast<quint8>(frame[1]) != kFrameStart || frame.size() != lengthOf(frame))
        return false;
    const int n = static_cast<quint8>(frame[kLengthOffset]);
    return checksumOf(reinterpret_cast<const quint8*>(frame.data()), n) == static_cast<quint8>(frame[n + 3]);
}

}  // namespace velmor::sim
