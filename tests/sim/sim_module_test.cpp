// A simulated module answers every request kind as the program's own parsers
// expect, and keeps what is written to it.

#include "sim/sim_module.h"
#include "sim/sim_values.h"
#include "support/record_checks.h"

#include "model/models.h"
#include "protocol/blocks.h"
#include "protocol/replies.h"
#include "protocol/requests.h"

#include <QTest>

using namespace velmor;
using namespace velmor::sim;
using namespace velmor::testing;

namespace {

constexpr int kAddress = 5;
constexpr quint32 kSeed = 7;

SimModule moduleOf(int modelCode) { return SimModule(simulatedModule(kAddress, modelCode, kSeed), kSeed); }

// The program's view of the module before it reads anything.
ModuleRecord programRecord(const ModuleRecord& memory)
{
    ModuleRecord r = defaultModule();
    r.busAddress = memory.busAddress;
    r.modelCode = memory.modelCode;  // chooses the calibration layout
    return r;
}

ChannelRecord channelOf(const ModuleRecord& r, int c) { return r.channels[static_cast<size_t>(c)]; }

void addModelRows()
{
    QTest::addColumn<int>("modelCode");
    for (int code = 0; code < kModelCount; ++code)
        QTest::newRow(qPrintable(QString::fromUtf16(kModels[code].name))) << code;
}

}  // namespace

class SimModuleTest : public QObject {
    Q_OBJECT

private slots:
    void moduleInformationReadIsTheFullReadLayout_data();
    void moduleInformationReadIsTheFullReadLayout();
    void channelGroupReadMatchesMemory_data();
    void channelGroupReadMatchesMemory();
    void adjustBlockReadMatchesMemory_data();
    void adjustBlockReadMatchesMemory();
    void calibrationPairReadMatchesMemory_data();
    void calibrationPairReadMatchesMemory();
    void modelThreeSendsElevenGainCoefficientsPerChannel();
    void channelGroupWriteIsKeptAndAnsweredWithNewValues();
    void adjustAndCalibrationWritesPersist_data();
    void adjustAndCalibrationWritesPersist();
    void informationWriteTakesTheAddressOfByteSix();
    void beckonIsAnsweredWithModuleInformation();
    void balanceIsAcknowledgedInTenBytes();
    void balanceOfEveryChannelCarriesFFFF();
    void balanceChangesOnlyMaskedChannels();
    void balanceLeavesChannelsTheModelDoesNotHave();
    void aModuleTakesAtItsAddressAllButTheTwoRequestsOfAddress255_data();
    void aModuleTakesAtItsAddressAllButTheTwoRequestsOfAddress255();
    void requestsOutsideTheCommandSetAreNotUnderstood_data();
    void requestsOutsideTheCommandSetAreNotUnderstood();
    void everyProgramRequestIsUnderstood();
};

void SimModuleTest::moduleInformationReadIsTheFullReadLayout_data()
{
    addModelRows();
}

void SimModuleTest::adjustBlockReadMatchesMemory_data()
{
    channelGroupReadMatchesMemory_data();
}

void SimModuleTest::moduleInformationReadIsTheFullReadLayout()
{
    QFETCH(int, modelCode);
    SimModule module = moduleOf(modelCode);
    const Answer a = module.answer(readInfoRequest(kAddress).frame());
    QCOMPARE(a.reply.size(), kFullFrameLength);
    QCOMPARE(quint8(a.reply[kLengthOffset]), quint8(kFullN));
    QCOMPARE(quint8(a.reply[kCommandOffset]), quint8(kCmdRead + kReplyOffset));
    QCOMPARE(quint8(a.reply[kDataOffset]), quint8(kAddress));  // the write-information layout
    QVERIFY(!a.memoryChanged);

    ModuleRecord program = defaultModule();
    int status = 0;
    QVERIFY(parseParameterReply(a.reply, kCmdRead, program, status));
    VELMOR_VERIFY_SAME(informationDifference(program, module.memory()));
}

