#include "link_rig.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>

using namespace velmor;
using namespace velmor::testing;

namespace {

struct SearchRig : LinkRig {
    ModuleSearch search{operations, dialogs};

    int run(const QList<PortEntry>& ports)
    {
        port.setPorts(ports);
        return search.searchLinesAndReport(ports, ports.isEmpty() ? 0 : ports.first().number);
    }
    QList<PortEntry> listed() const { return listPorts({}, simPortsDir()); }
};

}  // namespace

class SearchTest : public QObject {
    Q_OBJECT
private slots:
    void twoPortsGiveThreeModulesInOrder();
    void progressIsTheProductOfAddressAndPort();
    void nothingFoundReportsAndDisablesOperations();
    void silentAddressEndsAfterAQuarterSecondWithoutMessage();
    void recordsAfterTheFoundOnesKeepWhatTheyHeld();
    void portThatWillNotOpenCostsOneMessageAndIsSkipped();
    void refusedReplyIsReportedAndNotRecorded();
    void everyModuleFoundIsReadWholly();
    void fullTableStopsTheSearchBeforeThe34thModule();
    void lateReplyIsNotTakenForTheNextAddress();
    void timeOutIsTwoSecondsAfterASearch();
    void noPortAtAllSaysSoAndChangesNothing();
    void chineseReportCountsTheModules();
};

void SearchTest::twoPortsGiveThreeModulesInOrder()
{
    SimLine first({sim::ModuleAt{2, 2}, sim::ModuleAt{5, 0}}, Pacing::Fast, QStringLiteral("SIM1"));
    SimLine second({sim::ModuleAt{1, 3}}, Pacing::Fast, QStringLiteral("SIM2"));
    QVERIFY(first.isReady() && second.isReady());
    SearchRig rig;
    QSignalSpy tabs(&rig.search, &ModuleSearch::modulesFound);
    QSignalSpy enabled(&rig.search, &ModuleSearch::operationsEnabled);
    QCOMPARE(rig.run(rig.listed()), 3);
    QCOMPARE(rig.state.moduleCount, 3);
    QCOMPARE(rig.state.table[0].busAddress, 2);
    QCOMPARE(rig.state.table[1].busAddress, 5);
    QCOMPARE(rig.state.table[2].busAddress, 1);
    QCOMPARE(rig.state.table[0].portNumber, rig.portNumberOf(first));
    QCOMPARE(rig.state.table[2].portNumber, rig.portNumberOf(second));
    QCOMPARE(trimmedText(rig.state.table[1].modelName), QStringLiteral("TM-A4"));
    QCOMPARE(trimmedText(rig.state.table[2].modelName), QStringLiteral("TM-B8"));
    QCOMPARE(tabs.first().first().toInt(), 3);
    QCOMPARE(enabled.last().first().toBool(), true);
    VELMOR_COMPARE_SAID(rig.dialogs.texts(), QStringList{QStringLiteral("Found 3 modules.")});
    QCOMPARE(rig.state.currentModule, 0);
    QVERIFY(!rig.state.searching);
    QCOMPARE(rig.operations.exchange().overInterval(), Exchange::kOverAfterSearch);
}

void SearchTest::progressIsTheProductOfAddressAndPort()
{
    SimLine first({sim::ModuleAt{2, 2}}, Pacing::Fast, QStringLiteral("SIM1"));
    SimLine second({sim::ModuleAt{16, 0}}, Pacing::Fast, QStringLiteral("SIM2"));
    QVERIFY(first.isReady() && second.isReady());
    SearchRig rig;
    QSignalSpy maximum(&rig.search, &ModuleSearch::progressMaximum);
    QSignalSpy progress(&rig.search, &ModuleSearch::progress);
    rig.run(rig.listed());
    QCOMPARE(maximum.first().first().toInt(), 2 * 17);
    QList<int> values;
    for (const QList<QVariant>& v : progress)
        values << v.first().toInt();
    QList<int> expected;
    for (int p = 0; p < 2; ++p)
        for (int a = 0; a < 17; ++a)
            expected << (a + 1) * (p + 1);
    expected << 0;  // reset at the end
    QCOMPARE(values, expected);
}

