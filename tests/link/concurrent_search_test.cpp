// "Search all lines at once" against simulated lines: the same modules, the
// same records, the same messages in the same order as the one-by-one search.
#include "link/concurrent_search.h"
#include "link/frame_log.h"
#include "link_rig.h"
#include "texts/message.h"

#include <QSignalSpy>
#include <QTest>

#include <functional>
#include <memory>
#include <vector>

using namespace velmor;
using namespace velmor::testing;

namespace {

// What a search leaves behind, for comparing one way of searching with the other.
struct Outcome {
    int found = 0;
    QList<ModuleRecord> records;
    QStringList texts;
    QList<int> unread;
    QStringList portsNotOpened;
    int tabs = -1;
    bool enabled = false;
};

template <typename Search, typename Run>
Outcome searchWith(const QList<PortEntry>& ports, Run run)
{
    LinkRig rig;
    rig.port.setPorts(ports);
    Search search(rig.operations, rig.dialogs);
    Outcome outcome;
    QObject::connect(&search, &Search::portNotOpened, [&](const PortEntry& p) { outcome.portsNotOpened << p.name; });
    QObject::connect(&search, &Search::modulesFound, [&](int count) { outcome.tabs = count; });
    QObject::connect(&search, &Search::operationsEnabled, [&](bool on) { outcome.enabled = on; });
    outcome.found = run(search, ports, ports.isEmpty() ? 0 : ports.first().number);
    for (int i = 0; i < kModuleSlots; ++i)
        outcome.records << rig.state.table[static_cast<size_t>(i)];
    outcome.texts = rig.dialogs.texts();
    outcome.unread = search.unreadModules();
    return outcome;
}

Outcome oneByOne(const QList<PortEntry>& ports)
{
    return searchWith<ModuleSearch>(ports, [](ModuleSearch& s, auto& p, int n) { return s.searchLinesAndReport(p, n); });
}

Outcome allAtOnce(const QList<PortEntry>& ports)
{
    return searchWith<ConcurrentSearch>(ports, [](ConcurrentSearch& s, auto& p, int n) { return s.searchAllAtOnce(p, n); });
}

QList<PortEntry> listed() { return listPorts({}, simPortsDir()); }

using Lines = std::vector<std::unique_ptr<SimLine>>;

std::unique_ptr<SimLine> line(const QString& name, const QList<sim::ModuleAt>& modules = {})
{
    return std::make_unique<SimLine>(modules, Pacing::Fast, name);
}

// Both searches, each over fresh lines made by `make` (faults count a
// module's exchanges from the start of its line), over the ports `ports`
// gives; returns the concurrent one's outcome once they agree.
Outcome compareSearches(const std::function<Lines()>& make, const std::function<QList<PortEntry>()>& ports = listed)
{
    Outcome expected;
    Outcome actual;
    for (Outcome* outcome : {&expected, &actual}) {
        const Lines lines = make();
        for (const auto& l : lines)
            if (!l->isReady())
                qFatal("a simulated line did not start: %s", qPrintable(l->error()));
        *outcome = outcome == &expected ? oneByOne(ports()) : allAtOnce(ports());
    }
    [&] {
        QCOMPARE(actual.found, expected.found);
        QCOMPARE(actual.texts, expected.texts);
        QCOMPARE(actual.unread, expected.unread);
        QCOMPARE(actual.portsNotOpened, expected.portsNotOpened);
        QCOMPARE(actual.tabs, expected.tabs);
        QCOMPARE(actual.enabled, expected.enabled);
        for (int i = 0; i < kModuleSlots; ++i)
            QVERIFY2(actual.records[i] == expected.records[i], qPrintable(QStringLiteral("record %1").arg(i)));
    }();
    return actual;
}

// A search of all lines at once over every listed line, on a rig of its own.
struct ListedSearch {
    ListedSearch() { rig.port.setPorts(ports); }
    int run() { return search.searchAllAtOnce(ports, ports.first().number); }

    LinkRig rig;
    const QList<PortEntry> ports = listed();
    ConcurrentSearch search{rig.operations, rig.dialogs};
};

}  // namespace

class ConcurrentSearchTest : public QObject {
    Q_OBJECT
private slots:
    void fourLinesWithModulesOnTwoGiveTheOneByOneResult();
    void refusedAndSilentRepliesAreSaidInTheOneByOneOrder();
    void portThatWillNotOpenIsSaidWhereTheOneByOneSearchSaysIt();
    void fullTableHoldsTheModulesTheOneByOneSearchKeeps();
    void progressCountsTheAddressesOfEveryLine();
    void everyLinesFramesReachTheLogInTheirOrder();
    void noPortAtAllSaysSo();
    void abandoningEndsEveryLineWithoutAReport();
};

