// Every request as bytes on the wire.
#include "byte_check.h"
#include "records.h"

#include "model/models.h"
#include "protocol/requests.h"

#include <QTest>

using namespace velmor;
using namespace velmor::testkit;

namespace {

constexpr int kAddress = 7;

// A 55-byte write frame as the module expects it: header, data from byte 6
// (zero-filled to byte 53) and the checksum over bytes 3..53.
QByteArray writeFrame(int address, int selector, const QByteArray& data)
{
    QByteArray frame = bytesOf({0xAA, 0xAA, 0x33, address, 0x12, selector}) + data;
    frame.resize(54, '\0');
    frame.append(static_cast<char>(wireSum(frame, 51)));
    return frame;
}

int lo(int v) { return v & 0xFF; }
int hi(int v) { return (v >> 8) & 0xFF; }

ModuleRecord recordAt(int address, int modelCode)
{
    ModuleRecord r = markedRecord();
    r.busAddress = static_cast<qint16>(address);
    r.modelCode = static_cast<quint8>(modelCode);
    recognizeModel(r, modelCode);
    return r;
}

ChannelRecord& ch(ModuleRecord& r, int c) { return r.channels[static_cast<size_t>(c)]; }

}  // namespace

class RequestBytesTest : public QObject {
    Q_OBJECT

private slots:
    void shortRequestsAndBalance_data();
    void shortRequestsAndBalance();
    void writeChannelGroupFillsFourBlocksWhateverTheChannelCount_data();
    void writeChannelGroupFillsFourBlocksWhateverTheChannelCount();
    void zeroAdjustGoesOutAsItsLowByteOnly();
    void writeAdjustBlockSendsEntriesZeroToThree_data();
    void writeAdjustBlockSendsEntriesZeroToThree();
    void writeCalibrationLayoutFollowsModelCode_data();
    void writeCalibrationLayoutFollowsModelCode();
    void writeInfoGoesToEveryModuleWithAddressInByteSix();
    void writeInfoNeverSendsInfoTailByte34();
    void moduleNumber65535GoesOutAsFFFF();
    void everyBuilderSealsItsFrame_data();
    void everyBuilderSealsItsFrame();
};

void RequestBytesTest::shortRequestsAndBalance_data()
{
    QTest::addColumn<Request>("request");
    QTest::addColumn<QByteArray>("expected");
    QTest::addColumn<ReplyKind>("kind");
    QTest::addColumn<int>("replyLength");

    const ModuleRecord at7 = recordAt(kAddress, 2);
    const ModuleRecord at5 = recordAt(5, 2);

    QTest::newRow("read module information at 5")
        << readInfoRequest(5) << hexBytes("AA AA 03 05 11 00 16") << ReplyKind::Parameter << 55;
    QTest::newRow("beckon, the same whatever module is selected")
        << beckonRequest() << hexBytes("AA AA 03 FF 10 00 0F") << ReplyKind::Parameter << 55;
    for (int g = 0; g < 4; ++g) {
        QTest::addRow("read channel group %d", g)
            << readChannelGroupRequest(at7, g)
            << bytesOf({0xAA, 0xAA, 3, kAddress, 0x11, g + 1, kAddress + 0x11 + g + 1}) << ReplyKind::Info << 55;
        QTest::addRow("read adjust block %d", g)
            << readAdjustBlockRequest(at7, g)
            << bytesOf({0xAA, 0xAA, 3, kAddress, 0x11, g + 5, kAddress + 0x11 + g + 5})
            << ReplyKind::Calibration << 55;
    }
    for (int k = 0; k < 8; ++k)
        QTest::addRow("read calibration pair %d", k)
            << readCalibrationRequest(at7, k)
            << bytesOf({0xAA, 0xAA, 3, kAddress, 0x11, k + 9, kAddress + 0x11 + k + 9})
            << ReplyKind::Calibration << 55;

    QTest::newRow("balance, mask -1 (every channel)")
        << balanceRequest(at5, -1) << hexBytes("AA AA 06 05 14 00 09 FF FF 20") << ReplyKind::Short << 10;
    QTest::newRow("balance, mask 0x0005")
        << balanceRequest(at5, 0x0005) << hexBytes("AA AA 06 05 14 00 09 05 00 27") << ReplyKind::Short << 10;
    QTest::newRow("balance, mask 0x8005")
        << balanceRequest(at5, 0x8005) << hexBytes("AA AA 06 05 14 00 09 05 80 A7") << ReplyKind::Short << 10;
    // Starting from -1, a click on a channel clears its bit and leaves bits
    // 16..31 set: the stored value stays negative.
    QTest::newRow("balance, channel index 0 deselected")
        << balanceRequest(at5, -1 ^ 0x0001) << hexBytes("AA AA 06 05 14 00 09 FE FF 1F") << ReplyKind::Short << 10;
    QTest::newRow("balance, channel index 15 deselected")
        << balanceRequest(at5, -1 ^ 0x8000) << hexBytes("AA AA 06 05 14 00 09 FF 7F A0") << ReplyKind::Short << 10;
}