void SimModuleTest::channelGroupReadMatchesMemory_data()
{
    QTest::addColumn<int>("group");
    for (int g = 0; g < kChannelGroups; ++g)
        QTest::newRow(qPrintable(QStringLiteral("group %1").arg(g))) << g;
}

void SimModuleTest::channelGroupReadMatchesMemory()
{
    QFETCH(int, group);
    SimModule module = moduleOf(2);
    ModuleRecord program = programRecord(module.memory());
    const Answer a = module.answer(readChannelGroupRequest(program, group).frame());
    int status = 0;
    QVERIFY(parseInfoReply(a.reply, kCmdRead, program, status));
    for (int c = 4 * group; c < 4 * group + 4; ++c)
        VELMOR_VERIFY_SAME(channelParameterDifference(channelOf(program, c), channelOf(module.memory(), c)));
}

void SimModuleTest::adjustBlockReadMatchesMemory()
{
    QFETCH(int, group);
    SimModule module = moduleOf(4);
    ModuleRecord program = programRecord(module.memory());
    const Answer a = module.answer(readAdjustBlockRequest(program, group).frame());
    int status = 0;
    QVERIFY(parseCalibrationReply(a.reply, kCmdRead, program, status));
    for (int c = 4 * group; c < 4 * group + 4; ++c)
        VELMOR_VERIFY_SAME(adjustDifference(channelOf(program, c), channelOf(module.memory(), c)));
}

void SimModuleTest::calibrationPairReadMatchesMemory_data()
{
    QTest::addColumn<int>("modelCode");
    QTest::addColumn<int>("pair");
    for (int code : {2, 3})
        for (int k = 0; k < kCalibrationPairs; ++k)
            QTest::newRow(qPrintable(QStringLiteral("model %1 pair %2").arg(code).arg(k))) << code << k;
}

void SimModuleTest::calibrationPairReadMatchesMemory()
{
    QFETCH(int, modelCode);
    QFETCH(int, pair);
    SimModule module = moduleOf(modelCode);
    ModuleRecord program = programRecord(module.memory());
    const Answer a = module.answer(readCalibrationRequest(program, pair).frame());
    int status = 0;
    QVERIFY(parseCalibrationReply(a.reply, kCmdRead, program, status));
    for (int c = 2 * pair; c < 2 * pair + 2; ++c)
        VELMOR_VERIFY_SAME(coefficientDifference(channelOf(program, c), channelOf(module.memory(), c), modelCode == 3));
}

void SimModuleTest::modelThreeSendsElevenGainCoefficientsPerChannel()
{
    SimModule module = moduleOf(3);
    const ChannelRecord second = channelOf(module.memory(), 1);
    const Answer a = module.answer(readCalibrationRequest(module.memory(), 0).frame());
    // Channel 1 of the pair starts 22 bytes after channel 0, at frame byte 28.
    for (int i = 0; i < 11; ++i) {
        const int b = 28 + 2 * i;
        QCOMPARE(quint8(a.reply[b]) + 256 * quint8(a.reply[b + 1]), second.gainCoef[static_cast<size_t>(i)]);
    }
    for (int b = 50; b <= 53; ++b)
        QCOMPARE(quint8(a.reply[b]), quint8(0));
}

void SimModuleTest::channelGroupWriteIsKeptAndAnsweredWithNewValues()
{
    SimModule module = moduleOf(2);
    ModuleRecord program = programRecord(module.memory());
    for (int c = 8; c < 12; ++c) {
        ChannelRecord& ch = program.channels[static_cast<size_t>(c)];
        ch.excitation = 2;
        ch.balanceValue = 40000 + c;
        ch.coupling = 0;
        ch.integral = 2;
        ch.gain = 3;
        ch.cutoff = 65535;
        ch.holdExponent = 4;
        ch.zeroAdjust = 200;
        ch.gainAdjust = 1234;
        ch.channelFlags = 0x5A;
    }
    const Answer a = module.answer(writeChannelGroupRequest(program, 2).frame());
    QVERIFY(a.memoryChanged);
    QCOMPARE(quint8(a.reply[kCommandOffset]), quint8(kCmdWrite + kReplyOffset));
    QCOMPARE(quint8(a.reply[kGroupOffset]), quint8(3));
    for (int c = 8; c < 12; ++c)
        VELMOR_VERIFY_SAME(channelParameterDifference(channelOf(module.memory(), c), channelOf(program, c)));

    ModuleRecord answered = programRecord(module.memory());
    int status = 0;
    QVERIFY(parseInfoReply(a.reply, kCmdWrite, answered, status));
    for (int c = 8; c < 12; ++c)
        VELMOR_VERIFY_SAME(channelParameterDifference(channelOf(answered, c), channelOf(program, c)));
}

