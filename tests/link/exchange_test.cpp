#include "link/frame_log.h"
#include "link_rig.h"
#include "protocol/replies.h"
#include "support/event_drain.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <ctime>

using namespace velmor;
using namespace velmor::testing;

namespace {

double processCpuSeconds()
{
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

}  // namespace

class ExchangeTest : public QObject {
    Q_OBJECT
private slots:
    void timeOutIsOneSecondAtStart();
    void aSecondStartIsRefusedWhileAReplyIsAwaited();
    void noiseBeforeTheReplyIsFoundAndAccepted();
    void tailOfAnEarlierReplyAheadDoesNotCompleteTheReplyEarly();
    void wrongChecksumGivesReturnDataFail();
    void echoOfTheCommandItselfIsRefusedWithStatus4();
    void rejectedReplyChangesNothingInTheTable();
    void replyMissingItsLastByteWaitsForTheTimeOut();
    void replySplitWithGapsIsGathered();
    void pacedReplyIsTakenAsSoonAsItIsComplete();
    void lateReplyDoesNotCorruptTheNextExchange();
    void staleReplyAheadOfTheAnswerIsSkipped();
    void moduleDroppingOffStopsTheChainAtThatStep();
    void vanishingPortEndsTheChainWithOneMessage();
    void chineseMessagesFollowTheLanguageFlag();
};

void ExchangeTest::timeOutIsOneSecondAtStart()
{
    LinkRig rig;
    QCOMPARE(rig.operations.exchange().overInterval(), 1000);
}

void ExchangeTest::aSecondStartIsRefusedWhileAReplyIsAwaited()
{
    SimLine line({sim::ModuleAt{5, 2}}, Pacing::Paced);
    QVERIFY(line.isReady());
    LinkRig rig;
    rig.select(line, 5);
    bool secondStarted = true;
    bool secondRead = true;
    QTimer::singleShot(20, [&] {
        secondStarted = rig.operations.exchange().start(beckonRequest(), rig.state.current().portNumber);
        secondRead = rig.operations.readChannelGroup(1);
    });
    QVERIFY(rig.operations.readModuleInfo());
    QVERIFY(!secondStarted);
    QVERIFY(!secondRead);
    QCOMPARE(line.requests(), QList<QByteArray>{readInfoRequest(5).frame()});
    VELMOR_COMPARE_SAID(rig.dialogs.texts());
    VELMOR_VERIFY_SAME(informationDifference(rig.state.current(), line.memory(5)));
}

void ExchangeTest::noiseBeforeTheReplyIsFoundAndAccepted()
{
    SimLine line({sim::ModuleAt{5, 2}});
    QVERIFY(line.isReady());
    line.addFault(5, sim::FaultKind::Noise);
    LinkRig rig;
    rig.select(line, 5);
    QVERIFY(rig.operations.readModuleInfo());
    VELMOR_COMPARE_SAID(rig.dialogs.texts());
    VELMOR_VERIFY_SAME(informationDifference(rig.state.current(), line.memory(5)));
}

void ExchangeTest::tailOfAnEarlierReplyAheadDoesNotCompleteTheReplyEarly()
{
    SimLine line({sim::ModuleAt{5, 2}});
    QVERIFY(line.isReady());
    // A lone AA and 53 bytes ahead of the reply; the first two pieces hold the
    // whole tail but only part of the reply.
    line.addFault(5, sim::FaultKind::Tail);
    line.addFault(5, sim::FaultKind::Split, 0, 60);
    LinkRig rig;
    rig.select(line, 5);
    FrameLog log;
    QObject::connect(&rig.operations.exchange(), &Exchange::frameLogged, &log, &FrameLog::append);
    QVERIFY(rig.operations.readModuleInfo());
    VELMOR_COMPARE_SAID(rig.dialogs.texts());
    // The tail was skipped as late, and the reply read whole.
    QCOMPARE(log.rows().last().outcome, FrameOutcome::Accepted);
    QCOMPARE(frameWithin(log.rows().last().frame).size(), kFullFrameLength);
    VELMOR_VERIFY_SAME(informationDifference(rig.state.current(), line.memory(5)));
}

void ExchangeTest::wrongChecksumGivesReturnDataFail()
{
    SimLine line({sim::ModuleAt{5, 2}});
    QVERIFY(line.isReady());
    line.addFault(5, sim::FaultKind::Checksum);
    LinkRig rig;
    rig.select(line, 5);
    QVERIFY(!rig.operations.readChannelGroup(0));
    QCOMPARE(rig.state.parseStatus, 3);
    QVERIFY2(rig.dialogs.messages.size() == 1, qPrintable(saidAndExpected(rig.dialogs.texts(), {QStringLiteral("(one message)")})));
    QCOMPARE(rig.dialogs.messages.first(), qMakePair(QStringLiteral("Module Setup"), QStringLiteral("Return data fail.")));
    QVERIFY(rig.operations.exchange().replyFailed());
    QVERIFY(!rig.operations.exchange().replyOk());
    QCOMPARE(rig.operations.exchange().failure(), Failure::BadReply);
    QVERIFY(!rig.port.isOpen());
}

void ExchangeTest::echoOfTheCommandItselfIsRefusedWithStatus4()
{
    SimLine line({sim::ModuleAt{5, 2}});
    QVERIFY(line.isReady());
    line.addFault(5, sim::FaultKind::Echo);
    LinkRig rig;
    rig.select(line, 5);
    QVERIFY(!rig.operations.readAdjustBlock(0));
    QCOMPARE(rig.state.parseStatus, 4);
    VELMOR_COMPARE_SAID(rig.dialogs.texts(), QStringList{QStringLiteral("Return data fail.")});
}

void ExchangeTest::rejectedReplyChangesNothingInTheTable()
{
    SimLine line({sim::ModuleAt{5, 2}});
    QVERIFY(line.isReady());
    line.addFault(5, sim::FaultKind::Checksum);
    LinkRig rig;
    rig.select(line, 5);
    const SetupState before = rig.state;
    QVERIFY(!rig.operations.readModuleInfo());
    QVERIFY(!rig.operations.readCalibrationPair(3));
    QCOMPARE(rig.state.table, before.table);
}

void ExchangeTest::replyMissingItsLastByteWaitsForTheTimeOut()
{
    SimLine line({sim::ModuleAt{5, 2}});
    QVERIFY(line.isReady());
    line.addFault(5, sim::FaultKind::Truncate, 0, 1);  // 54 of 55 bytes
    LinkRig rig;
    rig.select(line, 5);
    QElapsedTimer clock;
    clock.start();
    QVERIFY(!rig.operations.readChannelGroup(1));
    QVERIFY(clock.elapsed() >= Exchange::kOverAtStart);
    VELMOR_COMPARE_SAID(rig.dialogs.texts(), QStringList{QStringLiteral("No respond.")});
    QCOMPARE(rig.operations.exchange().failure(), Failure::NoReply);
    QVERIFY(rig.operations.exchange().replyOk() && rig.operations.exchange().replyFailed());
    QVERIFY(!rig.port.isOpen());
}

void ExchangeTest::replySplitWithGapsIsGathered()
{
    SimLine line({sim::ModuleAt{5, 2}});
    QVERIFY(line.isReady());
    line.addFault(5, sim::FaultKind::Split, 0, 150);
    LinkRig rig;
    rig.select(line, 5);
    QVERIFY(rig.operations.readChannelGroup(2));
    for (size_t c = 8; c < 12; ++c)
        VELMOR_VERIFY_SAME(channelParameterDifference(rig.state.current().channels[c], line.memory(5).channels[c]));
}

void ExchangeTest::pacedReplyIsTakenAsSoonAsItIsComplete()
{
    SimLine line({sim::ModuleAt{5, 2}}, Pacing::Paced);
    QVERIFY(line.isReady());
    LinkRig rig;
    rig.select(line, 5);
    QSignalSpy chunks(&rig.port, &ComPort::dataArrived);
    FrameLog log;
    QObject::connect(&rig.operations.exchange(), &Exchange::frameLogged, &log, &FrameLog::append);
    QVERIFY(rig.operations.readModuleInfo());
    // The bytes trickle in at 4800 baud, a chunk at a time; each is looked at
    // as it comes, and the reply is taken whole, without what follows it.
    QVERIFY(chunks.count() > 1);
    QCOMPARE(log.rows().last().frame.size(), kFullFrameLength);
}

void ExchangeTest::lateReplyDoesNotCorruptTheNextExchange()
{
    SimLine line({sim::ModuleAt{5, 2}});
    QVERIFY(line.isReady());
    line.addFault(5, sim::FaultKind::Late, 1, 1400);
    LinkRig rig;
    rig.select(line, 5);
    QVERIFY(!rig.operations.readModuleInfo());
    QCOMPARE(rig.operations.exchange().failure(), Failure::NoReply);
    // The late information reply lands while the next exchange is waiting.
    QVERIFY(rig.operations.readChannelGroup(3));
    QVERIFY(rig.operations.readChannelGroup(0));
    const ModuleRecord& record = rig.state.current();
    for (size_t c : {0u, 1u, 2u, 3u, 12u, 13u, 14u, 15u})
        VELMOR_VERIFY_SAME(channelParameterDifference(record.channels[c], line.memory(5).channels[c]));
    QCOMPARE(record.moduleNumber, defaultModule().moduleNumber);  // the stale reply was not stored
    VELMOR_COMPARE_SAID(rig.dialogs.texts(), QStringList{QStringLiteral("No respond.")});
}

void ExchangeTest::staleReplyAheadOfTheAnswerIsSkipped()
{
    const Request current = readChannelGroupRequest(defaultModule(), 1);
    const Request earlier = readInfoRequest(0);
    // The information reply of address 0, as a late module sends it.
    QByteArray late = writeInfoRequest(defaultModule()).frame();
    late[kAddressOffset] = 0;
    late[kCommandOffset] = static_cast<char>(kCmdRead + kReplyOffset);
    late[54] = static_cast<char>(checksumOf(reinterpret_cast<const quint8*>(late.constData()), kFullN));
    const QByteArray noise("\x00\x55", 2);
    QCOMPARE(staleReplyBytes(noise + late + noise, current, {earlier}), 2 + 55);
    // Only a reply to a request that timed out is stale; any other goes to the checks.
    QCOMPARE(staleReplyBytes(late, current, {}), 0);
    QByteArray broken = late;
    broken[kCommandOffset] = static_cast<char>(kCmdRead);
    broken[54] = static_cast<char>(checksumOf(reinterpret_cast<const quint8*>(broken.constData()), kFullN));
    QCOMPARE(staleReplyBytes(broken, current, {earlier}), 0);
    // A reply that answers the request in flight is never skipped.
    QCOMPARE(staleReplyBytes(late, earlier, {earlier}), 0);
}

void ExchangeTest::moduleDroppingOffStopsTheChainAtThatStep()
{
    SimLine line({sim::ModuleAt{5, 2}});
    QVERIFY(line.isReady());
    line.addFault(5, sim::FaultKind::Dropoff, 6);
    LinkRig rig;
    rig.select(line, 5);
    QVERIFY(!rig.operations.readEverything());
    QCOMPARE(line.requests().size(), 7);  // six answered, the seventh timed out
    VELMOR_COMPARE_SAID(rig.dialogs.texts(), QStringList{QStringLiteral("No respond.")});
}

void ExchangeTest::vanishingPortEndsTheChainWithOneMessage()
{
    // Paced, a reply takes over a tenth of a second; the line goes 20 ms after
    // the fifth request came in, in the middle of that exchange.
    SimLine line({sim::ModuleAt{5, 2}}, Pacing::Paced);
    QVERIFY(line.isReady());
    int requests = 0;
    QObject::connect(&line.line(), &sim::VirtualLine::frameLogged, &line.line(), [&](sim::Direction direction, const QByteArray&) {
        if (direction == sim::Direction::Received && ++requests == 5)
            QTimer::singleShot(20, &line.line(), [&] { line.vanish(); });
    });
    LinkRig rig;
    rig.select(line, 5);
    QSignalSpy lost(&rig.port, &ComPort::lost);
    const double cpuBefore = processCpuSeconds();
    QElapsedTimer clock;
    clock.start();
    QVERIFY(!rig.operations.readEverything());
    drainEvents();  // driver errors queued before the port let its descriptor go
    const double cpu = processCpuSeconds() - cpuBefore;
    QCOMPARE(requests, 5);
    QCOMPARE(lost.count(), 1);
    VELMOR_COMPARE_SAID(rig.dialogs.texts(), QStringList{QStringLiteral("No respond.")});
    QCOMPARE(rig.operations.exchange().failure(), Failure::NoReply);
    QVERIFY(!rig.port.isOpen());
    // A spinning loop would burn about as much CPU as time went by.
    QVERIFY2(cpu < 0.5 * (static_cast<double>(clock.elapsed()) / 1000.0),
             qPrintable(QStringLiteral("cpu %1 s over %2 ms").arg(cpu).arg(clock.elapsed())));
    // The next request finds the port gone and says so once.
    rig.dialogs.messages.clear();
    QVERIFY(!rig.operations.readModuleInfo());
    VELMOR_COMPARE_SAID(rig.dialogs.texts(), QStringList{QStringLiteral("Open COM port fail.")});
}

void ExchangeTest::chineseMessagesFollowTheLanguageFlag()
{
    SimLine line({sim::ModuleAt{5, 2}});
    QVERIFY(line.isReady());
    line.addFault(5, sim::FaultKind::Checksum, 1);
    line.addFault(5, sim::FaultKind::Silence, 2);
    LinkRig rig;
    rig.state.languageMode = 1;
    rig.select(line, 5);
    QVERIFY(!rig.operations.readModuleInfo());
    QVERIFY(!rig.operations.readModuleInfo());
    QCOMPARE(rig.dialogs.messages.at(0), qMakePair(QStringLiteral("模块参数设置"), QStringLiteral("返回数据错误。")));
    QCOMPARE(rig.dialogs.messages.at(1), qMakePair(QStringLiteral("模块参数设置"), QStringLiteral("通讯失败，没有响应。")));
}

QTEST_GUILESS_MAIN(ExchangeTest)
#include "exchange_test.moc"
