// A frame as the hexadecimal text the operator reads.
#include "byte_check.h"
#include "records.h"

#include "protocol/frame_text.h"
#include "protocol/requests.h"

#include <QTest>

using namespace velmor;
using namespace velmor::testkit;

class FrameTextTest : public QObject {
    Q_OBJECT

private slots:
    void byteIsTwoCapitalDigitsAndTwoBlanks_data();
    void byteIsTwoCapitalDigitsAndTwoBlanks();
    void sevenByteRequestIsOneLine();
    void fullFrameBreaksExactlyThreeTimesAfterEvery16Bytes();
    void onlyFullFramesBreak_data();
    void onlyFullFramesBreak();
};

void FrameTextTest::byteIsTwoCapitalDigitsAndTwoBlanks_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("0x0A") << 0x0A << "0A  ";
    QTest::newRow("0") << 0x00 << "00  ";
    QTest::newRow("0xAA") << 0xAA << "AA  ";
    QTest::newRow("0xF0") << 0xF0 << "F0  ";
    QTest::newRow("0xFF") << 0xFF << "FF  ";
    QTest::newRow("0x5") << 0x05 << "05  ";
}

void FrameTextTest::byteIsTwoCapitalDigitsAndTwoBlanks()
{
    QFETCH(int, value);
    QFETCH(QString, text);
    QCOMPARE(frameToText(bytesOf({value})), text);
}

void FrameTextTest::sevenByteRequestIsOneLine()
{
    // Every byte keeps its two blanks, the last one too.
    QCOMPARE(frameToText(beckonRequest().frame()), QStringLiteral("AA  AA  03  FF  10  00  0F  "));
}

void FrameTextTest::fullFrameBreaksExactlyThreeTimesAfterEvery16Bytes()
{
    QByteArray frame;
    for (int i = 0; i < 55; ++i)
        frame += bytesOf({i});
    const QString text = frameToText(frame);
    QCOMPARE(text.count(QStringLiteral("\r\n")), 3);
    QCOMPARE(text.count(QLatin1Char('\r')), 3);
    QCOMPARE(text.count(QLatin1Char('\n')), 3);

    const QStringList lines = text.split(QStringLiteral("\r\n"));
    QCOMPARE(lines.size(), 4);
    QCOMPARE(lines[0], QStringLiteral("00  01  02  03  04  05  06  07  08  09  0A  0B  0C  0D  0E  0F  "));
    QCOMPARE(lines[1].left(8), QStringLiteral("10  11  "));
    QCOMPARE(lines[2].left(8), QStringLiteral("20  21  "));
    QCOMPARE(lines[1].size(), 64);
    QCOMPARE(lines[2].size(), 64);
    QCOMPARE(lines[3], QStringLiteral("30  31  32  33  34  35  36  "));
}

void FrameTextTest::onlyFullFramesBreak_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("breaks");
    QTest::newRow("10-byte balance request") << 10 << 0;
    QTest::newRow("16 bytes") << 16 << 0;
    QTest::newRow("54 bytes") << 54 << 0;
    QTest::newRow("55 bytes") << 55 << 3;
    QTest::newRow("56 bytes") << 56 << 0;
    QTest::newRow("nothing") << 0 << 0;
}

void FrameTextTest::onlyFullFramesBreak()
{
    QFETCH(int, length);
    QFETCH(int, breaks);
    const QString text = frameToText(QByteArray(length, '\xAA'));
    QCOMPARE(text.count(QStringLiteral("\r\n")), breaks);
    QCOMPARE(text.size(), 4 * length + 2 * breaks);
}

QTEST_GUILESS_MAIN(FrameTextTest)
#include "frame_text_test.moc"
