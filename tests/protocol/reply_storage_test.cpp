// What an accepted reply stores, field by field, from known payload bytes.
// p(i) below is payload byte i, that is frame byte 3 + i.
#include "byte_check.h"
#include "records.h"
#include "replies_kit.h"

#include "model/models.h"
#include "protocol/replies.h"

#include <QTest>

using namespace velmor;
using namespace velmor::testkit;

namespace {

constexpr int kModuleAddress = 0x0B;

// A reply whose data bytes (payload 3..50) all differ from one another in
// value pattern, so that an off-by-one in any layout shows.
struct Reply {
    QByteArray frame;
    int p(int i) const { return quint8(frame[3 + i]); }
    int p16(int i) const { return p(i) + 256 * p(i + 1); }
};

Reply replyWith(int echo, int group)
{
    QByteArray data;
    for (int i = 0; i < 48; ++i)
        data += bytesOf({(i * 37 + 11) & 0xFF});
    return {makeReply(51, kModuleAddress, echo, group, data)};
}

ChannelRecord& ch(ModuleRecord& r, int c) { return r.channels[static_cast<size_t>(c)]; }

void expectModuleInfo(ModuleRecord& e, const Reply& r, int numberAt)
{
    e.busAddress = kModuleAddress;
    e.moduleNumber = r.p16(numberAt);
    for (int i = 0; i < kCapabilityCount; ++i)
        e.*kCapabilityFields[i] = static_cast<quint8>(r.p(numberAt + 2 + i));
    for (int i = 0; i <= 34; ++i)
        e.infoTail[static_cast<size_t>(i)] = static_cast<quint8>(r.p(numberAt + 13 + i));
}

}  // namespace

class ReplyStorageTest : public QObject {
    Q_OBJECT

private slots:
    void kindOneChannelGroupFillsItsFourChannelsOnly_data();
    void kindOneChannelGroupFillsItsFourChannelsOnly();
    void kindOneGroupZeroFillsModuleInformationOnly();
    void kindThreeRecognisesModelAndReadsInfoOneByteLater_data();
    void kindThreeRecognisesModelAndReadsInfoOneByteLater();
    void infoTailByte34HoldsTheReplyChecksum();
    void moduleNumber65535ReadsBackAs65535_data();
    void moduleNumber65535ReadsBackAs65535();
    void kindTwoAdjustBlockFillsTableEntriesZeroToThree_data();
    void kindTwoAdjustBlockFillsTableEntriesZeroToThree();
    void kindTwoCalibrationLayoutFollowsModelCode_data();
    void kindTwoCalibrationLayoutFollowsModelCode();
    void shortReplyIsAcceptedAndStoresNothing();
};

void ReplyStorageTest::kindOneChannelGroupFillsItsFourChannelsOnly_data()
{
    QTest::addColumn<int>("group");
    QTest::addColumn<int>("firstChannel");
    QTest::newRow("group 1 fills channels 0..3") << 1 << 0;
    QTest::newRow("group 2 fills channels 4..7") << 2 << 4;
    QTest::newRow("group 3 fills channels 8..11") << 3 << 8;
    QTest::newRow("group 4 fills channels 12..15, slot 16 untouched") << 4 << 12;
}

