#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <initializer_list>

namespace velmor::testkit {

// Bytes written as hex pairs separated by blanks: "AA AA 03 05 11 00 16".
QByteArray hexBytes(const char* spaced);
QByteArray bytesOf(std::initializer_list<int> values);

// "AA AA 03 ..." in lines of 16, each line prefixed with its offset.
QString hexDump(QByteArrayView bytes);

// False (after reporting a failure that shows both frames in hex and the first
// differing offset) when the two byte sequences differ.
bool sameBytes(QByteArrayView actual, QByteArrayView expected, const char* file, int line);

// Sum of the N bytes from offset 3, modulo 256, computed here rather than with
// the code under test.
quint8 wireSum(QByteArrayView frame, int n);

}  // namespace velmor::testkit

#define VELMOR_COMPARE_BYTES(actual, expected)                                              \
    do {                                                                                    \
        if (!::velmor::testkit::sameBytes((actual), (expected), __FILE__, __LINE__))        \
            return;                                                                         \
    } while (false)
