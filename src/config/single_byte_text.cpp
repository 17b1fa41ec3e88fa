#include "single_byte_text.h"

namespace velmor {

namespace {
constexpr char16_t kAsciiEnd = 0x80;
}

quint8 toSingleByte(char16_t ch)
{
    if (ch < kAsciiEnd)
        return static_cast<quint8>(ch);
    if (ch == kMicro)
        return kMicroByte;
    if (ch == kEpsilon)
        return kEpsilonByte;
    return static_cast<quint8>(kUnknownChar);
}

char16_t fromSingleByte(quint8 byte)
{
    if (byte < kAsciiEnd)
        return byte;
    if (byte == kMicroByte)
        return kMicro;
    if (byte == kEpsilonByte)
        return kEpsilon;
    return kUnknownChar;
}

}  // namespace velmor
