// The envelope shared by both directions, and how a reply is found in what the
// line delivered.
#include "byte_check.h"
#include "records.h"
#include "replies_kit.h"

#include "protocol/frame.h"
#include "protocol/replies.h"

#include <QTest>

using namespace velmor;
using namespace velmor::testkit;

class FrameEnvelopeTest : public QObject {
    Q_OBJECT

private slots:
    void checksumIsSumOfNBytesFromAddressModulo256();
    void sealFrameWritesHeaderAndChecksum();
    void noiseBeforeReplyIsSkippedAndReplyAccepted();
    void withoutStartByteOnlyLastByteRemains_data();
    void withoutStartByteOnlyLastByteRemains();
    void replyCompleteCountsFromFirstStartByte_data();
    void replyCompleteCountsFromFirstStartByte();
    void loneStartByteAheadIsNotTheFrame_data();
    void loneStartByteAheadIsNotTheFrame();
    void damagedPairFallsBackToTheFirstStartByte_data();
    void damagedPairFallsBackToTheFirstStartByte();
};

void FrameEnvelopeTest::checksumIsSumOfNBytesFromAddressModulo256()
{
    // 0xFF + 0x10 + 0x00 = 0x10F: only the low eight bits remain. Bytes 0..2
    // and anything past the N bytes do not count.
    const QByteArray frame = hexBytes("AA AA 03 FF 10 00 77 99");
    QCOMPARE(checksumOf(reinterpret_cast<const quint8*>(frame.constData()), 3), quint8(0x0F));
    QCOMPARE(checksumOf(reinterpret_cast<const quint8*>(frame.constData()), 4), quint8(0x86));
    QCOMPARE(checksumOf(reinterpret_cast<const quint8*>(frame.constData()), 0), quint8(0));
}

void FrameEnvelopeTest::sealFrameWritesHeaderAndChecksum()
{
    Frame frame{};
    frame[kDataOffset] = 9;
    frame[kDataOffset + 1] = 0xF0;
    sealFrame(frame, 5, 0x21, kCmdBalance, 3);
    VELMOR_COMPARE_BYTES(toBytes(frame, 9), hexBytes("AA AA 05 21 14 03 09 F0 31"));
}

void FrameEnvelopeTest::noiseBeforeReplyIsSkippedAndReplyAccepted()
{
    const QByteArray reply = validReply(ReplyKind::Info, 1, bytesOf({7}));
    const QByteArray received = bytesOf({0x00, 0x55}) + reply;

    QVERIFY(replyComplete(received, kFullFrameLength));
    const QByteArrayView frame = frameWithin(received);
    VELMOR_COMPARE_BYTES(frame, reply);

    ModuleRecord record = markedRecord();
    int status = 0;
    QVERIFY(parseInfoReply(frame, kCmdRead, record, status));
    QCOMPARE(record.busAddress, qint16(5));
    QCOMPARE(record.channels[0].excitation, qint16(7));
}

void FrameEnvelopeTest::withoutStartByteOnlyLastByteRemains_data()
{
    QTest::addColumn<QByteArray>("received");
    QTest::addColumn<QByteArray>("frame");
    QTest::newRow("noise") << hexBytes("00 55 12 34") << hexBytes("34");
    QTest::newRow("one byte") << hexBytes("7E") << hexBytes("7E");
    QTest::newRow("nothing") << QByteArray() << QByteArray();
    QTest::newRow("start byte last") << hexBytes("01 02 AA") << hexBytes("AA");
}

void FrameEnvelopeTest::withoutStartByteOnlyLastByteRemains()
{
    QFETCH(QByteArray, received);
    QFETCH(QByteArray, frame);
    VELMOR_COMPARE_BYTES(frameWithin(received), frame);

    // Whatever remains of such noise fails the very first check.
    ModuleRecord record = markedRecord();
    int status = 0;
    QVERIFY(!parseInfoReply(frameWithin(received), kCmdRead, record, status));
    QCOMPARE(status, int(kStatusBadStart));
}

