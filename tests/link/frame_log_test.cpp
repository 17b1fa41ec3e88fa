// The rows the frame log takes from exchanges with a simulated line: one out
// and one in per exchange, each in row saying what became of its bytes.
#include "link/frame_log.h"
#include "link_rig.h"
#include "model/models.h"

#include <QSignalSpy>
#include <QTest>
#include <QThread>

#include <memory>

using namespace velmor;
using namespace velmor::testing;

namespace {


// The log of the rig's exchange, from now on.
struct LoggedRig : LinkRig {
    LoggedRig() { QObject::connect(&operations.exchange(), &Exchange::frameLogged, &log, &FrameLog::append); }
    FrameLog log;
};

QList<FrameOutcome> outcomes(const FrameLog& log)
{
    QList<FrameOutcome> list;
    for (const FrameRow& row : log.rows())
        list << row.outcome;
    return list;
}

}  // namespace

class FrameLogTest : public QObject {
    Q_OBJECT
private slots:
    void wholeReadOfSixteenChannelsGivesThirtyFourRows();
    void refusedReplyShowsItsStatus_data();
    void refusedReplyShowsItsStatus();
    void timeOutRowHoldsWhatHadArrived();
    void silentModuleGivesAnEmptyTimedOutRow();
    void lateReplyIsSkippedInARowOfItsOwn_data();
    void lateReplyIsSkippedInARowOfItsOwn();
    void noiseAheadOfAReplyIsInItsRow();
    void requestWhosePortWillNotOpenHasNoRow();
    void rowsOfAnExchangeInAnotherThreadArriveInTheLogsThread();
    void clearEmptiesTheLog();
};

void FrameLogTest::wholeReadOfSixteenChannelsGivesThirtyFourRows()
{
    SimLine line({sim::ModuleAt{1, kTmC16}});
    QVERIFY(line.isReady());
    LoggedRig rig;
    rig.select(line, 1);
    const qint64 before = frameLogClock();
    QVERIFY(rig.operations.readEverything());
    const qint64 after = frameLogClock();

    const QList<FrameRow>& rows = rig.log.rows();
    QCOMPARE(rows.size(), 34);
    QCOMPARE(line.requests().size(), 17);
    for (int i = 0; i < 17; ++i) {
        const FrameRow& out = rows[2 * i];
        const FrameRow& in = rows[2 * i + 1];
        QCOMPARE(out.direction, FrameDirection::Out);
        QCOMPARE(out.outcome, FrameOutcome::Sent);
        QCOMPARE(out.frame, line.requests()[i]);
        QCOMPARE(in.direction, FrameDirection::In);
        QCOMPARE(in.outcome, FrameOutcome::Accepted);
        QCOMPARE(in.frame, line.replies()[i]);
        QCOMPARE(in.status, 0);
    }
    qint64 previous = before;
    for (const FrameRow& row : rows) {
        QCOMPARE(row.line, line.portName());
        QVERIFY2(row.msecsSinceEpoch >= previous, "times never go back");
        previous = row.msecsSinceEpoch;
    }
    QVERIFY(previous <= after);
}

void FrameLogTest::refusedReplyShowsItsStatus_data()
{
    QTest::addColumn<sim::FaultKind>("fault");
    QTest::addColumn<int>("status");
    QTest::newRow("checksum") << sim::FaultKind::Checksum << 3;
    QTest::newRow("echo") << sim::FaultKind::Echo << 4;
}

void FrameLogTest::refusedReplyShowsItsStatus()
{
    QFETCH(sim::FaultKind, fault);
    QFETCH(int, status);
    SimLine line({sim::ModuleAt{5, kTmC16}});
    QVERIFY(line.isReady());
    line.addFault(5, fault, 2);
    LoggedRig rig;
    rig.select(line, 5);
    QVERIFY(rig.operations.readChannelGroup(0));
    QVERIFY(!rig.operations.readChannelGroup(1));
    QCOMPARE(outcomes(rig.log), (QList<FrameOutcome>{FrameOutcome::Sent, FrameOutcome::Accepted, FrameOutcome::Sent,
                                                     FrameOutcome::Refused}));
    const FrameRow& refused = rig.log.rows().last();
    QCOMPARE(refused.status, status);
    QCOMPARE(refused.frame, line.replies().last());
    QCOMPARE(rig.log.rows().first().status, 0);
}

