// Frames built again from the stored record for the return and send labels.
#include "byte_check.h"
#include "records.h"
#include "replies_kit.h"

#include "protocol/rebuilt_frames.h"
#include "protocol/replies.h"
#include "protocol/requests.h"

#include <QTest>

using namespace velmor;
using namespace velmor::testkit;

class RebuiltFramesTest : public QObject {
    Q_OBJECT

private slots:
    void storedReplyRebuiltWithItsCodeIsTheReply_data();
    void storedReplyRebuiltWithItsCodeIsTheReply();
    void codeGoesIntoByteFourAndTheChecksumFollows();
    void beckonCodePutsFFInByteFour();
    void calibrationPairRebuildsItsWriteLayout();
};

// A read reply stored and rebuilt with its reply code is the module's own
// reply again, byte for byte: the reply mirrors the write layout.
void RebuiltFramesTest::storedReplyRebuiltWithItsCodeIsTheReply_data()
{
    QTest::addColumn<int>("group");
    QTest::addColumn<int>("kind");
    for (int g = 0; g < kChannelGroups; ++g) {
        QTest::addRow("channels %d", g + 1) << kGroupChannelsFirst + g << int(ReplyKind::Info);
        QTest::addRow("adjust %d", g + 1) << kGroupAdjustFirst + g << int(ReplyKind::Calibration);
    }
}

void RebuiltFramesTest::storedReplyRebuiltWithItsCodeIsTheReply()
{
    QFETCH(int, group);
    QFETCH(int, kind);
    // The marked record's values, sent as a module would send them back.
    const ModuleRecord source = markedRecord();
    Request request = group >= kGroupAdjustFirst ? writeAdjustBlockRequest(source, group - kGroupAdjustFirst)
                                                 : writeChannelGroupRequest(source, group - kGroupChannelsFirst);
    const QByteArray reply = replyTo(request, source.busAddress);
    ModuleRecord stored;
    int status = 0;
    QVERIFY(parseReply(ReplyKind(kind), reply, kCmdWrite, stored, status));
    stored.busAddress = source.busAddress;
    VELMOR_COMPARE_BYTES(rebuiltFrame(stored, Block::ofSelector(group), kCmdWrite + kReplyOffset), reply);
}

void RebuiltFramesTest::codeGoesIntoByteFourAndTheChecksumFollows()
{
    const ModuleRecord record = markedRecord();
    const QByteArray frame = rebuiltFrame(record, {Block::Kind::ChannelGroup, 2}, 0x41);
    QByteArray expected = writeChannelGroupRequest(record, 2).frame();
    expected[4] = char(0x41);
    expected[54] = char(wireSum(expected, 51));
    VELMOR_COMPARE_BYTES(frame, expected);
}

void RebuiltFramesTest::beckonCodePutsFFInByteFour()
{
    const ModuleRecord record = markedRecord();
    const QByteArray frame = rebuiltFrame(record, {Block::Kind::Information}, kCmdBeckon);
    QCOMPARE(quint8(frame[4]), quint8(0xFF));
    QCOMPARE(quint8(frame[3]), quint8(0xFF));  // the information frame goes to every module
    QCOMPARE(quint8(frame[54]), wireSum(frame, 51));
    QCOMPARE(frame.size(), 55);
}

void RebuiltFramesTest::calibrationPairRebuildsItsWriteLayout()
{
    const ModuleRecord record = markedRecord();
    QByteArray expected = writeCalibrationRequest(record, 5).frame();
    expected[4] = char(0x42);
    expected[54] = char(wireSum(expected, 51));
    VELMOR_COMPARE_BYTES(rebuiltFrame(record, {Block::Kind::CalibrationPair, 5}, 0x42), expected);
}

QTEST_APPLESS_MAIN(RebuiltFramesTest)
#include "rebuilt_frames_test.moc"
