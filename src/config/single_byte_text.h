#pragma once

#include <QtGlobal>

namespace velmor {

// Text fields of a configuration file hold one byte per character: ASCII as
// is, and the two Greek letters of the "με" unit at their places in
// Windows-1253, a single-byte code page that holds both.
inline constexpr quint8 kMicroByte = 0xEC;       // μ U+03BC
inline constexpr quint8 kEpsilonByte = 0xE5;     // ε U+03B5
inline constexpr char16_t kMicro = u'\u03BC';
inline constexpr char16_t kEpsilon = u'\u03B5';
// Stands for any character the file cannot hold, in both directions, so that
// what the operator sees after a load is what the next save writes.
inline constexpr char16_t kUnknownChar = u'?';

quint8 toSingleByte(char16_t ch);
char16_t fromSingleByte(quint8 byte);

}  // namespace velmor