void FrameEnvelopeTest::replyCompleteCountsFromFirstStartByte_data()
{
    QTest::addColumn<int>("noise");
    QTest::addColumn<int>("arrived");
    QTest::addColumn<int>("expected");
    QTest::addColumn<bool>("complete");
    QTest::newRow("54 of 55") << 0 << 54 << 55 << false;
    QTest::newRow("55 of 55") << 0 << 55 << 55 << true;
    QTest::newRow("56 of 55") << 0 << 56 << 55 << true;
    QTest::newRow("noise + 54 of 55") << 2 << 54 << 55 << false;
    QTest::newRow("noise + 55 of 55") << 2 << 55 << 55 << true;
    QTest::newRow("9 of 10") << 0 << 9 << 10 << false;
    QTest::newRow("10 of 10") << 0 << 10 << 10 << true;
    QTest::newRow("noise only") << 60 << 0 << 55 << false;
}

void FrameEnvelopeTest::replyCompleteCountsFromFirstStartByte()
{
    QFETCH(int, noise);
    QFETCH(int, arrived);
    QFETCH(int, expected);
    QFETCH(bool, complete);
    QByteArray received(noise, '\x55');
    received += makeReply(kFullN, 5, 0x41, 1).left(arrived);
    QCOMPARE(replyComplete(received, expected), complete);
}

void FrameEnvelopeTest::loneStartByteAheadIsNotTheFrame_data()
{
    QTest::addColumn<QByteArray>("ahead");
    const QByteArray earlier = makeReply(kFullN, 1, 0x41, 9);
    QTest::newRow("AA in noise") << hexBytes("00 AA 55");
    QTest::newRow("AA last of the noise") << hexBytes("00 55 AA");
    QTest::newRow("AA AA last of the noise") << hexBytes("00 AA AA");
    QTest::newRow("tail of a late reply") << earlier.mid(1);
    QTest::newRow("short tail of a late reply") << earlier.mid(1, 8);
}

void FrameEnvelopeTest::loneStartByteAheadIsNotTheFrame()
{
    QFETCH(QByteArray, ahead);
    const QByteArray reply = validReply(ReplyKind::Info, 1, bytesOf({7}));
    // However the reply trickles in, it is complete only with its last byte.
    for (int arrived = 1; arrived < kFullFrameLength; ++arrived)
        QVERIFY2(!replyComplete(ahead + reply.left(arrived), kFullFrameLength), qPrintable(QString::number(arrived)));
    const QByteArray received = ahead + reply;
    QVERIFY(replyComplete(received, kFullFrameLength));
    VELMOR_COMPARE_BYTES(frameWithin(received), reply);
    ModuleRecord record = markedRecord();
    int status = 0;
    QVERIFY(parseInfoReply(frameWithin(received), kCmdRead, record, status));
    QCOMPARE(record.channels[0].excitation, qint16(7));
}

void FrameEnvelopeTest::damagedPairFallsBackToTheFirstStartByte_data()
{
    QTest::addColumn<QByteArray>("received");
    QTest::addColumn<int>("frameStart");
    const QByteArray reply = validReply(ReplyKind::Info, 1, bytesOf({7}));
    QByteArray secondDamaged = reply;
    secondDamaged[1] = '\x2A';
    QTest::newRow("second AA damaged") << secondDamaged << 0;
    QTest::newRow("noise, then a damaged pair") << hexBytes("00 55") + secondDamaged << 2;
}

void FrameEnvelopeTest::damagedPairFallsBackToTheFirstStartByte()
{
    // With no pair anywhere, the frame starts at the first AA and fails the
    // start check, as it always has.
    QFETCH(QByteArray, received);
    QFETCH(int, frameStart);
    QVERIFY(replyComplete(received, kFullFrameLength));
    VELMOR_COMPARE_BYTES(frameWithin(received), received.mid(frameStart));
    ModuleRecord record = markedRecord();
    int status = 0;
    QVERIFY(!parseInfoReply(frameWithin(received), kCmdRead, record, status));
    QCOMPARE(status, int(kStatusBadStart));
}

QTEST_GUILESS_MAIN(FrameEnvelopeTest)
#include "frame_envelope_test.moc"
