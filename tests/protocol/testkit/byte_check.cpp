#include "byte_check.h"

#include <QStringList>
#include <QTest>

namespace velmor::testkit {

QByteArray hexBytes(const char* spaced)
{
    return QByteArray::fromHex(QByteArray(spaced).replace(' ', QByteArray()));
}

QByteArray bytesOf(std::initializer_list<int> values)
{
    QByteArray out;
    for (int v : values)
        out.append(static_cast<char>(v & 0xFF));
    return out;
}

QString hexDump(QByteArrayView bytes)
{
    if (bytes.isEmpty())
        return QStringLiteral("    (no bytes)");
    QStringList lines;
    for (qsizetype start = 0; start < bytes.size(); start += 16) {
        const QByteArray line = bytes.sliced(start, std::min<qsizetype>(16, bytes.size() - start))
                                    .toByteArray()
                                    .toHex(' ')
                                    .toUpper();
        lines << QStringLiteral("    %1: %2").arg(start, 3, 10, QLatin1Char('0')).arg(QLatin1String(line));
    }
    return lines.join(QLatin1Char('\n'));
}

bool sameBytes(QByteArrayView actual, QByteArrayView expected, const char* file, int line)
{
    if (actual == expected)
        return true;
    qsizetype first = 0;
    while (first < actual.size() && first < expected.size() && actual[first] == expected[first])
        ++first;
    const QString message = QStringLiteral("Frames differ from offset %1 (lengths: actual %2, expected %3)\n"
                                           "  expected:\n%4\n  actual:\n%5")
                                .arg(first)
                                .arg(actual.size())
                                .arg(expected.size())
                                .arg(hexDump(expected), hexDump(actual));
    QTest::qFail(qPrintable(message), file, line);
    return false;
}

quint8 wireSum(QByteArrayView frame, int n)
{
    unsigned sum = 0;
    for (int i = 0; i < n; ++i)
        sum += static_cast<quint8>(frame[3 + i]);
    return static_cast<quint8>(sum % 256);
}

}  // namespace velmor::testkit
