// The in-process line on a real pseudo-terminal: addressing, collisions,
// balance timing, faults as the far end sees them, vanishing, the frame log.

#include "support/pty_peer.h"
#include "support/sim_line.h"

#include "sim/request_reader.h"
#include "sim/sim_values.h"

#include "protocol/replies.h"
#include "protocol/requests.h"

#include <QFileInfo>
#include <QSignalSpy>
#include <QTest>

using namespace velmor;
using namespace velmor::sim;
using velmor::testing::PtyPeer;
using velmor::testing::SimLine;

namespace {

bool acceptedAsInformation(QByteArrayView received, quint8 command, ModuleRecord& into)
{
    int status = 0;
    return parseParameterReply(frameWithin(received), command, into, status);
}

// What the module at `address` answers to `request`, worked out off the line.
QByteArray answerOf(SimLine& line, int address, const QByteArray& request)
{
    return SimModule(line.memory(address), 1).answer(request).reply;
}

}  // namespace

class SimLineTest : public QObject {
    Q_OBJECT

private slots:
    void lineIsPublishedWhereThePortListLooks();
    void linkIsRemovedWithTheLine();
    void twoLinesWithOneNameAreRefused();
    void readOverThePseudoTerminalMatchesMemory();
    void onlyTheAddressedModuleAnswers();
    void beckonOfOneModuleRevealsItsAddress();
    void beckonOfTwoModulesCollidesAndIsRefused();
    void requestsToAddress255OtherThanBeckonAndInformationWriteGoUnansweredAndChangeNothing_data();
    void requestsToAddress255OtherThanBeckonAndInformationWriteGoUnansweredAndChangeNothing();
    void informationWriteAt255IsTakenByTheModuleOnTheLine();
    void requestsWithABadChecksumOrUnknownCommandGetNoAnswer_data();
    void requestsWithABadChecksumOrUnknownCommandGetNoAnswer();
    void partialRequestFollowedBySilenceIsDropped();
    void portClosedBetweenExchangesKeepsTheLineAlive();
    void writeIsKeptAndReportedAsAChange();
    void balanceAcknowledgesThenChangesMaskedChannelsLater();
    void faultsAsTheFarEndSeesThem_data();
    void faultsAsTheFarEndSeesThem();
    void lateReplyComesAfterItsDelay();
    void splitReplyArrivesInPiecesThatMakeOneFrame();
    void faultOnTheNthExchangeOnly();
    void moduleDropsOffAfterItsExchanges();
    void lineVanishesAfterItsExchanges();
    void aFastLineAnswersNothingAfterItsLastExchange();
    void everyFrameIsLogged();
    void logLineShowsTimeDirectionAndTheFrameOnOneLine();
};

void SimLineTest::lineIsPublishedWhereThePortListLooks()
{
    SimLine line;
    QVERIFY2(line.isReady(), qPrintable(line.error()));
    QVERIFY(line.devicePath().startsWith(QStringLiteral("/dev/pts/")));
    QCOMPARE(line.portName(), QStringLiteral("SIM1"));
    QCOMPARE(qEnvironmentVariable("VELMOR_PORTS_DIR"), testing::simPortsDir());
    const QFileInfo link(line.linkPath());
    QVERIFY(link.isSymLink());
    QCOMPARE(link.symLinkTarget(), line.devicePath());
}

void SimLineTest::linkIsRemovedWithTheLine()
{
    QString path;
    {
        SimLine line;
        path = line.linkPath();
        QVERIFY(QFileInfo(path).isSymLink());
    }
    QVERIFY(!QFileInfo(path).isSymLink());
}

void SimLineTest::twoLinesWithOneNameAreRefused()
{
    SimLine first;
    SimLine second;
    QVERIFY(first.isReady());
    QVERIFY(!second.isReady());
    QVERIFY(second.error().contains(QStringLiteral("SIM1")));
}

void SimLineTest::readOverThePseudoTerminalMatchesMemory()
{
    SimLine line({{1, 2}});
    PtyPeer peer(line.linkPath());
    QVERIFY2(peer.isOpen(), qPrintable(peer.error()));
    ModuleRecord program = defaultModule();
    program.busAddress = 1;
    const QByteArray reply = peer.exchange(readChannelGroupRequest(program, 1).frame(), kFullFrameLength);
    int status = 0;
    QVERIFY(parseInfoReply(reply, kCmdRead, program, status));
    QCOMPARE(program.channels[5].cutoff, line.memory(1).channels[5].cutoff);
    QCOMPARE(program.channels[7].balanceValue, line.memory(1).channels[7].balanceValue);
}

