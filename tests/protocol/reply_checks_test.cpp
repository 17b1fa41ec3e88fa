// The six checks every reply goes through, their order and their status codes,
// and what each kind allows.
#include "byte_check.h"
#include "records.h"
#include "replies_kit.h"

#include "protocol/replies.h"

#include <QTest>

using namespace velmor;
using namespace velmor::testkit;

namespace {

constexpr int kUntouchedStatus = 99;

enum Fault : int {
    kFaultStart = 1 << 1,
    kFaultLength = 1 << 2,
    kFaultChecksum = 1 << 3,
    kFaultEcho = 1 << 4,
    kFaultGroup = 1 << 5,
};

// Spoils a valid reply. Later faults go in first, so that each earlier one
// still stands on top of them.
QByteArray withFaults(ReplyKind kind, int faults)
{
    const KindTraits t = traitsOf(kind);
    QByteArray frame = validReply(kind, t.groupFirst, bytesOf({1, 2, 3}));
    if (faults & kFaultGroup) {
        frame[5] = static_cast<char>(t.groupLast + 5);
        reseal(frame);
    }
    if (faults & kFaultEcho) {
        frame[4] = static_cast<char>(t.command);
        reseal(frame);
    }
    if (faults & kFaultChecksum)
        frame[t.n + 3] = static_cast<char>(frame[t.n + 3] + 1);
    if (faults & kFaultLength)
        frame[2] = static_cast<char>(t.nBelow);
    if (faults & kFaultStart)
        frame[1] = static_cast<char>(0xAB);
    return frame;
}

const char* kindName(ReplyKind kind)
{
    switch (kind) {
    case ReplyKind::Info: return "kind 1";
    case ReplyKind::Calibration: return "kind 2";
    case ReplyKind::Parameter: return "kind 3";
    case ReplyKind::Short: return "kind 4";
    }
    return "?";
}

constexpr ReplyKind kKinds[] = {ReplyKind::Info, ReplyKind::Calibration, ReplyKind::Parameter,
                                ReplyKind::Short};

}  // namespace

class ReplyChecksTest : public QObject {
    Q_OBJECT

private slots:
    void eachCheckRefusesWithItsStatusAndStoresNothing_data();
    void eachCheckRefusesWithItsStatusAndStoresNothing();
    void wrongChecksumIn55ByteReplyIsStatus3();
    void echoOfCommandItselfIsStatus4();
    void lengthLimitDependsOnKind_data();
    void lengthLimitDependsOnKind();
    void groupRangeDependsOnKind_data();
    void groupRangeDependsOnKind();
    void kindsTwoAndThreeClearStatusKindsOneAndFourKeepIt_data();
    void kindsTwoAndThreeClearStatusKindsOneAndFourKeepIt();
};

void ReplyChecksTest::eachCheckRefusesWithItsStatusAndStoresNothing_data()
{
    QTest::addColumn<ReplyKind>("kind");
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<int>("status");

    const struct {
        int fault;
        int status;
        const char* name;
    } checks[] = {
        {kFaultStart, 1, "start bytes"},
        {kFaultLength, 2, "length"},
        {kFaultChecksum, 3, "checksum"},
        {kFaultEcho, 4, "echo"},
        {kFaultGroup, 5, "group"},
    };
    for (ReplyKind kind : kKinds) {
        int laterFaults = 0;
        for (int i = 4; i >= 0; --i) {
            const auto& c = checks[i];
            QTest::addRow("%s, %s wrong", kindName(kind), c.name) << kind << withFaults(kind, c.fault) << c.status;
            if (laterFaults)
                QTest::addRow("%s, %s and every later check wrong", kindName(kind), c.name)
                    << kind << withFaults(kind, c.fault | laterFaults) << c.status;
            laterFaults |= c.fault;
        }
        QByteArray firstByte = validReply(kind, traitsOf(kind).groupFirst);
        firstByte[0] = 0x55;
        QTest::addRow("%s, first byte wrong", kindName(kind)) << kind << firstByte << 1;
    }
}

void ReplyChecksTest::eachCheckRefusesWithItsStatusAndStoresNothing()
{
    QFETCH(ReplyKind, kind);
    QFETCH(QByteArray, frame);
    QFETCH(int, status);

    const ModuleRecord before = markedRecord();
    ModuleRecord record = before;
    int parseStatus = kUntouchedStatus;
    QVERIFY(!parseReply(kind, frame, traitsOf(kind).command, record, parseStatus));
    QCOMPARE(parseStatus, status);
    VELMOR_COMPARE_RECORD(record, before);
}

void ReplyChecksTest::wrongChecksumIn55ByteReplyIsStatus3()
{
    QByteArray frame = validReply(ReplyKind::Info, 2);
    QCOMPARE(frame.size(), 55);
    frame[54] = static_cast<char>(frame[54] ^ 0x40);
    ModuleRecord record = markedRecord();
    int status = 0;
    QVERIFY(!parseInfoReply(frame, kCmdRead, record, status));
    QCOMPARE(status, 3);
}

