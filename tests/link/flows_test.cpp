#include "link_rig.h"
#include "protocol/frame.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>

using namespace velmor;
using namespace velmor::testing;

namespace {

// The group selectors of the requests the line has seen, in order.
QList<int> selectors(const SimLine& line)
{
    QList<int> out;
    for (const QByteArray& request : line.requests())
        out << static_cast<quint8>(request[kGroupOffset]);
    return out;
}

}  // namespace

class FlowsTest : public QObject {
    Q_OBJECT
private slots:
    void readEverythingOfFourChannelsSendsOneRequestPerChain();
    void readEverythingOfSixteenChannelsSendsFourAndEightPerChain();
    void readEverythingStoresWhatTheModuleHolds();
    void readEverythingOfModelThreeTakesElevenGainCoefficients();
    void failedModuleInformationReadStopsTheWholeRead();
    void failedStepStopsTheChainAfterIt();
    void sendEverythingWritesParametersAdjustAndCalibration();
    void channelGroupsOfTheReadLayoutComeBackUnchanged();
    void beckonGoesToEveryModuleWhateverIsSelected();
    void informationWriteWaitsForConfirmation();
    void informationWriteGoesToAddress255WithTheNewAddress();
    void portThatWillNotOpenStopsWithErrorTitle();
    void balancePortFailureUsesItsOwnTitle();
    void failedBalanceNeitherWaitsNorRereads();
    void balanceReadsBackNewValuesOfMaskedChannels();
    void commandsAreLockedDuringARequest();
    void sequenceIsMarkedRunningUntilItEnds();
};

void FlowsTest::readEverythingOfFourChannelsSendsOneRequestPerChain()
{
    SimLine line({sim::ModuleAt{3, 0}});  // TM-A4
    QVERIFY2(line.isReady(), qPrintable(line.error()));
    LinkRig rig;
    rig.select(line, 3);
    QVERIFY(rig.operations.readEverything());
    QCOMPARE(selectors(line), (QList<int>{0, 1, 5, 9, 10}));
    QCOMPARE(rig.state.current().channelCount, 4);
}

void FlowsTest::readEverythingOfSixteenChannelsSendsFourAndEightPerChain()
{
    SimLine line({sim::ModuleAt{7, 2}});  // TM-C16
    QVERIFY(line.isReady());
    LinkRig rig;
    rig.select(line, 7);
    rig.state.current().channelCount = 4;  // the information read sets it
    QVERIFY(rig.operations.readEverything());
    QCOMPARE(selectors(line), (QList<int>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}));
    VELMOR_COMPARE_SAID(rig.dialogs.texts());
}

void FlowsTest::readEverythingStoresWhatTheModuleHolds()
{
    SimLine line({sim::ModuleAt{2, 2}});
    QVERIFY(line.isReady());
    LinkRig rig;
    rig.select(line, 2);
    QVERIFY(rig.operations.readEverything());
    const ModuleRecord& module = line.memory(2);
    const ModuleRecord& record = rig.state.current();
    VELMOR_VERIFY_SAME(wholeReadDifference(record, module));
    QCOMPARE(record.channels[16], ChannelRecord{});  // the spare slot is never filled
}

void FlowsTest::readEverythingOfModelThreeTakesElevenGainCoefficients()
{
    SimLine line({sim::ModuleAt{4, 3}});  // TM-B8
    QVERIFY(line.isReady());
    LinkRig rig;
    rig.select(line, 4);
    QVERIFY(rig.operations.readEverything());
    QCOMPARE(rig.state.current().channelCount, 8);
    VELMOR_VERIFY_SAME(wholeReadDifference(rig.state.current(), line.memory(4)));
}

void FlowsTest::failedModuleInformationReadStopsTheWholeRead()
{
    SimLine line({sim::ModuleAt{2, 2}});
    QVERIFY(line.isReady());
    line.addFault(2, sim::FaultKind::Silence, 1);
    LinkRig rig;
    rig.select(line, 2);
    const ModuleRecord before = rig.state.current();
    QVERIFY(!rig.operations.readEverything());
    QCOMPARE(line.requests().size(), 1);
    VELMOR_COMPARE_SAID(rig.dialogs.texts(), QStringList{QStringLiteral("No respond.")});
    QCOMPARE(rig.operations.exchange().failure(), Failure::NoReply);
    QVERIFY(rig.operations.sequenceDone());
    QCOMPARE(rig.state.current(), before);
}

void FlowsTest::failedStepStopsTheChainAfterIt()
{
    SimLine line({sim::ModuleAt{2, 2}});
    QVERIFY(line.isReady());
    line.addFault(2, sim::FaultKind::Checksum, 3);  // the second channel group
    LinkRig rig;
    rig.select(line, 2);
    QVERIFY(!rig.operations.readEverything());
    QCOMPARE(selectors(line), (QList<int>{0, 1, 2}));
    VELMOR_COMPARE_SAID(rig.dialogs.texts(), QStringList{QStringLiteral("Return data fail.")});
    QCOMPARE(rig.state.parseStatus, 3);
    // The first group was stored; nothing of the refused one was.
    VELMOR_VERIFY_SAME(channelParameterDifference(rig.state.current().channels[0], line.memory(2).channels[0]));
    VELMOR_VERIFY_SAME(channelParameterDifference(rig.state.current().channels[4], defaultChannel(4)));
}