void SimLineTest::onlyTheAddressedModuleAnswers()
{
    SimLine line({{1, 2}, {4, 0}});
    PtyPeer peer(line.devicePath());
    ModuleRecord program = defaultModule();
    QVERIFY(acceptedAsInformation(peer.exchange(readInfoRequest(4).frame(), kFullFrameLength), kCmdRead,
                                  program));
    QCOMPARE(program.busAddress, qint16(4));
    QCOMPARE(trimmedText(program.modelName), QStringLiteral("TM-A4"));

    peer.clear();
    QVERIFY(peer.write(readInfoRequest(9).frame()));
    const QByteArray answer = answerOf(line, 4, readInfoRequest(4).frame());
    QCOMPARE(peer.probe(readInfoRequest(4).frame(), answer).toHex(' '), answer.toHex(' '));
}

void SimLineTest::beckonOfOneModuleRevealsItsAddress()
{
    SimLine line({{23, 3}});
    PtyPeer peer(line.devicePath());
    ModuleRecord program = defaultModule();
    QVERIFY(acceptedAsInformation(peer.exchange(beckonRequest().frame(), kFullFrameLength), kCmdBeckon, program));
    QCOMPARE(program.busAddress, qint16(23));
}

void SimLineTest::beckonOfTwoModulesCollidesAndIsRefused()
{
    SimLine line({{1, 2}, {2, 3}});
    PtyPeer peer(line.devicePath());
    const QByteArray received = peer.exchange(beckonRequest().frame(), kFullFrameLength);
    QCOMPARE(received.size(), kFullFrameLength);
    const QByteArray answer = answerOf(line, 1, readInfoRequest(1).frame());
    QCOMPARE(peer.probe(readInfoRequest(1).frame(), answer), received + answer);  // one broken frame, not two

    const QByteArray first = SimModule(line.memory(1), 1).answer(beckonRequest().frame()).reply;
    const QByteArray second = SimModule(line.memory(2), 1).answer(beckonRequest().frame()).reply;
    for (int i = 0; i < kFullFrameLength; ++i)
        QCOMPARE(quint8(received[i]), quint8(first[i] & second[i]));
    ModuleRecord program = defaultModule();
    QVERIFY(!acceptedAsInformation(received, kCmdBeckon, program));
}

void SimLineTest::requestsToAddress255OtherThanBeckonAndInformationWriteGoUnansweredAndChangeNothing_data()
{
    QTest::addColumn<QByteArray>("request");
    ModuleRecord every = simulatedModule(255, 2, 1);
    for (ChannelRecord& channel : every.channels)
        channel.cutoff = 4321;
    QTest::newRow("information read") << readInfoRequest(255).frame();
    QTest::newRow("group read") << readChannelGroupRequest(every, 0).frame();
    QTest::newRow("calibration read") << readCalibrationRequest(every, 0).frame();
    QTest::newRow("group write") << writeChannelGroupRequest(every, 0).frame();
    QTest::newRow("adjust write") << writeAdjustBlockRequest(every, 0).frame();
    QTest::newRow("calibration write") << writeCalibrationRequest(every, 0).frame();
    QTest::newRow("balance") << balanceRequest(every, -1).frame();
}

void SimLineTest::requestsToAddress255OtherThanBeckonAndInformationWriteGoUnansweredAndChangeNothing()
{
    QFETCH(QByteArray, request);
    LineSettings settings;
    settings.fast = true;
    settings.balanceDelayMs = 10;
    SimLine line({{1, 2}, {4, 0}}, settings);
    QSignalSpy changed(&line.line(), &VirtualLine::memoryChanged);
    const QList<ModuleRecord> before = line.line().bus().memories();
    PtyPeer peer(line.devicePath());
    QVERIFY(peer.write(request));
    const QByteArray answer = answerOf(line, 4, readInfoRequest(4).frame());
    QCOMPARE(peer.probe(readInfoRequest(4).frame(), answer).toHex(' '), answer.toHex(' '));
    QCOMPARE(line.requests().size(), 2);  // heard, and left alone
    QCOMPARE(line.replies(), QList<QByteArray>{answer});
    QCOMPARE(changed.size(), 0);
    QCOMPARE(line.line().bus().memories(), before);
}