void ReplyChecksTest::echoOfCommandItselfIsStatus4()
{
    const QByteArray frame = makeReply(51, 5, kCmdRead, 1);
    ModuleRecord record = markedRecord();
    int status = 0;
    QVERIFY(!parseInfoReply(frame, kCmdRead, record, status));
    QCOMPARE(status, 4);
    VELMOR_COMPARE_RECORD(record, markedRecord());
}

void ReplyChecksTest::lengthLimitDependsOnKind_data()
{
    QTest::addColumn<ReplyKind>("kind");
    QTest::addColumn<int>("n");
    QTest::addColumn<bool>("accepted");
    for (ReplyKind kind : kKinds) {
        const int limit = traitsOf(kind).nBelow;
        QTest::addRow("%s, N = %d", kindName(kind), limit - 1) << kind << limit - 1 << true;
        QTest::addRow("%s, N = %d", kindName(kind), limit) << kind << limit << false;
        QTest::addRow("%s, N = %d", kindName(kind), limit + 1) << kind << limit + 1 << false;
        QTest::addRow("%s, N = 255", kindName(kind)) << kind << 255 << false;
        QTest::addRow("%s, N = 3", kindName(kind)) << kind << 3 << true;
    }
    QTest::newRow("kind 1, N = 7") << ReplyKind::Info << 7 << true;
    QTest::newRow("kind 2, N = 7") << ReplyKind::Calibration << 7 << true;
    QTest::newRow("kind 3, N = 7") << ReplyKind::Parameter << 7 << true;
}

void ReplyChecksTest::lengthLimitDependsOnKind()
{
    QFETCH(ReplyKind, kind);
    QFETCH(int, n);
    QFETCH(bool, accepted);
    const KindTraits t = traitsOf(kind);
    // A well-formed frame of that N, checksum right: only the limit decides.
    const QByteArray frame = makeReply(n, 5, t.command + 0x30, t.groupFirst);
    ModuleRecord record = markedRecord();
    int status = kUntouchedStatus;
    QCOMPARE(parseReply(kind, frame, t.command, record, status), accepted);
    if (!accepted)
        QCOMPARE(status, 2);
}

void ReplyChecksTest::groupRangeDependsOnKind_data()
{
    QTest::addColumn<ReplyKind>("kind");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");
    QTest::newRow("kind 1 takes 0..4") << ReplyKind::Info << 0 << 4;
    // 5..20 pass the group check, but 17..20 would name channel slots past the
    // sixteenth and are refused with the same status, storing nothing.
    QTest::newRow("kind 2 takes 5..16") << ReplyKind::Calibration << 5 << 16;
    QTest::newRow("kind 3 takes 0") << ReplyKind::Parameter << 0 << 0;
    QTest::newRow("kind 4 takes 0..9") << ReplyKind::Short << 0 << 9;
}

void ReplyChecksTest::groupRangeDependsOnKind()
{
    QFETCH(ReplyKind, kind);
    QFETCH(int, first);
    QFETCH(int, last);
    const ModuleRecord before = markedRecord();
    for (int group = 0; group < 256; ++group) {
        ModuleRecord record = before;
        int status = kUntouchedStatus;
        const bool inRange = group >= first && group <= last;
        const bool accepted = parseReply(kind, validReply(kind, group), traitsOf(kind).command, record, status);
        if (accepted != inRange)
            QFAIL(qPrintable(QStringLiteral("group %1: accepted %2").arg(group).arg(accepted)));
        if (!inRange) {
            QCOMPARE(status, 5);
            VELMOR_COMPARE_RECORD(record, before);
        }
    }
}

void ReplyChecksTest::kindsTwoAndThreeClearStatusKindsOneAndFourKeepIt_data()
{
    QTest::addColumn<ReplyKind>("kind");
    QTest::addColumn<int>("statusAfter");
    QTest::newRow("kind 1 keeps it") << ReplyKind::Info << 3;
    QTest::newRow("kind 2 clears it") << ReplyKind::Calibration << 0;
    QTest::newRow("kind 3 clears it") << ReplyKind::Parameter << 0;
    QTest::newRow("kind 4 keeps it") << ReplyKind::Short << 3;
}

void ReplyChecksTest::kindsTwoAndThreeClearStatusKindsOneAndFourKeepIt()
{
    QFETCH(ReplyKind, kind);
    QFETCH(int, statusAfter);
    const KindTraits t = traitsOf(kind);
    ModuleRecord record = markedRecord();
    int status = 0;

    // A refusal leaves its reason behind...
    QByteArray bad = validReply(kind, t.groupFirst);
    bad[t.n + 3] = static_cast<char>(bad[t.n + 3] + 1);
    QVERIFY(!parseReply(kind, bad, t.command, record, status));
    QCOMPARE(status, 3);
    // ...which the next accepted reply clears or keeps, depending on the kind.
    QVERIFY(parseReply(kind, validReply(kind, t.groupFirst), t.command, record, status));
    QCOMPARE(status, statusAfter);
}

QTEST_GUILESS_MAIN(ReplyChecksTest)
#include "reply_checks_test.moc"