void RequestBytesTest::shortRequestsAndBalance()
{
    QFETCH(Request, request);
    QFETCH(QByteArray, expected);
    QFETCH(ReplyKind, kind);
    QFETCH(int, replyLength);
    VELMOR_COMPARE_BYTES(request.frame(), expected);
    QCOMPARE(request.command, quint8(expected[4]));
    QCOMPARE(request.kind, kind);
    QCOMPARE(request.replyLength(), replyLength);
}

void RequestBytesTest::writeChannelGroupFillsFourBlocksWhateverTheChannelCount_data()
{
    QTest::addColumn<int>("g");
    for (int g = 0; g < 4; ++g)
        QTest::addRow("group %d", g) << g;
}

void RequestBytesTest::writeChannelGroupFillsFourBlocksWhateverTheChannelCount()
{
    QFETCH(int, g);
    // A four-channel model: group 3 still carries four blocks from whatever
    // channel records 12..15 hold.
    ModuleRecord r = recordAt(kAddress, 0);
    QCOMPARE(r.channelCount, qint16(4));
    QByteArray data;
    for (int j = 0; j < 4; ++j) {
        const int c = 4 * g + j;
        ChannelRecord& x = ch(r, c);
        // Values wider than their wire bytes: only the low bits may travel.
        x.excitation = static_cast<qint16>(0x100 + c);
        x.balanceValue = 0x1200 + 3 * c;
        x.coupling = static_cast<qint16>(0x10 + c);
        x.integral = static_cast<qint16>(0x20 + 15 - c);
        x.gain = static_cast<qint16>(0x300 + 2 * c);
        x.cutoff = 0x8000 + 5 * c;
        x.holdExponent = static_cast<quint16>(0x100 + 3 * c);
        x.zeroAdjust = 0x100 + 4 * c;
        x.gainAdjust = 0xA000 + 7 * c;
        x.channelFlags = static_cast<qint16>(0x7F00 + 9 * c);
        data += bytesOf({c, lo(x.balanceValue), hi(x.balanceValue), ((15 - c) << 4) | c, 2 * c,
                         lo(x.cutoff), hi(x.cutoff), 3 * c, 4 * c, lo(x.gainAdjust), hi(x.gainAdjust),
                         9 * c});
    }
    const Request request = writeChannelGroupRequest(r, g);
    VELMOR_COMPARE_BYTES(request.frame(), writeFrame(kAddress, g + 1, data));
    QCOMPARE(request.kind, ReplyKind::Info);
    QCOMPARE(request.command, quint8(18));
    QCOMPARE(request.replyLength(), 55);
}

void RequestBytesTest::zeroAdjustGoesOutAsItsLowByteOnly()
{
    ModuleRecord r = recordAt(kAddress, 2);
    ch(r, 4).zeroAdjust = 300;
    ch(r, 4).gainAdjust = 0x0102;
    const QByteArray frame = writeChannelGroupRequest(r, 1).frame();
    QCOMPARE(quint8(frame[6 + 8]), quint8(0x2C));
    // The byte after it is the gain adjust's low byte, not a high byte of 300.
    QCOMPARE(quint8(frame[6 + 9]), quint8(0x02));
}

void RequestBytesTest::writeAdjustBlockSendsEntriesZeroToThree_data()
{
    QTest::addColumn<int>("g");
    for (int g = 0; g < 4; ++g)
        QTest::addRow("group %d", g) << g;
}

void RequestBytesTest::writeAdjustBlockSendsEntriesZeroToThree()
{
    QFETCH(int, g);
    ModuleRecord r = recordAt(kAddress, 2);
    QByteArray data;
    for (int j = 0; j < 4; ++j) {
        ChannelRecord& x = ch(r, 4 * g + j);
        for (int i = 0; i < kTableEntries; ++i) {
            x.zeroAdjustTable[static_cast<size_t>(i)] = 0x300 + 16 * j + i;
            x.gainAdjustTable[static_cast<size_t>(i)] = 0x1000 * (i + 1) + 16 * j + i;
        }
        for (int i = 0; i < 4; ++i)
            data += bytesOf({16 * j + i});
        for (int i = 0; i < 4; ++i)
            data += bytesOf({16 * j + i, 0x10 * (i + 1)});
    }
    const Request request = writeAdjustBlockRequest(r, g);
    VELMOR_COMPARE_BYTES(request.frame(), writeFrame(kAddress, g + 5, data));
    QCOMPARE(request.kind, ReplyKind::Calibration);
}

void RequestBytesTest::writeCalibrationLayoutFollowsModelCode_data()
{
    QTest::addColumn<int>("modelCode");
    QTest::addColumn<int>("k");
    for (int model : {3, 2, 4})
        for (int k = 0; k < 8; ++k)
            QTest::addRow("model %d, pair %d", model, k) << model << k;
}