void SearchTest::nothingFoundReportsAndDisablesOperations()
{
    SimLine empty({sim::ModuleAt{30, 2}});  // nobody at 0..16
    QVERIFY(empty.isReady());
    SearchRig rig;
    QSignalSpy enabled(&rig.search, &ModuleSearch::operationsEnabled);
    QCOMPARE(rig.run(rig.listed()), 0);
    VELMOR_COMPARE_SAID(rig.dialogs.texts(), QStringList{QStringLiteral("No module to be found.")});
    QCOMPARE(enabled.first().first().toBool(), false);
    QCOMPARE(enabled.last().first().toBool(), false);
    QCOMPARE(empty.requests().size(), 17);
}

void SearchTest::silentAddressEndsAfterAQuarterSecondWithoutMessage()
{
    SimLine line({sim::ModuleAt{16, 2}});
    QVERIFY(line.isReady());
    SearchRig rig;
    int duringSearch = 0;
    connect(&rig.search, &ModuleSearch::progress, this, [&](int) {
        if (rig.state.searching)
            duringSearch = rig.operations.exchange().overInterval();
    });
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(rig.run(rig.listed()), 1);
    // Sixteen silent addresses, each given its quarter of a second.
    QVERIFY(clock.elapsed() >= 16 * Exchange::kOverDuringSearch);
    QCOMPARE(duringSearch, Exchange::kOverDuringSearch);
    VELMOR_COMPARE_SAID(rig.dialogs.texts(), QStringList{QStringLiteral("Found 1 modules.")});
}

void SearchTest::recordsAfterTheFoundOnesKeepWhatTheyHeld()
{
    SimLine line({sim::ModuleAt{0, 2}, sim::ModuleAt{1, 1}, sim::ModuleAt{2, 0}});
    QVERIFY(line.isReady());
    SearchRig rig;
    for (size_t i = 3; i < kModuleSlots; ++i)
        rig.state.table[i].moduleNumber = 1000 + static_cast<int>(i);
    const ModuleTable before = rig.state.table;
    QCOMPARE(rig.run(rig.listed()), 3);
    for (size_t i = 3; i < kModuleSlots; ++i)
        QCOMPARE(rig.state.table[i], before[i]);
}

void SearchTest::portThatWillNotOpenCostsOneMessageAndIsSkipped()
{
    SimLine line({sim::ModuleAt{3, 2}}, Pacing::Fast, QStringLiteral("SIM2"));
    QVERIFY(line.isReady());
    SearchRig rig;
    QList<PortEntry> ports{PortEntry{QStringLiteral("ttyGone"), 1, QStringLiteral("/nonexistent/ttyGone")}};
    ports.append(rig.listed());
    ports.last().number = 2;
    QSignalSpy progress(&rig.search, &ModuleSearch::progress);
    QCOMPARE(rig.run(ports), 1);
    QCOMPARE(rig.dialogs.texts(), (QStringList{QStringLiteral("Open ttyGone fail."), QStringLiteral("Found 1 modules.")}));
    QCOMPARE(rig.dialogs.messages.first().first, QStringLiteral("Module Setup"));
    QCOMPARE(progress.first().first().toInt(), 17);
    QCOMPARE(rig.state.table[0].portNumber, 2);
}

void SearchTest::refusedReplyIsReportedAndNotRecorded()
{
    SimLine line({sim::ModuleAt{4, 2}, sim::ModuleAt{9, 0}});
    QVERIFY(line.isReady());
    line.addFault(4, sim::FaultKind::Checksum, 1);
    SearchRig rig;
    QCOMPARE(rig.run(rig.listed()), 1);
    QCOMPARE(rig.state.table[0].busAddress, 9);
    QCOMPARE(rig.dialogs.texts(), (QStringList{QStringLiteral("Return data fail."), QStringLiteral("Found 1 modules.")}));
}