void ReplyStorageTest::kindOneChannelGroupFillsItsFourChannelsOnly()
{
    QFETCH(int, group);
    QFETCH(int, firstChannel);
    const Reply r = replyWith(0x41, group);
    ModuleRecord expected = markedRecord();
    expected.busAddress = kModuleAddress;
    for (int j = 0; j < 4; ++j) {
        const int q = 12 * j;
        ChannelRecord& c = ch(expected, firstChannel + j);
        c.channelNumber = static_cast<qint16>(firstChannel + j);
        c.excitation = static_cast<qint16>(r.p(q + 3));
        c.balanceValue = r.p16(q + 4);
        c.coupling = static_cast<qint16>(r.p(q + 6) % 16);
        c.integral = static_cast<qint16>(r.p(q + 6) / 16);
        c.gain = static_cast<qint16>(r.p(q + 7));
        c.cutoff = r.p16(q + 8);
        c.holdExponent = static_cast<quint16>(r.p(q + 10));
        c.zeroAdjust = r.p(q + 11);
        c.gainAdjust = r.p16(q + 12);
        c.channelFlags = static_cast<qint16>(r.p(q + 14));
    }
    ModuleRecord record = markedRecord();
    int status = 0;
    QVERIFY(parseInfoReply(r.frame, kCmdRead, record, status));
    VELMOR_COMPARE_RECORD(record, expected);
    QVERIFY(record.channels[16] == markedRecord().channels[16]);
}

void ReplyStorageTest::kindOneGroupZeroFillsModuleInformationOnly()
{
    const Reply r = replyWith(0x41, 0);
    ModuleRecord expected = markedRecord();
    expectModuleInfo(expected, r, 3);   // number at p(3), codes p(5..15), tail p(16..50)
    ModuleRecord record = markedRecord();
    int status = 0;
    QVERIFY(parseInfoReply(r.frame, kCmdRead, record, status));
    // No model recognition here: name and channel count stay as they were.
    VELMOR_COMPARE_RECORD(record, expected);
}

void ReplyStorageTest::kindThreeRecognisesModelAndReadsInfoOneByteLater_data()
{
    QTest::addColumn<int>("modelCode");
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("channels");
    QTest::newRow("code 0") << 0 << "TM-A4" << 4;
    QTest::newRow("code 1") << 1 << "TM-A8" << 8;
    QTest::newRow("code 3") << 3 << "TM-B8" << 8;
    QTest::newRow("code 8") << 8 << "TM-C16D" << 16;
    // An unknown code keeps the name and count the record had.
    QTest::newRow("code 9") << 9 << "TM-C16" << -4;
}

void ReplyStorageTest::kindThreeRecognisesModelAndReadsInfoOneByteLater()
{
    QFETCH(int, modelCode);
    QFETCH(QString, name);
    QFETCH(int, channels);
    Reply r = replyWith(0x41, 0);
    r.frame[9] = static_cast<char>(modelCode);   // p(6), the model code
    reseal(r.frame);

    ModuleRecord expected = markedRecord();
    expectModuleInfo(expected, r, 4);   // number at p(4), codes p(6..16), tail p(17..51)
    expected.modelName = fixedText(name);
    expected.channelCount = static_cast<qint16>(channels);
    ModuleRecord record = markedRecord();
    int status = 0;
    QVERIFY(parseParameterReply(r.frame, kCmdRead, record, status));
    VELMOR_COMPARE_RECORD(record, expected);
}

void ReplyStorageTest::infoTailByte34HoldsTheReplyChecksum()
{
    const Reply r = replyWith(0x40, 0);   // the reply to a beckon
    ModuleRecord record = markedRecord();
    int status = 0;
    QVERIFY(parseParameterReply(r.frame, kCmdBeckon, record, status));
    QCOMPARE(record.infoTail[34], quint8(r.frame[54]));
    QCOMPARE(record.infoTail[34], wireSum(r.frame, 51));
    QCOMPARE(record.infoTail[33], quint8(r.frame[53]));
    QCOMPARE(record.infoTail[35], markedRecord().infoTail[35]);
}

void ReplyStorageTest::moduleNumber65535ReadsBackAs65535_data()
{
    QTest::addColumn<ReplyKind>("kind");
    QTest::addColumn<int>("numberOffset");   // frame offset of its low byte
    QTest::newRow("kind 1, group 0") << ReplyKind::Info << 6;
    QTest::newRow("kind 3") << ReplyKind::Parameter << 7;
}