void SimLineTest::informationWriteAt255IsTakenByTheModuleOnTheLine()
{
    SimLine line({{1, 2}});
    PtyPeer peer(line.devicePath());
    ModuleRecord program = line.memory(1);
    program.busAddress = 7;
    program.moduleNumber = 4242;
    ModuleRecord answered = defaultModule();
    QVERIFY(acceptedAsInformation(peer.exchange(writeInfoRequest(program).frame(), kFullFrameLength), kCmdWrite,
                                  answered));
    QCOMPARE(answered.busAddress, qint16(7));
    QCOMPARE(line.memory(7).moduleNumber, 4242);
}

void SimLineTest::requestsWithABadChecksumOrUnknownCommandGetNoAnswer_data()
{
    QTest::addColumn<QByteArray>("request");
    QByteArray bad = readInfoRequest(1).frame();
    bad[6] = char(bad[6] ^ 0x01);
    QTest::newRow("bad checksum") << bad;
    Frame f{};
    sealFrame(f, 3, 1, 0x13, 0);
    QTest::newRow("unknown command") << toBytes(f, kShortRequestLength);
}

void SimLineTest::requestsWithABadChecksumOrUnknownCommandGetNoAnswer()
{
    QFETCH(QByteArray, request);
    SimLine line;
    PtyPeer peer(line.devicePath());
    QVERIFY(peer.write(request));
    const QByteArray answer = answerOf(line, 1, beckonRequest().frame());
    QCOMPARE(peer.probe(beckonRequest().frame(), answer).toHex(' '), answer.toHex(' '));
    QCOMPARE(line.requests().size(), 2);  // heard and logged all the same
}

void SimLineTest::partialRequestFollowedBySilenceIsDropped()
{
    SimLine line;
    PtyPeer peer(line.devicePath());
    const QByteArray read = readInfoRequest(1).frame();
    QVERIFY(peer.write(read.first(4)));
    peer.stayQuiet(static_cast<int>(RequestReader::kQuietDropNs / 1'000'000) + 50);
    const QByteArray reply = peer.exchange(read, kFullFrameLength);
    ModuleRecord program = defaultModule();
    QVERIFY(acceptedAsInformation(reply, kCmdRead, program));
    const QByteArray answer = answerOf(line, 1, beckonRequest().frame());
    QCOMPARE(peer.probe(beckonRequest().frame(), answer), reply + answer);  // one reply to the read
}

void SimLineTest::portClosedBetweenExchangesKeepsTheLineAlive()
{
    SimLine line;
    for (int round = 0; round < 3; ++round) {
        PtyPeer peer(line.devicePath());
        ModuleRecord program = defaultModule();
        QVERIFY(acceptedAsInformation(peer.exchange(readInfoRequest(1).frame(), kFullFrameLength), kCmdRead,
                                      program));
    }
    QVERIFY(line.line().isOpen());
}

void SimLineTest::writeIsKeptAndReportedAsAChange()
{
    SimLine line;
    QSignalSpy changed(&line.line(), &VirtualLine::memoryChanged);
    PtyPeer peer(line.devicePath());
    ModuleRecord program = line.memory(1);
    program.channels[0].gain = 3;
    program.channels[0].cutoff = 777;
    const QByteArray reply = peer.exchange(writeChannelGroupRequest(program, 0).frame(), kFullFrameLength);
    int status = 0;
    QVERIFY(parseInfoReply(reply, kCmdWrite, program, status));
    QCOMPARE(line.memory(1).channels[0].cutoff, 777);
    QCOMPARE(changed.size(), 1);
}

void SimLineTest::balanceAcknowledgesThenChangesMaskedChannelsLater()
{
    LineSettings settings;
    settings.fast = true;
    settings.balanceDelayMs = 400;
    SimLine line({{1, 2}}, settings);
    QSignalSpy changed(&line.line(), &VirtualLine::memoryChanged);
    const ModuleRecord before = line.memory(1);
    PtyPeer peer(line.devicePath());
    const QByteArray ack = peer.exchange(balanceRequest(before, 0x0102).frame(), kAckLength);
    QCOMPARE(ack.toHex(' '), QByteArray("aa aa 06 01 44 00 09 02 01 51"));
    int status = 0;
    QVERIFY(parseShortReply(ack, kCmdBalance, status));
    QCOMPARE(line.memory(1), before);  // nothing yet

    QVERIFY(QTest::qWaitFor([&] { return changed.size() == 1; }, 2000));
    for (int c = 0; c < 16; ++c) {
        const qint32 old = before.channels[static_cast<size_t>(c)].balanceValue;
        const qint32 now = line.memory(1).channels[static_cast<size_t>(c)].balanceValue;
        QCOMPARE(now, (c == 1 || c == 8) ? balancedValue(1, 1, c, old) : old);
    }
}

