// A write frame turned into the module's reply (address, command + 0x30, fresh
// checksum) and parsed by the parser its request names must give back the
// values it was built from, and nothing else may change.
#include "byte_check.h"
#include "records.h"
#include "replies_kit.h"

#include "model/models.h"
#include "protocol/replies.h"

#include <QTest>

using namespace velmor;
using namespace velmor::testkit;

namespace {

ChannelRecord& ch(ModuleRecord& r, int c) { return r.channels[static_cast<size_t>(c)]; }
const ChannelRecord& ch(const ModuleRecord& r, int c) { return r.channels[static_cast<size_t>(c)]; }

void copyParameters(const ChannelRecord& from, ChannelRecord& to, int c)
{
    to.channelNumber = static_cast<qint16>(c);
    to.excitation = from.excitation;
    to.balanceValue = from.balanceValue;
    to.coupling = from.coupling;
    to.integral = from.integral;
    to.gain = from.gain;
    to.cutoff = from.cutoff;
    to.holdExponent = from.holdExponent;
    to.zeroAdjust = from.zeroAdjust;
    to.gainAdjust = from.gainAdjust;
    to.channelFlags = from.channelFlags;
}

void copyEntries(const Table17& from, Table17& to, int count)
{
    std::copy_n(from.begin(), count, to.begin());
}

Request writeOf(Block::Kind kind, const ModuleRecord& source, int index)
{
    switch (kind) {
    case Block::Kind::ChannelGroup: return writeChannelGroupRequest(source, index);
    case Block::Kind::AdjustBlock: return writeAdjustBlockRequest(source, index);
    case Block::Kind::CalibrationPair: return writeCalibrationRequest(source, index);
    case Block::Kind::Information: return writeInfoRequest(source);
    case Block::Kind::Balance: break;
    }
    return {};
}

// The target record with what the reply must have brought over from source.
ModuleRecord expectedAfter(Block::Kind kind, const ModuleRecord& source, int index, ModuleRecord expected,
                           const QByteArray& reply)
{
    expected.busAddress = source.busAddress;
    switch (kind) {
    case Block::Kind::ChannelGroup:
        for (int c = 4 * index; c < 4 * index + 4; ++c)
            copyParameters(ch(source, c), ch(expected, c), c);
        break;
    case Block::Kind::AdjustBlock:
        for (int c = 4 * index; c < 4 * index + 4; ++c) {
            copyEntries(ch(source, c).zeroAdjustTable, ch(expected, c).zeroAdjustTable, 4);
            copyEntries(ch(source, c).gainAdjustTable, ch(expected, c).gainAdjustTable, 4);
        }
        break;
    case Block::Kind::CalibrationPair:
        for (int c = 2 * index; c < 2 * index + 2; ++c) {
            if (hasWideCalibration(source.modelCode)) {
                copyEntries(ch(source, c).gainCoef, ch(expected, c).gainCoef, 11);
            } else {
                copyEntries(ch(source, c).gainCoef, ch(expected, c).gainCoef, 4);
                copyEntries(ch(source, c).zeroCoef, ch(expected, c).zeroCoef, 4);
            }
        }
        break;
    case Block::Kind::Information:
        recognizeModel(expected, source.modelCode);
        expected.moduleNumber = source.moduleNumber;
        for (int i = 0; i < kCapabilityCount; ++i)
            expected.*kCapabilityFields[i] = source.*kCapabilityFields[i];
        std::copy_n(source.infoTail.begin(), 34, expected.infoTail.begin());
        expected.infoTail[34] = quint8(reply[54]);   // the reply's own checksum
        break;
    case Block::Kind::Balance: break;
    }
    return expected;
}

}  // namespace

class RoundTripTest : public QObject {
    Q_OBJECT

private slots:
    void writeThenReplyGivesBackTheRecordValues_data();
    void writeThenReplyGivesBackTheRecordValues();
    void moduleNumber65535SurvivesWriteAndRead();
};

void RoundTripTest::writeThenReplyGivesBackTheRecordValues_data()
{
    QTest::addColumn<Block::Kind>("kind");
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("modelCode");
    QTest::addColumn<unsigned>("seed");
    unsigned seed = 1;
    for (int g = 0; g < 4; ++g) {
        QTest::addRow("channel group %d", g) << Block::Kind::ChannelGroup << g << int(kTmC16) << seed++;
        QTest::addRow("adjust block %d", g) << Block::Kind::AdjustBlock << g << int(kTmC16) << seed++;
    }
    for (int model : {kTmB8, kTmC16, kTmC8})
        for (int k = 0; k < 8; ++k)
            QTest::addRow("calibration pair %d, model %d", k, model) << Block::Kind::CalibrationPair << k << model << seed++;
    for (int model = kTmA4; model <= kTmC16D + 1; ++model)
        QTest::addRow("module information, model %d", model) << Block::Kind::Information << 0 << model << seed++;
}

void RoundTripTest::writeThenReplyGivesBackTheRecordValues()
{
    QFETCH(Block::Kind, kind);
    QFETCH(int, index);
    QFETCH(int, modelCode);
    QFETCH(unsigned, seed);

    std::mt19937 rng(seed);
    ModuleRecord source = randomWireRecord(rng);
    source.modelCode = static_cast<quint8>(modelCode);
    const Request request = writeOf(kind, source, index);
    const QByteArray reply = replyTo(request, source.busAddress);

    ModuleRecord target = markedRecord();
    target.modelCode = source.modelCode;   // the calibration layout follows the stored model
    const ModuleRecord expected = expectedAfter(kind, source, index, target, reply);

    int status = 0;
    if (!parseReply(request.kind, reply, request.command, target, status))
        QFAIL(qPrintable(QStringLiteral("reply refused with status %1:\n%2").arg(status).arg(hexDump(reply))));
    VELMOR_COMPARE_RECORD(target, expected);
}

void RoundTripTest::moduleNumber65535SurvivesWriteAndRead()
{
    ModuleRecord source = markedRecord();
    source.busAddress = 3;
    source.moduleNumber = 65535;
    ModuleRecord target = markedRecord();
    int status = 0;
    const Request request = writeInfoRequest(source);
    QVERIFY(parseParameterReply(replyTo(request, 3), request.command, target, status));
    QCOMPARE(target.moduleNumber, 65535);
}

QTEST_GUILESS_MAIN(RoundTripTest)
#include "round_trip_test.moc"