void SearchTest::everyModuleFoundIsReadWholly()
{
    SimLine line({sim::ModuleAt{2, 6}, sim::ModuleAt{3, 4}});
    QVERIFY(line.isReady());
    SearchRig rig;
    rig.state.channelMask[1] = 0x11;
    QCOMPARE(rig.run(rig.listed()), 2);
    for (int i = 0; i < 2; ++i) {
        VELMOR_VERIFY_SAME(wholeReadDifference(rig.state.table[static_cast<size_t>(i)], line.memory(i + 2)));
    }
    QCOMPARE(rig.state.channelMask[1], -1);
}

void SearchTest::fullTableStopsTheSearchBeforeThe34thModule()
{
    QList<sim::ModuleAt> everyAddress;
    for (int address = 0; address < ModuleSearch::kAddresses; ++address)
        everyAddress << sim::ModuleAt{address, 0};
    SimLine first(everyAddress, Pacing::Fast, QStringLiteral("SIM1"));
    SimLine second(everyAddress, Pacing::Fast, QStringLiteral("SIM2"));
    QVERIFY(first.isReady() && second.isReady());
    SearchRig rig;
    QCOMPARE(rig.run(rig.listed()), kModuleSlots);
    QCOMPARE(rig.dialogs.texts(), (QStringList{QStringLiteral("The module table is full: the search stopped at 33 modules."),
                                               QStringLiteral("Found 33 modules.")}));
    QCOMPARE(rig.state.table[kModuleSlots - 1].busAddress, 15);
    // The 34th module, at address 16 of the second line, was never asked.
    const QList<QByteArray> asked = second.requests();
    QVERIFY(!asked.isEmpty());
    for (const QByteArray& request : asked)
        QVERIFY(request != readInfoRequest(16).frame());
}

void SearchTest::lateReplyIsNotTakenForTheNextAddress()
{
    SimLine line({sim::ModuleAt{3, 2}, sim::ModuleAt{4, 0}});
    QVERIFY(line.isReady());
    line.addFault(3, sim::FaultKind::Late, 1, 300);  // past the quarter second
    SearchRig rig;
    QCOMPARE(rig.run(rig.listed()), 1);
    QCOMPARE(rig.state.table[0].busAddress, 4);
    QCOMPARE(trimmedText(rig.state.table[0].modelName), QStringLiteral("TM-A4"));
    VELMOR_COMPARE_SAID(rig.dialogs.texts(), QStringList{QStringLiteral("Found 1 modules.")});
}

void SearchTest::timeOutIsTwoSecondsAfterASearch()
{
    SimLine line({sim::ModuleAt{1, 0}});
    QVERIFY(line.isReady());
    SearchRig rig;
    QCOMPARE(rig.run(rig.listed()), 1);
    line.addFault(1, sim::FaultKind::Silence);
    QElapsedTimer clock;
    clock.start();
    QVERIFY(!rig.operations.readModuleInfo());
    QVERIFY(clock.elapsed() >= Exchange::kOverAfterSearch);
    QCOMPARE(rig.dialogs.texts().last(), QStringLiteral("No respond."));
}

void SearchTest::noPortAtAllSaysSoAndChangesNothing()
{
    SearchRig rig;
    const ModuleTable before = rig.state.table;
    QCOMPARE(rig.run({}), 0);
    VELMOR_COMPARE_SAID(rig.dialogs.texts(), QStringList{QStringLiteral("No COM port in the computer.")});
    QCOMPARE(rig.state.table, before);
}

void SearchTest::chineseReportCountsTheModules()
{
    SimLine line({sim::ModuleAt{1, 2}, sim::ModuleAt{2, 2}});
    QVERIFY(line.isReady());
    SearchRig rig;
    rig.state.languageMode = 1;
    QCOMPARE(rig.run(rig.listed()), 2);
    QCOMPARE(rig.dialogs.messages.last(), qMakePair(QStringLiteral("模块参数设置"), QStringLiteral("共发现2个模块。")));
}

QTEST_GUILESS_MAIN(SearchTest)
#include "search_test.moc"