void ReplyStorageTest::moduleNumber65535ReadsBackAs65535()
{
    QFETCH(ReplyKind, kind);
    QFETCH(int, numberOffset);
    QByteArray frame = validReply(kind, 0);
    frame[numberOffset] = '\xFF';
    frame[numberOffset + 1] = '\xFF';
    reseal(frame);
    ModuleRecord record = markedRecord();
    int status = 0;
    QVERIFY(parseReply(kind, frame, kCmdRead, record, status));
    QCOMPARE(record.moduleNumber, 65535);
}

void ReplyStorageTest::kindTwoAdjustBlockFillsTableEntriesZeroToThree_data()
{
    QTest::addColumn<int>("group");
    for (int group = 5; group <= 8; ++group)
        QTest::addRow("group %d fills channels %d..%d", group, 4 * (group - 5), 4 * (group - 5) + 3) << group;
}

void ReplyStorageTest::kindTwoAdjustBlockFillsTableEntriesZeroToThree()
{
    QFETCH(int, group);
    const Reply r = replyWith(0x41, group);
    const int k = group - 5;
    ModuleRecord expected = markedRecord();
    expected.busAddress = kModuleAddress;
    for (int j = 0; j < 4; ++j) {
        ChannelRecord& c = ch(expected, 4 * k + j);
        for (int i = 0; i < 4; ++i) {
            c.zeroAdjustTable[static_cast<size_t>(i)] = r.p(12 * j + 3 + i);
            c.gainAdjustTable[static_cast<size_t>(i)] = r.p16(12 * j + 7 + 2 * i);
        }
    }
    ModuleRecord record = markedRecord();
    int status = 0;
    QVERIFY(parseCalibrationReply(r.frame, kCmdRead, record, status));
    VELMOR_COMPARE_RECORD(record, expected);
}

void ReplyStorageTest::kindTwoCalibrationLayoutFollowsModelCode_data()
{
    QTest::addColumn<int>("modelCode");
    QTest::addColumn<int>("group");
    for (int model : {3, 2, 0})
        for (int group = 9; group <= 16; ++group)
            QTest::addRow("model %d, group %d", model, group) << model << group;
}

void ReplyStorageTest::kindTwoCalibrationLayoutFollowsModelCode()
{
    QFETCH(int, modelCode);
    QFETCH(int, group);
    const Reply r = replyWith(0x41, group);
    const int k = group - 5;
    ModuleRecord before = markedRecord();
    before.modelCode = static_cast<quint8>(modelCode);
    ModuleRecord expected = before;
    expected.busAddress = kModuleAddress;
    for (int j = 0; j < 2; ++j) {
        ChannelRecord& c = ch(expected, 2 * (k - 4) + j);
        if (modelCode == 3) {
            for (int i = 0; i <= 10; ++i)
                c.gainCoef[static_cast<size_t>(i)] = r.p16(22 * j + 3 + 2 * i);
        } else {
            for (int i = 0; i < 4; ++i) {
                c.gainCoef[static_cast<size_t>(i)] = r.p16(16 * j + 3 + 2 * i);
                c.zeroCoef[static_cast<size_t>(i)] = r.p16(16 * j + 11 + 2 * i);
            }
        }
    }
    ModuleRecord record = before;
    int status = 0;
    QVERIFY(parseCalibrationReply(r.frame, kCmdRead, record, status));
    VELMOR_COMPARE_RECORD(record, expected);
}

void ReplyStorageTest::shortReplyIsAcceptedAndStoresNothing()
{
    const QByteArray ack = hexBytes("AA AA 06 05 44 00 09 FF FF 50");
    QCOMPARE(quint8(ack[9]), wireSum(ack, 6));
    int status = 0;
    QVERIFY(parseShortReply(ack, kCmdBalance, status));
    ModuleRecord record = markedRecord();
    QVERIFY(parseReply(ReplyKind::Short, ack, kCmdBalance, record, status));
    VELMOR_COMPARE_RECORD(record, markedRecord());
}

QTEST_GUILESS_MAIN(ReplyStorageTest)
#include "reply_storage_test.moc"
