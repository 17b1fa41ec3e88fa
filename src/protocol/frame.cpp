#include "frame.h"

namespace velmor {

quint8 checksumOf(const quint8* frame, int n)
{
    unsigned sum = 0;
    for (int i = 0; i < n; ++i)
        sum += frame[kAddressOffset + i];
    return static_cast<quint8>(sum & 0xFF);
}

void sealFrame(Frame& frame, int n, quint8 address, quint8 command, quint8 group)
{
    frame[0] = kFrameStart;
    frame[1] = kFrameStart;
    frame[kLengthOffset] = static_cast<quint8>(n);
    frame[kAddressOffset] = address;
    frame[kCommandOffset] = command;
    frame[kGroupOffset] = group;
    frame[static_cast<size_t>(n + 3)] = checksumOf(frame.data(), n);
}

QByteArray toBytes(const Frame& frame, int length)
{
    return QByteArray(reinterpret_cast<const char*>(frame.data()), length);
}

}  // namespace velmor