void SimModuleTest::adjustAndCalibrationWritesPersist_data()
{
    QTest::addColumn<int>("modelCode");
    QTest::newRow("model 2") << 2;
    QTest::newRow("model 3") << 3;
}

void SimModuleTest::adjustAndCalibrationWritesPersist()
{
    QFETCH(int, modelCode);
    SimModule module = moduleOf(modelCode);
    ModuleRecord program = programRecord(module.memory());
    for (int c = 0; c < 4; ++c) {
        ChannelRecord& ch = program.channels[static_cast<size_t>(c)];
        for (int i = 0; i < 11; ++i) {
            ch.zeroAdjustTable[static_cast<size_t>(i)] = (i < 4) ? 10 * c + i : 0;
            ch.gainAdjustTable[static_cast<size_t>(i)] = (i < 4) ? 3000 + 10 * c + i : 0;
            ch.gainCoef[static_cast<size_t>(i)] = 50000 + 100 * c + i;
            ch.zeroCoef[static_cast<size_t>(i)] = (i < 4) ? 60000 + 100 * c + i : 0;
        }
    }
    QVERIFY(module.answer(writeAdjustBlockRequest(program, 0).frame()).memoryChanged);
    QVERIFY(module.answer(writeCalibrationRequest(program, 1).frame()).memoryChanged);

    // Read back as the program does.
    ModuleRecord readBack = programRecord(module.memory());
    int status = 0;
    QVERIFY(parseCalibrationReply(module.answer(readAdjustBlockRequest(readBack, 0).frame()).reply, kCmdRead,
                                  readBack, status));
    QVERIFY(parseCalibrationReply(module.answer(readCalibrationRequest(readBack, 1).frame()).reply, kCmdRead,
                                  readBack, status));
    for (int c = 0; c < 4; ++c)
        VELMOR_VERIFY_SAME(adjustDifference(channelOf(readBack, c), channelOf(program, c)));
    for (int c = 2; c < 4; ++c)
        VELMOR_VERIFY_SAME(coefficientDifference(channelOf(readBack, c), channelOf(program, c), modelCode == 3));
}

void SimModuleTest::informationWriteTakesTheAddressOfByteSix()
{
    SimModule module = moduleOf(2);
    const auto tailEnd = module.memory().infoTail[34];
    ModuleRecord program = programRecord(module.memory());
    program.busAddress = 9;
    program.moduleNumber = 65535;
    program.version = 42;
    for (int i = 0; i < 36; ++i)
        program.infoTail[static_cast<size_t>(i)] = static_cast<quint8>(100 + i);

    const Request request = writeInfoRequest(program);
    QVERIFY(module.addressedBy(request.frame()));  // sent to 255
    const Answer a = module.answer(request.frame());
    QVERIFY(a.memoryChanged);
    QCOMPARE(module.address(), 9);
    QCOMPARE(module.memory().moduleNumber, 65535);
    QCOMPARE(module.memory().version, quint8(42));
    for (int i = 0; i < 34; ++i)
        QCOMPARE(module.memory().infoTail[static_cast<size_t>(i)], quint8(100 + i));
    // The request's checksum stands where tail byte 34 would be: not taken.
    QCOMPARE(module.memory().infoTail[34], tailEnd);

    QCOMPARE(quint8(a.reply[kAddressOffset]), quint8(9));
    QCOMPARE(quint8(a.reply[kCommandOffset]), quint8(kCmdWrite + kReplyOffset));
    ModuleRecord answered = defaultModule();
    int status = 0;
    QVERIFY(parseParameterReply(a.reply, kCmdWrite, answered, status));
    VELMOR_VERIFY_SAME(informationDifference(answered, module.memory()));
}

