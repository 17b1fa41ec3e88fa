// Each fault does to a reply exactly what it says, on the exchanges it names.

#include "sim/faults.h"
#include "sim/sim_module.h"
#include "sim/sim_values.h"

#include "protocol/replies.h"
#include "protocol/requests.h"

#include <QTest>

using namespace velmor;
using namespace velmor::sim;

namespace {

QByteArray infoReply(int address, int modelCode)
{
    SimModule module(simulatedModule(address, modelCode, 1), 1);
    return module.answer(readInfoRequest(address).frame()).reply;
}

int statusOf(QByteArrayView received)
{
    ModuleRecord r = defaultModule();
    int status = 0;
    return parseParameterReply(frameWithin(received), kCmdRead, r, status) ? 0 : status;
}

FaultPlan planWith(const Fault& fault)
{
    FaultPlan plan;
    plan.add(fault);
    return plan;
}

}  // namespace

class SimFaultsTest : public QObject {
    Q_OBJECT

private slots:
    void withoutFaultsTheReplyIsUntouched();
    void noiseGoesAheadAndTheReplyIsStillFound();
    void tailGoesAheadAsALoneStartByteAndTheReplyIsStillFound();
    void checksumFaultIsRefusedWithStatusThree();
    void echoFaultIsRefusedWithStatusFour();
    void truncateDropsTheLastBytes();
    void lateDelaysByDefaultPastTheWait();
    void splitMakesThreePiecesWithGaps();
    void silenceKeepsTheModuleQuiet();
    void dropoffAnswersItsFirstExchangesOnly();
    void faultAtAnExchangeAppliesToThatExchangeOnly();
    void faultsOfAnotherModuleDoNotApply();
    void collidingRepliesAreAndedByteForByte();
    void faultTextsAreParsed_data();
    void faultTextsAreParsed();
    void kindNamesCoverEveryKind();
};

void SimFaultsTest::withoutFaultsTheReplyIsUntouched()
{
    const QByteArray reply = infoReply(1, 2);
    const Outgoing out = FaultPlan().shape(1, 1, reply);
    QCOMPARE(out.bytes, reply);
    QCOMPARE(out.delayMs, 0);
    QVERIFY(out.pieceStarts.isEmpty());
}

void SimFaultsTest::noiseGoesAheadAndTheReplyIsStillFound()
{
    const QByteArray reply = infoReply(1, 2);
    const Outgoing out = planWith({1, FaultKind::Noise}).shape(1, 1, reply);
    QCOMPARE(out.bytes, QByteArray::fromHex("0055") + reply);
    QCOMPARE(statusOf(out.bytes), 0);
}

void SimFaultsTest::tailGoesAheadAsALoneStartByteAndTheReplyIsStillFound()
{
    const QByteArray reply = infoReply(1, 2);
    const Outgoing out = planWith({1, FaultKind::Tail}).shape(1, 1, reply);
    QCOMPARE(out.bytes, reply.mid(1) + reply);
    QCOMPARE(quint8(out.bytes[0]), quint8(kFrameStart));
    QVERIFY(quint8(out.bytes[1]) != kFrameStart);
    QCOMPARE(statusOf(out.bytes), 0);
    QCOMPARE(planWith({1, FaultKind::Tail, 0, 3}).shape(1, 1, reply).bytes, reply.right(3) + reply);
}

void SimFaultsTest::checksumFaultIsRefusedWithStatusThree()
{
    const Outgoing out = planWith({1, FaultKind::Checksum}).shape(1, 1, infoReply(1, 2));
    QCOMPARE(statusOf(out.bytes), int(kStatusBadChecksum));
}

void SimFaultsTest::echoFaultIsRefusedWithStatusFour()
{
    const Outgoing out = planWith({1, FaultKind::Echo}).shape(1, 1, infoReply(1, 2));
    QCOMPARE(quint8(out.bytes[kCommandOffset]), quint8(kCmdRead));
    QCOMPARE(statusOf(out.bytes), int(kStatusBadCommand));
}

void SimFaultsTest::truncateDropsTheLastBytes()
{
    const QByteArray reply = infoReply(1, 2);
    QCOMPARE(planWith({1, FaultKind::Truncate}).shape(1, 1, reply).bytes, reply.first(54));
    QCOMPARE(planWith({1, FaultKind::Truncate, 0, 20}).shape(1, 1, reply).bytes, reply.first(35));
    QVERIFY(planWith({1, FaultKind::Truncate, 0, 99}).shape(1, 1, reply).bytes.isEmpty());
}

void SimFaultsTest::lateDelaysByDefaultPastTheWait()
{
    QCOMPARE(planWith({1, FaultKind::Late}).shape(1, 1, infoReply(1, 2)).delayMs, 1500);
    QCOMPARE(planWith({1, FaultKind::Late, 0, 300}).shape(1, 1, infoReply(1, 2)).delayMs, 300);
}

void SimFaultsTest::splitMakesThreePiecesWithGaps()
{
    const QByteArray reply = infoReply(1, 2);
    const Outgoing out = planWith({1, FaultKind::Split, 0, 40}).shape(1, 1, reply);
    QCOMPARE(out.bytes, reply);
    QCOMPARE(out.gapMs, 40);
    QCOMPARE(out.pieceStarts, (QList<int>{18, 36}));
    QCOMPARE(planWith({1, FaultKind::Split}).shape(1, 1, reply).gapMs, 100);
}