void FrameLogTest::timeOutRowHoldsWhatHadArrived()
{
    SimLine line({sim::ModuleAt{5, kTmC16}});
    QVERIFY(line.isReady());
    line.addFault(5, sim::FaultKind::Truncate, 0, 1);  // 54 of 55 bytes
    LoggedRig rig;
    rig.select(line, 5);
    QVERIFY(!rig.operations.readChannelGroup(1));
    QCOMPARE(outcomes(rig.log), (QList<FrameOutcome>{FrameOutcome::Sent, FrameOutcome::TimedOut}));
    const FrameRow& timedOut = rig.log.rows().last();
    QCOMPARE(timedOut.direction, FrameDirection::In);
    QCOMPARE(timedOut.frame.size(), 54);
    QCOMPARE(timedOut.frame, line.replies().last());
    QVERIFY(timedOut.msecsSinceEpoch - rig.log.rows().first().msecsSinceEpoch >= Exchange::kOverAtStart);
}

void FrameLogTest::silentModuleGivesAnEmptyTimedOutRow()
{
    SimLine line({sim::ModuleAt{5, kTmC16}});
    QVERIFY(line.isReady());
    line.addFault(5, sim::FaultKind::Silence);
    LoggedRig rig;
    rig.select(line, 5);
    QVERIFY(!rig.operations.readModuleInfo());
    QCOMPARE(outcomes(rig.log), (QList<FrameOutcome>{FrameOutcome::Sent, FrameOutcome::TimedOut}));
    QVERIFY(rig.log.rows().last().frame.isEmpty());
}

void FrameLogTest::lateReplyIsSkippedInARowOfItsOwn_data()
{
    QTest::addColumn<sim::FaultKind>("secondModule");
    QTest::addColumn<FrameOutcome>("secondOutcome");
    QTest::newRow("answered after it") << sim::FaultKind::Late << FrameOutcome::Accepted;
    QTest::newRow("silence after it") << sim::FaultKind::Silence << FrameOutcome::TimedOut;
}

void FrameLogTest::lateReplyIsSkippedInARowOfItsOwn()
{
    QFETCH(sim::FaultKind, secondModule);
    QFETCH(FrameOutcome, secondOutcome);
    // Module 5 answers 1.4 s late, past the 1 s wait; its reply lands while
    // the next request, to module 6, waits for a reply that comes 0.6 s late
    // (after the stale one, within the wait) or never.
    SimLine line({sim::ModuleAt{5, kTmC16}, sim::ModuleAt{6, kTmC16}});
    QVERIFY(line.isReady());
    line.addFault(5, sim::FaultKind::Late, 1, 1400);
    line.addFault(6, secondModule, 1, 600);
    LoggedRig rig;
    rig.select(line, 5);
    QVERIFY(!rig.operations.readModuleInfo());
    rig.state.current().busAddress = 6;
    QCOMPARE(rig.operations.readModuleInfo(), secondOutcome == FrameOutcome::Accepted);
    QCOMPARE(outcomes(rig.log), (QList<FrameOutcome>{FrameOutcome::Sent, FrameOutcome::TimedOut, FrameOutcome::Sent,
                                                     FrameOutcome::SkippedLate, secondOutcome}));
    const QList<FrameRow>& rows = rig.log.rows();
    QVERIFY(rows[1].frame.isEmpty());
    QCOMPARE(rows[3].direction, FrameDirection::In);
    QCOMPARE(rows[3].frame, line.replies().first());
    QCOMPARE(rows[3].frame[kAddressOffset], '\x05');
    QCOMPARE(rows[4].frame, line.replies().size() == 2 ? line.replies().last() : QByteArray());
    QVERIFY(rows[3].msecsSinceEpoch <= rows[4].msecsSinceEpoch);
}

