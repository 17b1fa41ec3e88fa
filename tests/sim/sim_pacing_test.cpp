// Replies leave at 4800 baud byte times when paced, whole when fast, and
// never before the request has ended plus the turnaround.

#include "support/pty_peer.h"
#include "support/sim_line.h"

#include "sim/pacing.h"

#include "protocol/requests.h"

#include <QTest>

using namespace velmor;
using namespace velmor::sim;
using velmor::testing::Pacing;
using velmor::testing::PtyPeer;
using velmor::testing::SimLine;

namespace {

// The reader's own wake-up can stamp the first bytes a little late.
constexpr qint64 kStampSlackNs = 2 * kNsPerMs;

}  // namespace

class SimPacingTest : public QObject {
    Q_OBJECT

private slots:
    void byteTimeIsTenBitsAt4800Baud();
    void bytesAreDueOneByteTimeApartPlusGaps();
    void pacedFullReplyTakesAtLeast54ByteTimes();
    void pacedRepliesFollowEachOtherWithoutOverlap();
    void fastReplyComesWhole();
    void aLateReplyDoesNotHoldAPromptOneBehindIt();
    void turnaroundPassesBeforeTheFirstByte();
};

void SimPacingTest::byteTimeIsTenBitsAt4800Baud()
{
    QCOMPARE(kByteNs4800, qint64(2'083'333));
}

void SimPacingTest::bytesAreDueOneByteTimeApartPlusGaps()
{
    Outgoing out;
    out.bytes = QByteArray(9, 'x');
    QCOMPARE(byteOffsetNs(out, 0, 1000), qint64(0));
    QCOMPARE(byteOffsetNs(out, 8, 1000), qint64(8000));
    out.gapMs = 2;
    out.pieceStarts = {3, 6};
    QCOMPARE(byteOffsetNs(out, 2, 1000), qint64(2000));
    QCOMPARE(byteOffsetNs(out, 3, 1000), qint64(3000 + 2 * kNsPerMs));
    QCOMPARE(byteOffsetNs(out, 8, 1000), qint64(8000 + 4 * kNsPerMs));
    QCOMPARE(byteOffsetNs(out, 8, 0), qint64(4 * kNsPerMs));
}

void SimPacingTest::pacedFullReplyTakesAtLeast54ByteTimes()
{
    SimLine line({{1, 2}}, Pacing::Paced);
    PtyPeer peer(line.devicePath());
    const qint64 sent = peer.nowNs();
    QVERIFY(peer.write(readInfoRequest(1).frame()));
    QVERIFY(peer.waitForBytes(kFullFrameLength, 2000));
    const qint64 first = peer.arrivals().first().ns;
    const qint64 last = peer.arrivals().last().ns;
    QVERIFY2(last - first >= 54 * kByteNs4800 - kStampSlackNs, qPrintable(QString::number(last - first)));
    // 7 request bytes, the 5 ms turnaround, then 54 byte times to the last byte.
    QVERIFY(last - sent >= (7 + 54) * kByteNs4800 + 5 * kNsPerMs);
    QVERIFY(peer.arrivals().size() > 10);  // byte by byte, not in one lump
}

void SimPacingTest::pacedRepliesFollowEachOtherWithoutOverlap()
{
    SimLine line({{1, 2}}, Pacing::Paced);
    PtyPeer peer(line.devicePath());
    const QByteArray read = readInfoRequest(1).frame();
    QVERIFY(peer.write(read + read));
    QVERIFY(peer.waitForBytes(2 * kFullFrameLength, 3000));
    const qint64 span = peer.arrivals().last().ns - peer.arrivals().first().ns;
    QVERIFY2(span >= 109 * kByteNs4800 - kStampSlackNs, qPrintable(QString::number(span)));
    QCOMPARE(peer.received().first(kFullFrameLength), peer.received().mid(kFullFrameLength));
}

void SimPacingTest::fastReplyComesWhole()
{
    SimLine line({{1, 2}}, Pacing::Fast);
    PtyPeer peer(line.devicePath());
    QCOMPARE(peer.exchange(readInfoRequest(1).frame(), kFullFrameLength).size(), kFullFrameLength);
    QCOMPARE(peer.arrivals().size(), 1);
}

void SimPacingTest::aLateReplyDoesNotHoldAPromptOneBehindIt()
{
    SimLine line({{1, 2}, {2, 0}}, Pacing::Fast);
    line.addFault(1, FaultKind::Late, 0, 1500);
    PtyPeer peer(line.devicePath());
    QVERIFY(peer.write(readInfoRequest(1).frame()));
    QVERIFY(QTest::qWaitFor([&] { return line.requests().size() == 1; }, 2000));  // heard first
    QVERIFY(peer.write(readInfoRequest(2).frame()));
    // Module 2 answers at once, while module 1's reply is still 1.4 s away.
    QVERIFY(peer.waitForBytes(kFullFrameLength, 1000));
    QCOMPARE(static_cast<quint8>(peer.received().at(3)), quint8(2));
    QVERIFY(peer.waitForBytes(2 * kFullFrameLength, 3000));
    QCOMPARE(static_cast<quint8>(peer.received().at(kFullFrameLength + 3)), quint8(1));
}

void SimPacingTest::turnaroundPassesBeforeTheFirstByte()
{
    LineSettings settings;
    settings.fast = true;
    settings.turnaroundMs = 60;
    SimLine line({{1, 2}}, settings);
    PtyPeer peer(line.devicePath());
    const qint64 sent = peer.nowNs();
    QVERIFY(peer.write(readInfoRequest(1).frame()));
    QVERIFY(peer.waitForBytes(kFullFrameLength, 2000));
    QVERIFY(peer.arrivals().first().ns - sent >= 60 * kNsPerMs);
}

QTEST_GUILESS_MAIN(SimPacingTest)
#include "sim_pacing_test.moc"