void SimFaultsTest::silenceKeepsTheModuleQuiet()
{
    const FaultPlan plan = planWith({1, FaultKind::Silence});
    QVERIFY(plan.silent(1, 1));
    QVERIFY(plan.silent(1, 7));
    QVERIFY(!plan.silent(2, 1));
}

void SimFaultsTest::dropoffAnswersItsFirstExchangesOnly()
{
    const FaultPlan plan = planWith({1, FaultKind::Dropoff, 2});
    QVERIFY(!plan.silent(1, 1));
    QVERIFY(!plan.silent(1, 2));
    QVERIFY(plan.silent(1, 3));
    QVERIFY(plan.silent(1, 40));
}

void SimFaultsTest::faultAtAnExchangeAppliesToThatExchangeOnly()
{
    const QByteArray reply = infoReply(1, 2);
    FaultPlan plan = planWith({1, FaultKind::Checksum, 2});
    plan.add({1, FaultKind::Silence, 3});
    QCOMPARE(plan.shape(1, 1, reply).bytes, reply);
    QVERIFY(plan.shape(1, 2, reply).bytes != reply);
    QCOMPARE(plan.shape(1, 4, reply).bytes, reply);
    QVERIFY(!plan.silent(1, 2));
    QVERIFY(plan.silent(1, 3));
    QVERIFY(!plan.silent(1, 4));
}

void SimFaultsTest::faultsOfAnotherModuleDoNotApply()
{
    const QByteArray reply = infoReply(1, 2);
    QCOMPARE(planWith({2, FaultKind::Echo}).shape(1, 1, reply).bytes, reply);
}

void SimFaultsTest::collidingRepliesAreAndedByteForByte()
{
    const QByteArray a = infoReply(1, 2);
    const QByteArray b = infoReply(2, 3);
    Outgoing slow;
    slow.bytes = b.first(10);
    slow.delayMs = 30;
    const Outgoing out = collide({Outgoing{a}, slow});
    QCOMPARE(out.bytes.size(), a.size());
    for (int i = 0; i < 10; ++i)
        QCOMPARE(quint8(out.bytes[i]), quint8(a[i] & b[i]));
    QCOMPARE(out.bytes.mid(10), a.mid(10));  // past the shorter one the line is idle high
    QCOMPARE(out.delayMs, 30);
    QVERIFY(statusOf(collide({Outgoing{a}, Outgoing{b}}).bytes) != 0);
}

void SimFaultsTest::faultTextsAreParsed_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("valid");
    QTest::addColumn<int>("address");
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("at");
    QTest::addColumn<int>("param");
    QTest::newRow("kind only") << "3:late" << true << 3 << int(FaultKind::Late) << 0 << -1;
    QTest::newRow("at") << "3:checksum:2" << true << 3 << int(FaultKind::Checksum) << 2 << -1;
    QTest::newRow("at and param") << "0:truncate:1:5" << true << 0 << int(FaultKind::Truncate) << 1 << 5;
    QTest::newRow("param, every exchange") << "4:split::20" << true << 4 << int(FaultKind::Split) << 0 << 20;
    QTest::newRow("dropoff") << "1:dropoff:4" << true << 1 << int(FaultKind::Dropoff) << 4 << -1;
    QTest::newRow("every kind name") << "1:noise" << true << 1 << int(FaultKind::Noise) << 0 << -1;
    QTest::newRow("echo") << "1:echo" << true << 1 << int(FaultKind::Echo) << 0 << -1;
    QTest::newRow("silence") << "1:silence" << true << 1 << int(FaultKind::Silence) << 0 << -1;
    QTest::newRow("unknown kind") << "1:loud" << false << 0 << 0 << 0 << 0;
    QTest::newRow("broadcast address") << "255:late" << false << 0 << 0 << 0 << 0;
    QTest::newRow("no kind") << "1" << false << 0 << 0 << 0 << 0;
    QTest::newRow("negative at") << "1:late:-1" << false << 0 << 0 << 0 << 0;
    QTest::newRow("text param") << "1:late:0:x" << false << 0 << 0 << 0 << 0;
    QTest::newRow("too many fields") << "1:late:0:1:2" << false << 0 << 0 << 0 << 0;
}

void SimFaultsTest::faultTextsAreParsed()
{
    QFETCH(QString, text);
    QFETCH(bool, valid);
    QString error;
    const std::optional<Fault> fault = parseFault(text, &error);
    QCOMPARE(fault.has_value(), valid);
    if (!valid) {
        QVERIFY(error.contains(text));
        return;
    }
    QFETCH(int, address);
    QFETCH(int, kind);
    QFETCH(int, at);
    QFETCH(int, param);
    QCOMPARE(*fault, (Fault{address, FaultKind(kind), at, param}));
}

void SimFaultsTest::kindNamesCoverEveryKind()
{
    QCOMPARE(faultKindNames(), (QStringList{"noise", "checksum", "echo", "truncate", "silence", "late", "split",
                                            "dropoff", "tail"}));
}

QTEST_GUILESS_MAIN(SimFaultsTest)
#include "sim_faults_test.moc"