void SimLineTest::faultsAsTheFarEndSeesThem_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("param");
    QTest::addColumn<int>("expectedBytes");  // what stands in the queue after the wait
    QTest::addColumn<int>("status");         // of the program's parser; 0 accepted
    QTest::newRow("noise") << int(FaultKind::Noise) << -1 << 57 << 0;
    QTest::newRow("checksum") << int(FaultKind::Checksum) << -1 << 55 << int(kStatusBadChecksum);
    QTest::newRow("echo") << int(FaultKind::Echo) << -1 << 55 << int(kStatusBadCommand);
    QTest::newRow("truncate") << int(FaultKind::Truncate) << -1 << 54 << int(kStatusBadChecksum);
    QTest::newRow("truncate 10") << int(FaultKind::Truncate) << 10 << 45 << int(kStatusBadChecksum);
    QTest::newRow("silence") << int(FaultKind::Silence) << -1 << 0 << -1;
    QTest::newRow("tail") << int(FaultKind::Tail) << -1 << 54 + 55 << 0;
}

void SimLineTest::faultsAsTheFarEndSeesThem()
{
    QFETCH(int, kind);
    QFETCH(int, param);
    QFETCH(int, expectedBytes);
    QFETCH(int, status);
    SimLine line;
    line.addFault(1, FaultKind(kind), 1, param);  // the probe after it is answered whole
    PtyPeer peer(line.devicePath());
    QVERIFY(peer.write(readInfoRequest(1).frame()));
    const QByteArray answer = answerOf(line, 1, beckonRequest().frame());
    const QByteArray received = peer.probe(beckonRequest().frame(), answer);
    QVERIFY(received.endsWith(answer));
    QCOMPARE(received.size() - answer.size(), expectedBytes);
    if (status < 0)
        return;
    ModuleRecord program = defaultModule();
    int got = 0;
    const bool accepted = parseParameterReply(frameWithin(received.first(expectedBytes)), kCmdRead, program, got);
    QCOMPARE(accepted ? 0 : got, status);
}

void SimLineTest::lateReplyComesAfterItsDelay()
{
    SimLine line;
    line.addFault(1, FaultKind::Late, 0, 400);
    PtyPeer peer(line.devicePath());
    const qint64 sent = peer.nowNs();
    QVERIFY(peer.write(readInfoRequest(1).frame()));
    QVERIFY(!peer.waitForBytes(1, 300));
    QVERIFY(peer.waitForBytes(kFullFrameLength, 1000));
    QVERIFY(peer.arrivals().first().ns - sent >= 400'000'000);
}

void SimLineTest::splitReplyArrivesInPiecesThatMakeOneFrame()
{
    SimLine line;
    line.addFault(1, FaultKind::Split, 0, 80);
    PtyPeer peer(line.devicePath());
    const QByteArray reply = peer.exchange(readInfoRequest(1).frame(), kFullFrameLength);
    QCOMPARE(peer.arrivals().size(), 3);
    QVERIFY(peer.arrivals()[2].ns - peer.arrivals()[0].ns >= 160'000'000);
    ModuleRecord program = defaultModule();
    QVERIFY(acceptedAsInformation(reply, kCmdRead, program));
}

void SimLineTest::faultOnTheNthExchangeOnly()
{
    SimLine line;
    line.addFault(1, FaultKind::Echo, 2);
    PtyPeer peer(line.devicePath());
    ModuleRecord program = defaultModule();
    const QByteArray read = readInfoRequest(1).frame();
    QVERIFY(acceptedAsInformation(peer.exchange(read, kFullFrameLength), kCmdRead, program));
    QVERIFY(!acceptedAsInformation(peer.exchange(read, kFullFrameLength), kCmdRead, program));
    QVERIFY(acceptedAsInformation(peer.exchange(read, kFullFrameLength), kCmdRead, program));
}