void FlowsTest::sendEverythingWritesParametersAdjustAndCalibration()
{
    SimLine line({sim::ModuleAt{6, 1}});  // TM-A8
    QVERIFY(line.isReady());
    LinkRig rig;
    rig.select(line, 6);
    QVERIFY(rig.operations.readEverything());
    ModuleRecord& record = rig.state.current();
    for (size_t c = 0; c < 8; ++c) {
        record.channels[c].gain = static_cast<qint16>(c % 4);
        record.channels[c].cutoff = 1000 + static_cast<int>(c);
        record.channels[c].zeroAdjustTable[2] = 200 + static_cast<int>(c);
        record.channels[c].gainCoef[3] = 12345 + static_cast<int>(c);
    }
    line.clearFrames();
    QVERIFY(rig.operations.writeEverything());
    QCOMPARE(selectors(line), (QList<int>{1, 2, 5, 6, 9, 10, 11, 12}));
    for (size_t c = 0; c < 8; ++c) {
        VELMOR_VERIFY_SAME(channelParameterDifference(line.memory(6).channels[c], record.channels[c]));
        VELMOR_VERIFY_SAME(adjustDifference(line.memory(6).channels[c], record.channels[c]));
        VELMOR_VERIFY_SAME(coefficientDifference(line.memory(6).channels[c], record.channels[c], false));
    }
}

void FlowsTest::channelGroupsOfTheReadLayoutComeBackUnchanged()
{
    SimLine line({sim::ModuleAt{2, 2}});
    QVERIFY(line.isReady());
    LinkRig rig;
    rig.select(line, 2);
    QVERIFY(rig.operations.readEverything());
    const ModuleRecord module = line.memory(2);
    QVERIFY(rig.operations.writeEverything());
    // A read followed by a write gives the module its own values back.
    QCOMPARE(line.memory(2).channels, module.channels);
}

void FlowsTest::beckonGoesToEveryModuleWhateverIsSelected()
{
    SimLine line({sim::ModuleAt{9, 7}});  // TM-A8D at address 9
    QVERIFY(line.isReady());
    LinkRig rig;
    rig.select(line, 4);
    QSignalSpy refreshed(&rig.operations, &Operations::moduleRefreshed);
    QVERIFY(rig.operations.beckon());
    QCOMPARE(line.requests().first(), QByteArray("\xAA\xAA\x03\xFF\x10\x00\x0F", 7));
    QCOMPARE(rig.state.current().busAddress, 9);
    QCOMPARE(trimmedText(rig.state.current().modelName), QStringLiteral("TM-A8D"));
    QCOMPARE(rig.state.current().channelCount, 8);
    QCOMPARE(refreshed.count(), 1);
}

void FlowsTest::informationWriteWaitsForConfirmation()
{
    SimLine line({sim::ModuleAt{2, 2}});
    QVERIFY(line.isReady());
    LinkRig rig;
    rig.select(line, 2);
    rig.dialogs.answer = false;
    QVERIFY(!rig.operations.confirmAndWriteModuleInfo());
    QCOMPARE(rig.dialogs.questions.size(), 1);
    QCOMPARE(rig.dialogs.questions.first().second, QStringLiteral("Only one module."));
    QCOMPARE(rig.dialogs.questions.first().first, QStringLiteral("Module Setup"));
    // A beckon answered means the line has taken everything sent before it.
    QVERIFY(rig.operations.beckon());
    QCOMPARE(line.requests().size(), 1);
    QCOMPARE(static_cast<quint8>(line.requests().first()[kCommandOffset]), kCmdBeckon);
}

void FlowsTest::informationWriteGoesToAddress255WithTheNewAddress()
{
    SimLine line({sim::ModuleAt{2, 2}});
    QVERIFY(line.isReady());
    LinkRig rig;
    rig.select(line, 2);
    QVERIFY(rig.operations.readEverything());
    rig.state.current().busAddress = 11;
    rig.state.current().moduleNumber = 65535;
    line.clearFrames();
    QVERIFY(rig.operations.confirmAndWriteModuleInfo());
    const QByteArray request = line.requests().first();
    QCOMPARE(static_cast<quint8>(request[3]), 255);
    QCOMPARE(static_cast<quint8>(request[6]), 11);
    QCOMPARE(line.module(11).memory().moduleNumber, 65535);
    QCOMPARE(rig.state.current().moduleNumber, 65535);
}