void SimModuleTest::beckonIsAnsweredWithModuleInformation()
{
    SimModule module = moduleOf(6);
    const Request request = beckonRequest();
    QVERIFY(module.addressedBy(request.frame()));
    const Answer a = module.answer(request.frame());
    QCOMPARE(quint8(a.reply[kCommandOffset]), quint8(kCmdBeckon + kReplyOffset));
    ModuleRecord program = defaultModule();
    int status = 0;
    QVERIFY(parseParameterReply(a.reply, kCmdBeckon, program, status));
    VELMOR_VERIFY_SAME(informationDifference(program, module.memory()));
}

void SimModuleTest::balanceIsAcknowledgedInTenBytes()
{
    SimModule module = moduleOf(2);
    const Answer a = module.answer(balanceRequest(module.memory(), 0x0005).frame());
    const QByteArray expected = QByteArray::fromHex("AAAA06054400090500") + char(0x05 + 0x44 + 0x09 + 0x05);
    QCOMPARE(a.reply.toHex(' '), expected.toHex(' '));
    int status = 0;
    QVERIFY(parseShortReply(a.reply, kCmdBalance, status));
    QVERIFY(a.balanceMask.has_value());
    QCOMPARE(*a.balanceMask, quint16(0x0005));
}

void SimModuleTest::balanceOfEveryChannelCarriesFFFF()
{
    SimModule module = moduleOf(2);
    const Answer a = module.answer(balanceRequest(module.memory(), -1).frame());
    QCOMPARE(quint8(a.reply[7]), quint8(0xFF));
    QCOMPARE(quint8(a.reply[8]), quint8(0xFF));
    QCOMPARE(*a.balanceMask, quint16(0xFFFF));
}

void SimModuleTest::balanceChangesOnlyMaskedChannels()
{
    SimModule module = moduleOf(2);
    const ModuleRecord before = module.memory();
    module.finishBalance(0x8001);  // channels 0 and 15
    for (int c = 0; c < 16; ++c) {
        const qint32 old = channelOf(before, c).balanceValue;
        const qint32 now = channelOf(module.memory(), c).balanceValue;
        if (c == 0 || c == 15)
            QCOMPARE(now, balancedValue(kSeed, kAddress, c, old));
        else
            QCOMPARE(now, old);
    }
}

void SimModuleTest::balanceLeavesChannelsTheModelDoesNotHave()
{
    SimModule module = moduleOf(0);  // four channels
    const ModuleRecord before = module.memory();
    module.finishBalance(0xFFFF);
    for (int c = 0; c < 4; ++c)
        QCOMPARE(channelOf(module.memory(), c).balanceValue,
                 balancedValue(kSeed, kAddress, c, channelOf(before, c).balanceValue));
    for (int c = 4; c < 17; ++c)
        QCOMPARE(channelOf(module.memory(), c), channelOf(before, c));
}

