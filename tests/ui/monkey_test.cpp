// The monkey test of the main window: random operator events (clicks on
// controls, grid cells and tabs, drags over grid rows, keys into whatever has
// the focus, menu entries, answers to whatever the window asks, events while
// another one waits) on the real window over two simulated lines, the second
// one's modules failing every few exchanges in every way but going quiet for
// good. Through it all the window must never hang, never have two exchanges
// in flight, and never keep a value that a refused reply carried.
//
// VELMOR_MONKEY_SEED and VELMOR_MONKEY_EVENTS change the seed and the number
// of events; scripts/monkey.sh runs the long version.

#include "model/models.h"
#include "monkey_faults.h"
#include "monkey_run.h"
#include "ui/help_manual.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>

using namespace velmor;
using namespace velmor::testing;

namespace {

constexpr quint32 kDefaultSeed = 20240611;
constexpr int kDefaultEvents = 800;
// Every this many exchanges of a module on the second line meets a fault,
// as long as the run lasts.
constexpr int kFaultPeriod = 6;
constexpr int kFaultHorizon = 20'000;
// QtTest gives a test function five minutes; a long run gets this much per
// event. A hang is caught by the run's own watch long before.
constexpr int kQtTestMsPerEvent = 250;
constexpr int kQtTestLeastMs = 300'000;

// A whole number from the environment, or `fallback` when it is not set.
bool numberFromEnvironment(const char* name, quint32 fallback, quint32& value)
{
    const QString text = qEnvironmentVariable(name);
    if (text.isEmpty()) {
        value = fallback;
        return true;
    }
    bool ok = false;
    value = text.toUInt(&ok);
    return ok;
}

// The offscreen platform says of every popup and floating pane what it
// cannot do (raise it, grab the keyboard, follow size hints); over thousands
// of events that would bury the run's own output.
QtMessageHandler testLog = nullptr;

void withoutPlatformNotices(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    if (type == QtWarningMsg && text.startsWith(QLatin1String("This plugin does not support")))
        return;
    testLog(type, context, text);
}

bool seedAndCount(quint32& seed, quint32& count)
{
    return numberFromEnvironment("VELMOR_MONKEY_SEED", kDefaultSeed, seed)
        && numberFromEnvironment("VELMOR_MONKEY_EVENTS", kDefaultEvents, count);
}

QString byKind(const QMap<QString, int>& counts)
{
    QStringList parts;
    for (auto it = counts.begin(); it != counts.end(); ++it)
        parts << QStringLiteral("%1 %2").arg(it.key()).arg(it.value());
    return parts.join(QStringLiteral(", "));
}

// What the run did.
void printFigures(const MonkeyRun& monkey, const RecurringFaults& faults, quint32 seed, qint64 elapsedMs)
{
    const MonkeyRun::Figures& f = monkey.figures();
    const ExchangeWatch& x = monkey.exchanges();
    qInfo().noquote() << QStringLiteral("seed %1: %2 events (%3 of them while another waited) in %4 s, %5 window(s), "
                                        "%6 searches as a window's first event or after unanswered commands")
                             .arg(seed)
                             .arg(f.events)
                             .arg(f.eventsWhileWaiting)
                             .arg(elapsedMs / 1000.0, 0, 'f', 1)
                             .arg(f.windows)
                             .arg(f.searchesDue);
    // Every exchange the frame log shows: the window's own, and each line's
    // during a search of all lines at once.
    qInfo().noquote() << QStringLiteral("exchanges %1: accepted %2, refused %3, timed out %4; late replies skipped %5")
                             .arg(x.exchanges())
                             .arg(x.accepted())
                             .arg(x.refused())
                             .arg(x.timedOut())
                             .arg(x.skippedLate());
    qInfo().noquote() << QStringLiteral("faults met %1: %2").arg(faults.metTotal()).arg(byKind(faults.met()));
    qInfo().noquote() << QStringLiteral("messages %1, questions %2, prompts %3; dialogs and popups: %4")
                             .arg(f.messages)
                             .arg(f.questions)
                             .arg(f.prompts)
                             .arg(byKind(f.dialogsMet));
    qInfo().noquote() << QStringLiteral("slowest event %1 ms: %2").arg(f.slowestEventMs).arg(f.slowestEvent);
    qInfo().noquote() << QStringLiteral("slowest exchange %1 ms; longest silence %2 ms (%3 ms allowed there) during %4")
                             .arg(x.slowestExchangeMs())
                             .arg(monkey.liveness().longestQuietMs())
                             .arg(monkey.liveness().longestQuietAllowedMs())
                             .arg(monkey.liveness().longestQuietDuring());
}

}  // namespace

class MonkeyTest : public QObject {
    Q_OBJECT
public:
    // Before the application exists, when QtTest reads its time limit.
    static void initMain()
    {
        quint32 seed = 0;
        quint32 count = 0;
        if (seedAndCount(seed, count) && !qEnvironmentVariableIsSet("QTEST_FUNCTION_TIMEOUT"))
            qputenv("QTEST_FUNCTION_TIMEOUT",
                    QByteArray::number(std::max<qint64>(kQtTestLeastMs, qint64(count) * kQtTestMsPerEvent)));
    }

private slots:
    void initTestCase();
    void randomOperatorEventsNeitherHangNorOverlapNorKeepRefusedValues();

private:
    QTemporaryDir settings_;
};

void MonkeyTest::initTestCase()
{
    QVERIFY(settings_.isValid());
    // "Add network port..." remembers what it is told: here, in a folder of
    // this run's own.
    qputenv("XDG_CONFIG_HOME", settings_.path().toLocal8Bit());
    // Exit closes the window; the run opens the next one.
    QApplication::setQuitOnLastWindowClosed(false);
    testLog = qInstallMessageHandler(withoutPlatformNotices);
}

void MonkeyTest::randomOperatorEventsNeitherHangNorOverlapNorKeepRefusedValues()
{
    quint32 seed = 0;
    quint32 count = 0;
    QVERIFY2(seedAndCount(seed, count), "VELMOR_MONKEY_SEED or VELMOR_MONKEY_EVENTS is no whole number");

    SimLine first({{1, kTmC16}, {4, kTmA4}}, Pacing::Fast, QStringLiteral("SIM1"), seed);
    SimLine second({{2, kTmB8}, {7, kTmC16}}, Pacing::Fast, QStringLiteral("SIM2"), seed);
    QVERIFY2(first.isReady(), qPrintable(first.error()));
    QVERIFY2(second.isReady(), qPrintable(second.error()));
    RecurringFaults faults(second, kFaultPeriod, kFaultHorizon);

    // Help > Content would start the desktop's browser on a manual beside
    // this program; without one it only says that the manual is missing.
    QStringList never;
    if (QFileInfo::exists(manualPath(Language::Chinese)) || QFileInfo::exists(manualPath(Language::English)))
        never << QStringLiteral("MnuHelp_Content");

    MonkeyRun monkey(seed, kChinese, never);
    QElapsedTimer clock;
    clock.start();
    monkey.run(static_cast<int>(count));
    const qint64 elapsed = clock.elapsed();

    printFigures(monkey, faults, seed, elapsed);

    QVERIFY2(monkey.failure().isEmpty(), qPrintable(monkey.failure()));
    // Not a run that missed the point: the window talked to the modules and
    // the faults came.
    QVERIFY(monkey.exchanges().exchanges() > 0);
    QVERIFY(faults.metTotal() > 0);
}

QTEST_MAIN(MonkeyTest)
#include "monkey_test.moc"