void FrameLogTest::noiseAheadOfAReplyIsInItsRow()
{
    SimLine line({sim::ModuleAt{5, kTmC16}});
    QVERIFY(line.isReady());
    line.addFault(5, sim::FaultKind::Noise);
    LoggedRig rig;
    rig.select(line, 5);
    QVERIFY(rig.operations.readModuleInfo());
    const FrameRow& in = rig.log.rows().last();
    QCOMPARE(in.outcome, FrameOutcome::Accepted);
    QVERIFY(in.frame.startsWith(QByteArray("\x00\x55\xAA\xAA", 4)));
    QCOMPARE(in.frame, line.replies().last());
}

void FrameLogTest::requestWhosePortWillNotOpenHasNoRow()
{
    SimLine line({sim::ModuleAt{5, kTmC16}});
    QVERIFY(line.isReady());
    LoggedRig rig;
    rig.select(line, 5);
    rig.state.current().portNumber = 99;
    QVERIFY(!rig.operations.readModuleInfo());
    QCOMPARE(rig.operations.exchange().failure(), Failure::PortNotOpened);
    QVERIFY(rig.log.rows().isEmpty());
}

void FrameLogTest::rowsOfAnExchangeInAnotherThreadArriveInTheLogsThread()
{
    SimLine line({sim::ModuleAt{5, kTmC16}});
    QVERIFY(line.isReady());
    const QList<PortEntry> ports = listPorts({}, simPortsDir());
    const auto entry = std::find_if(ports.begin(), ports.end(), [&](const PortEntry& p) { return p.name == line.portName(); });
    QVERIFY(entry != ports.end());
    FrameLog log;
    QList<QThread*> appendedIn;
    connect(&log, &FrameLog::appended, this, [&] { appendedIn << QThread::currentThread(); });

    // As a search runs each line: the exchange made and run in a thread of
    // its own; the line answers from this thread's event loop.
    bool read = false;
    std::unique_ptr<QThread> worker(QThread::create([&] {
        SetupState state;
        state.reset();
        state.current().portNumber = static_cast<qint16>(entry->number);
        state.current().busAddress = 5;
        ComPort port;
        port.setPorts(ports);
        RecordingDialogs dialogs;
        Operations operations(state, port, dialogs);
        QObject::connect(&operations.exchange(), &Exchange::frameLogged, &log, &FrameLog::append);
        read = operations.readModuleInfo();
    }));
    QSignalSpy finished(worker.get(), &QThread::finished);
    worker->start();
    QVERIFY(finished.wait(5000));
    QVERIFY(read);
    QTRY_COMPARE(log.rows().size(), 2);
    QCOMPARE(appendedIn, (QList<QThread*>{QThread::currentThread(), QThread::currentThread()}));
    QCOMPARE(log.rows()[0].frame, readInfoRequest(5).frame());
    QCOMPARE(log.rows()[0].line, line.portName());
    QCOMPARE(log.rows()[1].frame, line.replies().last());
    QCOMPARE(log.rows()[1].outcome, FrameOutcome::Accepted);
}

void FrameLogTest::clearEmptiesTheLog()
{
    SimLine line({sim::ModuleAt{5, kTmC16}});
    QVERIFY(line.isReady());
    LoggedRig rig;
    rig.select(line, 5);
    QVERIFY(rig.operations.readModuleInfo());
    QSignalSpy cleared(&rig.log, &FrameLog::cleared);
    rig.log.clear();
    QCOMPARE(cleared.count(), 1);
    QVERIFY(rig.log.rows().isEmpty());
    QVERIFY(rig.operations.readModuleInfo());
    QCOMPARE(rig.log.rows().size(), 2);
}

QTEST_GUILESS_MAIN(FrameLogTest)
#include "frame_log_test.moc"