void RequestBytesTest::writeCalibrationLayoutFollowsModelCode()
{
    QFETCH(int, modelCode);
    QFETCH(int, k);
    ModuleRecord r = recordAt(kAddress, modelCode);
    QByteArray data;
    for (int p = 0; p < 2; ++p) {
        ChannelRecord& x = ch(r, 2 * k + p);
        for (int i = 0; i < kTableEntries; ++i) {
            x.gainCoef[static_cast<size_t>(i)] = 0x4000 + 0x100 * i + 16 * p + k;
            x.zeroCoef[static_cast<size_t>(i)] = 0x8000 + 0x100 * i + 16 * p + k;
        }
        if (modelCode == 3) {
            for (int i = 0; i < 11; ++i)
                data += bytesOf({16 * p + k, 0x40 + i});
        } else {
            for (int i = 0; i < 4; ++i)
                data += bytesOf({16 * p + k, 0x40 + i});
            for (int i = 0; i < 4; ++i)
                data += bytesOf({16 * p + k, 0x80 + i});
        }
    }
    const QByteArray frame = writeCalibrationRequest(r, k).frame();
    VELMOR_COMPARE_BYTES(frame, writeFrame(kAddress, k + 9, data));

    const int firstUnused = modelCode == 3 ? 50 : 38;
    for (int i = firstUnused; i <= 53; ++i)
        QCOMPARE(quint8(frame[i]), quint8(0));
    QVERIFY(frame[firstUnused - 1] != '\0');
}

void RequestBytesTest::writeInfoGoesToEveryModuleWithAddressInByteSix()
{
    ModuleRecord r = recordAt(9, 2);
    r.moduleNumber = 0x1234;
    QByteArray data = bytesOf({9, 0x34, 0x12});
    for (int i = 0; i < kCapabilityCount; ++i) {
        r.*kCapabilityFields[i] = static_cast<quint8>(i + 1);
        data += bytesOf({i + 1});
    }
    for (int i = 0; i < 34; ++i) {
        r.infoTail[static_cast<size_t>(i)] = static_cast<quint8>(0x40 + i);
        data += bytesOf({0x40 + i});
    }
    const Request request = writeInfoRequest(r);
    VELMOR_COMPARE_BYTES(request.frame(), writeFrame(0xFF, 0, data));
    QCOMPARE(request.kind, ReplyKind::Parameter);
    QCOMPARE(request.command, quint8(18));
}

void RequestBytesTest::writeInfoNeverSendsInfoTailByte34()
{
    ModuleRecord r = recordAt(9, 2);
    r.infoTail.fill(0);
    r.infoTail[34] = 0xEE;
    r.infoTail[35] = 0xDD;
    const QByteArray frame = writeInfoRequest(r).frame();
    QCOMPARE(frame.size(), 55);
    QVERIFY(!frame.contains('\xEE'));
    QVERIFY(!frame.contains('\xDD'));
    QCOMPARE(quint8(frame[54]), wireSum(frame, 51));
}

void RequestBytesTest::moduleNumber65535GoesOutAsFFFF()
{
    ModuleRecord r = recordAt(9, 2);
    r.moduleNumber = 65535;
    const QByteArray frame = writeInfoRequest(r).frame();
    QCOMPARE(quint8(frame[7]), quint8(0xFF));
    QCOMPARE(quint8(frame[8]), quint8(0xFF));
}

void RequestBytesTest::everyBuilderSealsItsFrame_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<int>("n");
    std::mt19937 rng(20240611);
    for (int model : {2, 3}) {
        ModuleRecord r = randomWireRecord(rng);
        r.modelCode = static_cast<quint8>(model);
        QTest::addRow("model %d write info", model) << writeInfoRequest(r).frame() << 51;
        for (int g = 0; g < 4; ++g) {
            QTest::addRow("model %d write channels %d", model, g) << writeChannelGroupRequest(r, g).frame() << 51;
            QTest::addRow("model %d write adjust %d", model, g) << writeAdjustBlockRequest(r, g).frame() << 51;
            QTest::addRow("model %d read channels %d", model, g) << readChannelGroupRequest(r, g).frame() << 3;
            QTest::addRow("model %d read adjust %d", model, g) << readAdjustBlockRequest(r, g).frame() << 3;
        }
        for (int k = 0; k < 8; ++k) {
            QTest::addRow("model %d write calibration %d", model, k) << writeCalibrationRequest(r, k).frame() << 51;
            QTest::addRow("model %d read calibration %d", model, k) << readCalibrationRequest(r, k).frame() << 3;
        }
        QTest::addRow("model %d read info", model) << readInfoRequest(r.busAddress).frame() << 3;
        QTest::addRow("model %d balance", model)
            << balanceRequest(r, static_cast<qint32>(rng())).frame() << 6;
    }
    QTest::newRow("beckon") << beckonRequest().frame() << 3;
}

void RequestBytesTest::everyBuilderSealsItsFrame()
{
    QFETCH(QByteArray, frame);
    QFETCH(int, n);
    QCOMPARE(frame.size(), n + 4);
    QCOMPARE(quint8(frame[0]), quint8(0xAA));
    QCOMPARE(quint8(frame[1]), quint8(0xAA));
    QCOMPARE(int(quint8(frame[2])), n);
    QCOMPARE(quint8(frame[n + 3]), wireSum(frame, n));
}

QTEST_GUILESS_MAIN(RequestBytesTest)
#include "request_bytes_test.moc"