void FlowsTest::portThatWillNotOpenStopsWithErrorTitle()
{
    LinkRig rig;
    rig.state.current().portNumber = 99;  // not in the list
    QVERIFY(!rig.operations.readChannelGroups());
    QVERIFY2(rig.dialogs.messages.size() == 1, qPrintable(saidAndExpected(rig.dialogs.texts(), {QStringLiteral("(one message)")})));
    QCOMPARE(rig.dialogs.messages.first().first, QStringLiteral("Error"));
    QCOMPARE(rig.dialogs.messages.first().second, QStringLiteral("Open COM port fail."));
    QVERIFY(rig.operations.exchange().replyOk() && rig.operations.exchange().replyFailed());
    QCOMPARE(rig.operations.exchange().failure(), Failure::PortNotOpened);
}

void FlowsTest::balancePortFailureUsesItsOwnTitle()
{
    LinkRig rig;
    rig.state.current().portNumber = 99;
    rig.state.languageMode = 1;
    QVERIFY(!rig.operations.balanceAndReadBack());
    QCOMPARE(rig.dialogs.messages.first().first, QStringLiteral("模块参数设置"));
    QCOMPARE(rig.dialogs.messages.first().second, QStringLiteral("打开串口失败。"));
    rig.dialogs.messages.clear();
    rig.state.languageMode = 2;
    QVERIFY(!rig.operations.balanceAndReadBack());
    QCOMPARE(rig.dialogs.messages.first().first, QStringLiteral("Module setup"));
    QVERIFY(rig.operations.sequenceDone());
}

void FlowsTest::failedBalanceNeitherWaitsNorRereads()
{
    SimLine line({sim::ModuleAt{2, 2}});
    QVERIFY(line.isReady());
    line.addFault(2, sim::FaultKind::Echo, 1);
    LinkRig rig;
    rig.select(line, 2);
    QElapsedTimer clock;
    clock.start();
    QVERIFY(!rig.operations.balanceAndReadBack());
    QVERIFY(clock.elapsed() < Operations::kBalanceSettleMs);  // no settling wait after a failure
    QCOMPARE(rig.state.parseStatus, 4);
    // A beckon answered means the line has taken everything sent before it.
    QVERIFY(rig.operations.beckon());
    QCOMPARE(line.requests().size(), 2);
    QCOMPARE(static_cast<quint8>(line.requests().first()[kCommandOffset]), kCmdBalance);
    QCOMPARE(static_cast<quint8>(line.requests().last()[kCommandOffset]), kCmdBeckon);
}

void FlowsTest::balanceReadsBackNewValuesOfMaskedChannels()
{
    sim::LineSettings settings;
    settings.fast = true;
    settings.balanceDelayMs = 500;
    SimLine line({sim::ModuleAt{2, 2}}, settings);
    QVERIFY(line.isReady());
    LinkRig rig;
    rig.select(line, 2);
    QVERIFY(rig.operations.readEverything());
    const ModuleRecord before = rig.state.current();
    rig.state.channelMask[0] = 0x0005;  // channels 1 and 3
    line.clearFrames();
    QElapsedTimer clock;
    clock.start();
    QVERIFY(rig.operations.balanceAndReadBack());
    QVERIFY(clock.elapsed() >= Operations::kBalanceSettleMs);
    QCOMPARE(line.requests().first().mid(7, 2), QByteArray("\x05\x00", 2));
    QCOMPARE(line.requests().size(), 1 + 17);  // the balance, then the whole read
    const ModuleRecord& after = rig.state.current();
    QCOMPARE(after.channels[0].balanceValue, line.memory(2).channels[0].balanceValue);
    QVERIFY(after.channels[0].balanceValue != before.channels[0].balanceValue);
    QVERIFY(after.channels[2].balanceValue != before.channels[2].balanceValue);
    QCOMPARE(after.channels[1].balanceValue, before.channels[1].balanceValue);
}

void FlowsTest::commandsAreLockedDuringARequest()
{
    SimLine line({sim::ModuleAt{2, 0}});
    QVERIFY(line.isReady());
    LinkRig rig;
    rig.select(line, 2);
    QList<bool> states;
    connect(&rig.operations, &Operations::commandsEnabled, this, [&](bool enabled) { states << enabled; });
    QVERIFY(rig.operations.readChannelGroup(0));
    QCOMPARE(states, (QList<bool>{false, true}));
}

void FlowsTest::sequenceIsMarkedRunningUntilItEnds()
{
    SimLine line({sim::ModuleAt{2, 0}});
    QVERIFY(line.isReady());
    LinkRig rig;
    rig.select(line, 2);
    QList<bool> during;
    connect(&rig.operations, &Operations::requestStarted, this, [&] { during << rig.operations.sequenceDone(); });
    QVERIFY(rig.operations.readAdjustBlocks());
    QCOMPARE(during, QList<bool>(4, false));  // the record still says 16 channels
    QVERIFY(rig.operations.sequenceDone());
}

QTEST_GUILESS_MAIN(FlowsTest)
#include "flows_test.moc"