void SimModuleTest::aModuleTakesAtItsAddressAllButTheTwoRequestsOfAddress255_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<bool>("taken");
    ModuleRecord own = simulatedModule(kAddress, 2, kSeed);
    ModuleRecord every = own;
    every.busAddress = 255;
    ModuleRecord other = own;
    other.busAddress = kAddress + 1;
    QTest::newRow("read at its address") << readInfoRequest(kAddress).frame() << true;
    QTest::newRow("read at another address") << readInfoRequest(kAddress + 1).frame() << false;
    QTest::newRow("group write at its address") << writeChannelGroupRequest(own, 1).frame() << true;
    QTest::newRow("balance at its address") << balanceRequest(own, -1).frame() << true;
    QTest::newRow("beckon at 255") << beckonRequest().frame() << true;
    QTest::newRow("information write at 255") << writeInfoRequest(own).frame() << true;
    QTest::newRow("information write at 255 naming another address") << writeInfoRequest(other).frame() << true;
    // A module answers nothing else at 255.
    QTest::newRow("information read at 255") << readInfoRequest(255).frame() << false;
    QTest::newRow("group read at 255") << readChannelGroupRequest(every, 0).frame() << false;
    QTest::newRow("adjust read at 255") << readAdjustBlockRequest(every, 2).frame() << false;
    QTest::newRow("calibration read at 255") << readCalibrationRequest(every, 3).frame() << false;
    QTest::newRow("group write at 255") << writeChannelGroupRequest(every, 0).frame() << false;
    QTest::newRow("adjust write at 255") << writeAdjustBlockRequest(every, 0).frame() << false;
    QTest::newRow("calibration write at 255") << writeCalibrationRequest(every, 0).frame() << false;
    QTest::newRow("balance at 255") << balanceRequest(every, -1).frame() << false;
    // The two requests of 255 go nowhere else.
    Frame beckonHere{};
    sealFrame(beckonHere, 3, kAddress, kCmdBeckon, kGroupInfo);
    QTest::newRow("beckon at its address") << toBytes(beckonHere, kShortRequestLength) << false;
    QByteArray infoHere = writeInfoRequest(own).frame();
    infoHere[kAddressOffset] = char(kAddress);
    Frame sealed{};
    std::copy(infoHere.begin(), infoHere.end(), sealed.begin());
    sealFrame(sealed, kFullN, kAddress, kCmdWrite, kGroupInfo);
    QTest::newRow("information write at its address") << toBytes(sealed, kFullFrameLength) << false;
}

void SimModuleTest::aModuleTakesAtItsAddressAllButTheTwoRequestsOfAddress255()
{
    QFETCH(QByteArray, request);
    QFETCH(bool, taken);
    QVERIFY(SimModule::understands(request));
    QCOMPARE(moduleOf(2).addressedBy(request), taken);
}

void SimModuleTest::requestsOutsideTheCommandSetAreNotUnderstood_data()
{
    QTest::addColumn<QByteArray>("request");
    auto shortFrame = [](int command, int group) {
        Frame f{};
        sealFrame(f, 3, kAddress, static_cast<quint8>(command), static_cast<quint8>(group));
        return toBytes(f, kShortRequestLength);
    };
    QTest::newRow("unknown command 19") << shortFrame(19, 0);
    QTest::newRow("unknown command 0") << shortFrame(0, 0);
    QTest::newRow("read of selector 17") << shortFrame(kCmdRead, 17);
    QTest::newRow("beckon with a selector") << shortFrame(kCmdBeckon, 1);
    QTest::newRow("write of 7 bytes") << shortFrame(kCmdWrite, 1);
    QTest::newRow("balance of 7 bytes") << shortFrame(kCmdBalance, 0);
    QTest::newRow("too short") << QByteArray::fromHex("AAAA0305");
    QTest::newRow("length beyond the bytes") << QByteArray::fromHex("AAAA330511001600");
}

void SimModuleTest::requestsOutsideTheCommandSetAreNotUnderstood()
{
    QFETCH(QByteArray, request);
    QVERIFY(!SimModule::understands(request));
}

void SimModuleTest::everyProgramRequestIsUnderstood()
{
    const ModuleRecord r = simulatedModule(kAddress, 2, kSeed);
    QList<Request> requests{beckonRequest(), readInfoRequest(kAddress), writeInfoRequest(r), balanceRequest(r, -1)};
    for (int g = 0; g < kChannelGroups; ++g)
        requests << readChannelGroupRequest(r, g) << writeChannelGroupRequest(r, g) << readAdjustBlockRequest(r, g)
                 << writeAdjustBlockRequest(r, g);
    for (int k = 0; k < kCalibrationPairs; ++k)
        requests << readCalibrationRequest(r, k) << writeCalibrationRequest(r, k);
    for (const Request& request : requests)
        QVERIFY2(SimModule::understands(request.frame()), request.frame().toHex(' ').constData());
}

QTEST_GUILESS_MAIN(SimModuleTest)
#include "sim_module_test.moc"