void SimLineTest::moduleDropsOffAfterItsExchanges()
{
    SimLine line({{1, 2}, {2, 2}});
    line.addFault(1, FaultKind::Dropoff, 2);
    PtyPeer peer(line.devicePath());
    const QByteArray read = readInfoRequest(1).frame();
    QCOMPARE(peer.exchange(read, kFullFrameLength).size(), kFullFrameLength);
    QCOMPARE(peer.exchange(read, kFullFrameLength).size(), kFullFrameLength);
    // Its neighbour still answers, and neither a read nor a write reaches the dropped module.
    const QByteArray answer = answerOf(line, 2, readInfoRequest(2).frame());
    peer.clear();
    QVERIFY(peer.write(read));
    QCOMPARE(peer.probe(readInfoRequest(2).frame(), answer).toHex(' '), answer.toHex(' '));
    ModuleRecord program = line.memory(1);
    program.channels[0].cutoff = 4321;
    peer.clear();
    QVERIFY(peer.write(writeChannelGroupRequest(program, 0).frame()));
    QCOMPARE(peer.probe(readInfoRequest(2).frame(), answer).toHex(' '), answer.toHex(' '));
    QVERIFY(line.memory(1).channels[0].cutoff != 4321);
}

void SimLineTest::lineVanishesAfterItsExchanges()
{
    LineSettings settings;
    settings.fast = true;
    settings.vanishAfter = 2;
    SimLine line({{1, 2}}, settings);
    QSignalSpy vanished(&line.line(), &VirtualLine::vanished);
    PtyPeer peer(line.devicePath());
    const QByteArray read = readInfoRequest(1).frame();
    QCOMPARE(peer.exchange(read, kFullFrameLength).size(), kFullFrameLength);
    QCOMPARE(peer.exchange(read, kFullFrameLength).size(), kFullFrameLength);  // the last one still comes
    QVERIFY(QTest::qWaitFor([&] { return peer.hungUp(); }, 2000));
    QCOMPARE(vanished.size(), 1);
    QVERIFY(!line.line().isOpen());
    QVERIFY(!QFileInfo(line.linkPath()).isSymLink());
}

// Gone after its last exchange, in fast mode too: the next request is
// never answered, even when it comes at once.
void SimLineTest::aFastLineAnswersNothingAfterItsLastExchange()
{
    LineSettings settings;
    settings.fast = true;
    settings.vanishAfter = 1;
    SimLine line({{1, 2}}, settings);
    PtyPeer peer(line.devicePath());
    const QByteArray read = readInfoRequest(1).frame();
    QCOMPARE(peer.exchange(read, kFullFrameLength).size(), kFullFrameLength);
    peer.clear();
    QVERIFY(peer.write(read));
    // Once the far end has hung up, nothing more can come.
    QVERIFY(QTest::qWaitFor([&] { return peer.hungUp(); }, 2000));
    QVERIFY2(peer.received().isEmpty(), peer.received().toHex(' ').constData());
    QCOMPARE(line.replies().size(), 1);
}

void SimLineTest::everyFrameIsLogged()
{
    SimLine line;
    PtyPeer peer(line.devicePath());
    const QByteArray read = readInfoRequest(1).frame();
    const QByteArray reply = peer.exchange(read, kFullFrameLength);
    QVERIFY(line.waitForReplies(1));
    QCOMPARE(line.requests(), QList<QByteArray>{read});
    QCOMPARE(line.replies(), QList<QByteArray>{reply});
    QCOMPARE(line.frames().first().direction, Direction::Received);
}

void SimLineTest::logLineShowsTimeDirectionAndTheFrameOnOneLine()
{
    const QTime t(9, 5, 7, 42);
    QCOMPARE(trafficLine(t, Direction::Received, readInfoRequest(1).frame()),
             QStringLiteral("09:05:07.042 > AA  AA  03  01  11  00  12"));
    const QString sent = trafficLine(t, Direction::Sent, QByteArray(kFullFrameLength, char(0xAA)));
    QVERIFY(sent.startsWith(QStringLiteral("09:05:07.042 < AA  AA")));
    QVERIFY(!sent.contains(QLatin1Char('\n')) && !sent.contains(QLatin1Char('\r')));
    QCOMPARE(sent.count(QStringLiteral("AA")), kFullFrameLength);
}

QTEST_GUILESS_MAIN(SimLineTest)
#include "sim_line_test.moc"