void ConcurrentSearchTest::fourLinesWithModulesOnTwoGiveTheOneByOneResult()
{
    ModuleRecord memory16;
    const Outcome outcome = compareSearches([&] {
        Lines lines;
        lines.push_back(line(QStringLiteral("SIM1")));
        lines.push_back(line(QStringLiteral("SIM2"), {sim::ModuleAt{2, 2}, sim::ModuleAt{5, 0}}));
        lines.push_back(line(QStringLiteral("SIM3")));
        lines.push_back(line(QStringLiteral("SIM4"), {sim::ModuleAt{1, 3}, sim::ModuleAt{16, 6}}));
        memory16 = lines.back()->memory(16);
        return lines;
    });
    if (QTest::currentTestFailed())
        return;
    QCOMPARE(outcome.found, 4);
    QCOMPARE(outcome.records[0].busAddress, 2);
    QCOMPARE(outcome.records[1].busAddress, 5);
    QCOMPARE(outcome.records[2].busAddress, 1);
    QCOMPARE(outcome.records[3].busAddress, 16);
    VELMOR_VERIFY_SAME(wholeReadDifference(outcome.records[3], memory16));
    QCOMPARE(outcome.texts, QStringList{QStringLiteral("Found 4 modules.")});
}

void ConcurrentSearchTest::refusedAndSilentRepliesAreSaidInTheOneByOneOrder()
{
    const Outcome outcome = compareSearches([] {
        Lines lines;
        lines.push_back(line(QStringLiteral("SIM1"), {sim::ModuleAt{4, 2}, sim::ModuleAt{9, 0}}));
        lines.push_back(line(QStringLiteral("SIM2"), {sim::ModuleAt{3, 1}, sim::ModuleAt{7, 6}}));
        lines[0]->addFault(4, sim::FaultKind::Checksum, 1);  // refused while searching
        lines[0]->addFault(9, sim::FaultKind::Checksum, 3);  // refused while reading
        lines[1]->addFault(3, sim::FaultKind::Checksum, 1);  // refused while searching
        lines[1]->addFault(7, sim::FaultKind::Silence, 2);   // silent while reading
        return lines;
    });
    if (QTest::currentTestFailed())
        return;
    // Both lines' searches speak before either line's reads.
    QCOMPARE(outcome.found, 2);
    QCOMPARE(outcome.unread, (QList<int>{0, 1}));
    const QString refused = QStringLiteral("Return data fail.");
    QCOMPARE(outcome.texts, (QStringList{refused, refused, refused, QStringLiteral("No respond."),
                                         QStringLiteral("Found 2 modules.")}));
}

void ConcurrentSearchTest::portThatWillNotOpenIsSaidWhereTheOneByOneSearchSaysIt()
{
    const auto ports = [] {
        QList<PortEntry> ports{PortEntry{QStringLiteral("ttyGone"), 1, QStringLiteral("/nonexistent/ttyGone")}};
        ports.append(listed());
        ports.last().number = 2;
        ports.append(PortEntry{QStringLiteral("ttyAway"), 3, QStringLiteral("/nonexistent/ttyAway")});
        return ports;
    };
    const Outcome outcome = compareSearches(
        [] {
            Lines lines;
            lines.push_back(line(QStringLiteral("SIM2"), {sim::ModuleAt{3, 2}}));
            return lines;
        },
        ports);
    if (QTest::currentTestFailed())
        return;
    QCOMPARE(outcome.portsNotOpened, (QStringList{QStringLiteral("ttyGone"), QStringLiteral("ttyAway")}));
    QCOMPARE(outcome.texts, (QStringList{QStringLiteral("Open ttyGone fail."), QStringLiteral("Open ttyAway fail."),
                                         QStringLiteral("Found 1 modules.")}));
    QCOMPARE(outcome.records[0].portNumber, 2);
}

void ConcurrentSearchTest::fullTableHoldsTheModulesTheOneByOneSearchKeeps()
{
    QList<sim::ModuleAt> everyAddress;
    for (int address = 0; address < ModuleSearch::kAddresses; ++address)
        everyAddress << sim::ModuleAt{address, 0};
    const Outcome outcome = compareSearches([&] {
        Lines lines;
        lines.push_back(line(QStringLiteral("SIM1"), everyAddress));
        lines.push_back(line(QStringLiteral("SIM2"), everyAddress));
        return lines;
    });
    if (QTest::currentTestFailed())
        return;
    QCOMPARE(outcome.found, kModuleSlots);
    QCOMPARE(outcome.records[kModuleSlots - 1].busAddress, 15);
    QCOMPARE(outcome.texts, (QStringList{pick(texts::message::kModuleTableFull, Language::English),
                                         QStringLiteral("Found 33 modules.")}));
}

