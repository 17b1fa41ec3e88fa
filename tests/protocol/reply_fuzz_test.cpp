// Random and damaged frames through every parser: no crash, no store from a
// refused reply, no acceptance without a sound envelope. Fixed seeds, so a
// failure repeats; the failure message shows the frame.
#include "byte_check.h"
#include "records.h"
#include "replies_kit.h"

#include "protocol/replies.h"

#include <QTest>

#include <array>

using namespace velmor;
using namespace velmor::testkit;

namespace {

constexpr int kIterations = 100'000;
constexpr int kStatusBefore = 77;

class FrameSource {
public:
    FrameSource(ReplyKind kind, unsigned seed) : kind_(kind), traits_(traitsOf(kind)), rng_(seed) {}

    QByteArray next()
    {
        QByteArray frame;
        switch (below(4)) {
        case 0: frame = randomBytes(below(121)); break;
        case 1: frame = bytesOf({0xAA, 0xAA, below(64)}) + randomBytes(below(118)); break;
        default: frame = damaged(); break;
        }
        if (below(4) == 0)
            frame = randomBytes(below(6)) + frame;   // noise ahead, as on the line
        return frame;
    }

    quint8 command()
    {
        return below(16) == 0 ? static_cast<quint8>(rng_()) : traits_.command;
    }

    int below(int limit) { return static_cast<int>(rng_() % static_cast<unsigned>(limit)); }

private:
    QByteArray randomBytes(int count)
    {
        QByteArray out(count, '\0');
        for (char& b : out)
            b = static_cast<char>(rng_());
        return out;
    }

    // A reply the parser would take, then flipped, cut, lengthened and
    // possibly resealed so that damaged content also reaches the stores.
    QByteArray damaged()
    {
        const int n = below(3) == 0 ? below(traits_.nBelow) : traits_.n;
        const int group = below(8) == 0 ? below(256) : traits_.groupFirst + below(traits_.groupLast - traits_.groupFirst + 5);
        QByteArray frame = makeReply(n, below(256), traits_.command + 0x30, group, randomBytes(n));
        for (int m = below(4); m > 0; --m) {
            switch (below(3)) {
            case 0:
                if (!frame.isEmpty())
                    frame[below(static_cast<int>(frame.size()))] ^= static_cast<char>(1 + below(255));
                break;
            case 1: frame.truncate(below(static_cast<int>(frame.size()) + 1)); break;
            case 2: frame += randomBytes(1 + below(12)); break;
            }
        }
        if (below(2) == 0)
            reseal(frame);
        return frame;
    }

    ReplyKind kind_;
    KindTraits traits_;
    std::mt19937 rng_;
};

// The envelope checked here, independently of the parser: what an accepted
// frame must have been.
QString unsound(QByteArrayView frame, quint8 command, const KindTraits& t)
{
    if (frame.size() < 3 || quint8(frame[0]) != 0xAA || quint8(frame[1]) != 0xAA)
        return QStringLiteral("start bytes");
    const int n = quint8(frame[2]);
    if (n >= t.nBelow)
        return QStringLiteral("length");
    if (frame.size() < n + 4 || wireSum(frame, n) != quint8(frame[n + 3]))
        return QStringLiteral("checksum");
    // Payload byte i is frame byte 3 + i for i up to N (the checksum), 0 past it.
    const auto p = [&](int i) { return i <= n ? int(quint8(frame[3 + i])) : 0; };
    if (p(1) != quint8(command + 0x30))
        return QStringLiteral("echo");
    if (p(2) < t.groupFirst || p(2) > t.groupLast)
        return QStringLiteral("group");
    return {};
}

}  // namespace

class ReplyFuzzTest : public QObject {
    Q_OBJECT

private slots:
    void randomFramesNeverCrashOrCorruptTheRecord_data();
    void randomFramesNeverCrashOrCorruptTheRecord();
};

void ReplyFuzzTest::randomFramesNeverCrashOrCorruptTheRecord_data()
{
    QTest::addColumn<ReplyKind>("kind");
    QTest::addColumn<unsigned>("seed");
    QTest::addColumn<int>("statusAfterAcceptance");
    QTest::newRow("kind 1, parseInfoReply") << ReplyKind::Info << 0x51u << kStatusBefore;
    QTest::newRow("kind 2, parseCalibrationReply") << ReplyKind::Calibration << 0x52u << 0;
    QTest::newRow("kind 3, parseParameterReply") << ReplyKind::Parameter << 0x53u << 0;
    QTest::newRow("kind 4, parseShortReply") << ReplyKind::Short << 0x54u << kStatusBefore;
}

void ReplyFuzzTest::randomFramesNeverCrashOrCorruptTheRecord()
{
    QFETCH(ReplyKind, kind);
    QFETCH(unsigned, seed);
    QFETCH(int, statusAfterAcceptance);

    const KindTraits traits = traitsOf(kind);
    FrameSource source(kind, seed);
    // Two starting records, so that both calibration layouts are exercised.
    std::array<ModuleRecord, 2> baselines{markedRecord(), markedRecord()};
    baselines[0].modelCode = 3;
    baselines[1].modelCode = 2;

    std::array<ModuleRecord, 2> records = baselines;

    std::array<int, 6> outcomes{};   // [0] accepted, [1..5] refusals by status
    for (int i = 0; i < kIterations; ++i) {
        QByteArray received = source.next();
        const QByteArrayView frame = source.below(2) ? frameWithin(received) : QByteArrayView(received);
        const quint8 command = source.command();
        const size_t which = static_cast<size_t>(i % 2);
        const ModuleRecord& before = baselines[which];
        ModuleRecord& record = records[which];   // equal to before: refusals store nothing
        int status = kStatusBefore;

        const bool accepted = parseReply(kind, frame, command, record, status);
        const auto where = [&] {
            return QStringLiteral("iteration %1, command %2, frame:\n%3").arg(i).arg(command).arg(hexDump(frame));
        };
        if (accepted) {
            const QString flaw = unsound(frame, command, traits);
            if (!flaw.isEmpty())
                QFAIL(qPrintable(QStringLiteral("accepted with a bad %1; %2").arg(flaw, where())));
            if (status != statusAfterAcceptance)
                QFAIL(qPrintable(QStringLiteral("status %1 after acceptance; %2").arg(status).arg(where())));
            ++outcomes[0];
            record = before;
        } else {
            if (status < 1 || status > 5)
                QFAIL(qPrintable(QStringLiteral("refused with status %1; %2").arg(status).arg(where())));
            if (!(record == before))
                QFAIL(qPrintable(QStringLiteral("refused reply changed the record:\n%1\n%2")
                                     .arg(recordDifferences(record, before), where())));
            ++outcomes[static_cast<size_t>(status)];
        }
    }

    // The generator must reach every outcome, or the run proves little.
    for (size_t s = 0; s < outcomes.size(); ++s)
        QVERIFY2(outcomes[s] >= kIterations / 100,
                 qPrintable(QStringLiteral("outcome %1 seen %2 times").arg(s).arg(outcomes[s])));
}

QTEST_GUILESS_MAIN(ReplyFuzzTest)
#include "reply_fuzz_test.moc"