void ConcurrentSearchTest::progressCountsTheAddressesOfEveryLine()
{
    SimLine a({sim::ModuleAt{2, 2}}, Pacing::Fast, QStringLiteral("SIM1"));
    SimLine b({}, Pacing::Fast, QStringLiteral("SIM2"));
    SimLine c({sim::ModuleAt{16, 0}}, Pacing::Fast, QStringLiteral("SIM3"));
    QVERIFY(a.isReady() && b.isReady() && c.isReady());
    ListedSearch all;
    QSignalSpy maximum(&all.search, &ConcurrentSearch::progressMaximum);
    QSignalSpy progress(&all.search, &ConcurrentSearch::progress);
    QCOMPARE(all.run(), 2);
    QCOMPARE(maximum.size(), 1);
    QCOMPARE(maximum.first().first().toInt(), 3 * 17);
    QList<int> values;
    for (const QList<QVariant>& v : progress)
        values << v.first().toInt();
    QCOMPARE(values.last(), 0);
    values.removeLast();
    QVERIFY(std::is_sorted(values.begin(), values.end()));
    QCOMPARE(values.last(), 3 * 17);
    QCOMPARE(values.first(), 1);
}

void ConcurrentSearchTest::everyLinesFramesReachTheLogInTheirOrder()
{
    SimLine a({sim::ModuleAt{2, 2}}, Pacing::Fast, QStringLiteral("SIM1"));
    SimLine b({sim::ModuleAt{16, 0}}, Pacing::Fast, QStringLiteral("SIM2"));
    QVERIFY(a.isReady() && b.isReady());
    ListedSearch all;
    FrameLog log;
    QObject::connect(&all.search, &ConcurrentSearch::frameLogged, &log, &FrameLog::append);
    QCOMPARE(all.run(), 2);

    QList<int> firstAndLast;
    for (const SimLine* line : {&a, &b}) {
        QList<QByteArray> sent;
        QList<QByteArray> answered;
        int in = 0;
        qint64 previous = 0;
        QList<int> at;
        for (qsizetype i = 0; i < log.rows().size(); ++i) {
            const FrameRow& row = log.rows()[i];
            if (row.line != line->portName())
                continue;
            at << static_cast<int>(i);
            QVERIFY2(row.msecsSinceEpoch >= previous, "a line's times never go back");
            previous = row.msecsSinceEpoch;
            if (row.direction == FrameDirection::Out) {
                sent << row.frame;
                continue;
            }
            ++in;
            if (row.outcome != FrameOutcome::TimedOut)
                answered << row.frame;
        }
        // Every address asked, then the module's whole read.
        QCOMPARE(sent, line->requests());
        QCOMPARE(answered, line->replies());
        QCOMPARE(in, sent.size());
        QVERIFY(sent.size() > 17);
        firstAndLast << at.first() << at.last();
    }
    QCOMPARE(log.rows().size(), 2 * (a.requests().size() + b.requests().size()));
    // Both lines were asked at the same time: the second line's first row
    // comes before the first line's last.
    QVERIFY(firstAndLast[2] < firstAndLast[1]);
}

void ConcurrentSearchTest::noPortAtAllSaysSo()
{
    const Outcome outcome = compareSearches([] { return Lines{}; }, [] { return QList<PortEntry>{}; });
    if (QTest::currentTestFailed())
        return;
    QCOMPARE(outcome.found, 0);
    QCOMPARE(outcome.texts, QStringList{QStringLiteral("No COM port in the computer.")});
}

void ConcurrentSearchTest::abandoningEndsEveryLineWithoutAReport()
{
    SimLine a({sim::ModuleAt{2, 2}}, Pacing::Paced, QStringLiteral("SIM1"));
    SimLine b({sim::ModuleAt{3, 0}}, Pacing::Paced, QStringLiteral("SIM2"));
    QVERIFY(a.isReady() && b.isReady());
    ListedSearch all;
    // The front end goes away while every line is still asking.
    QTimer::singleShot(300, &all.rig.operations, [&] { all.rig.operations.abandonAfterExchange(); });
    QSignalSpy progress(&all.search, &ConcurrentSearch::progress);
    all.run();
    QVERIFY(!progress.isEmpty());
    int asked = 0;
    for (const QList<QVariant>& v : progress)
        asked = std::max(asked, v.first().toInt());
    QVERIFY2(asked < 2 * 17, qPrintable(QString::number(asked)));
    QVERIFY(all.rig.dialogs.texts().filter(QStringLiteral("Found")).isEmpty());
}

QTEST_GUILESS_MAIN(ConcurrentSearchTest)
#include "concurrent_search_test.moc"
