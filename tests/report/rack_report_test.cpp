// The rack report: one part per module in the rack's order, each holding the
// very tables of that module's own setup report; in the PDF every module after
// the first starts on a page of its own; the Chinese report in Chinese.
#include "config/config_image.h"
#include "config/image_layout.h"
#include "config/rack_file.h"
#include "edit/grid_cells.h"
#include "model/models.h"
#include "report/rack_report.h"
#include "report/report_pdf.h"
#include "report/setup_report.h"
#include "sim/sim_values.h"
#include "support/report_reading.h"
#include "texts/grid.h"
#include "texts/rack_report.h"
#include "texts/report.h"

#include <QTest>

using namespace velmor;
using namespace velmor::testing;

Q_DECLARE_METATYPE(velmor::Language)

namespace {

// The tables of each module's part, as the setup report has them: the
// channel grid follows the information.
constexpr int kTablesPerModule = 5;
constexpr int kChannelTable = 1;

const QDateTime kMadeAt(QDate(2026, 3, 14), QTime(15, 9, 26));

ModuleRecord recordOf(int address, int modelCode) { return sim::simulatedModule(address, modelCode, 17); }

// `count` modules of the simulator's models in turn, the first half on SIM1,
// the rest on SIM2, each with its own address.
Rack rackOf(int count)
{
    Rack rack{QDateTime(QDate(2026, 3, 13), QTime(8, 30, 0), Qt::UTC), QStringLiteral("0.1.0"),
              {QStringLiteral("SIM1"), QStringLiteral("SIM2")}, {}};
    // Models of different shapes side by side; twelve modules hold them all.
    constexpr int kOrder[] = {kTmC16, kTmB8, kTmA4, kTmB16, kTmC8, kTmA8, kTmA8B, kTmA8D, kTmC16D};
    for (int i = 0; i < count; ++i) {
        const int model = kOrder[i % kModelCount];
        const int address = 3 * i + 1;
        ModuleRecord record = recordOf(address, model);
        record.moduleNumber = 9000 + i;
        rack.modules << RackModule{i < (count + 1) / 2 ? rack.lines[0] : rack.lines[1], address,
                                   QString::fromUtf16(kModels[model].name), record.moduleNumber,
                                   configImage(record).left(kStoredBytes)};
    }
    return rack;
}

QString source(Language language) { return reportSourceFile(QStringLiteral("/lab/bench.velrack"), language); }

QString reportOf(const Rack& rack, Language language) { return rackReportHtml(rack, kMadeAt, source(language), language); }

ModuleRecord recordIn(const RackModule& module)
{
    ModuleRecord record = defaultModule();
    applyImage(module.image, record);
    return record;
}

// What the module's own setup report shows of it, with the rack's line and
// every channel chosen for the balance.
QList<ReportTable> ownReportTables(const RackModule& module, Language language)
{
    const ReportSubject subject{module.line, -1, kMadeAt, source(language)};
    return tablesIn(setupReportHtml(recordIn(module), subject, language));
}

QString headingOf(const RackModule& module, Language language)
{
    return pick(texts::rack_report::kModuleHeading, language)
        .arg(module.model)
        .arg(module.moduleNumber)
        .arg(module.line)
        .arg(module.address);
}

}  // namespace

class RackReportTest : public QObject {
    Q_OBJECT
private slots:
    void eachModuleHasThePartsOfItsOwnReportInTheRacksOrder_data();
    void eachModuleHasThePartsOfItsOwnReportInTheRacksOrder();
    void theHeadingTellsTheRacksTimeLinesAndModules();
    void everyChannelIsShownChosenForTheBalance();
    void twelveModulesEachStartOnAPageOfTheirOwn_data();
    void twelveModulesEachStartOnAPageOfTheirOwn();
    void theChineseReportIsInChinese();
    void textFromTheRackFileCannotBecomeMarkup();
    void aRackWithoutModulesIsItsHeadingAlone();
};

void RackReportTest::eachModuleHasThePartsOfItsOwnReportInTheRacksOrder_data()
{
    QTest::addColumn<Language>("language");
    QTest::newRow("zh") << Language::Chinese;
    QTest::newRow("en") << Language::English;
}

void RackReportTest::eachModuleHasThePartsOfItsOwnReportInTheRacksOrder()
{
    QFETCH(Language, language);
    const Rack rack = rackOf(5);
    const QString html = reportOf(rack, language);
    const QList<ReportTable> tables = tablesIn(html);
    QCOMPARE(tables.size(), kTablesPerModule * rack.modules.size());
    const QString text = plainTextIn(html);
    qsizetype from = 0;
    for (qsizetype i = 0; i < rack.modules.size(); ++i) {
        const RackModule& module = rack.modules[i];
        QCOMPARE(tables.mid(i * kTablesPerModule, kTablesPerModule), ownReportTables(module, language));
        // The module's part is headed by it, after the one before it.
        const qsizetype at = text.indexOf(headingOf(module, language), from);
        QVERIFY2(at >= from, qPrintable(headingOf(module, language)));
        from = at + 1;
    }
    // The modules differ in shape: the rows of their channel grids.
    QCOMPARE(tables[kChannelTable].size(), 1 + 16);
    QCOMPARE(tables[kTablesPerModule + kChannelTable].size(), 1 + 8);
    QCOMPARE(tables[2 * kTablesPerModule + kChannelTable].size(), 1 + 4);
}

void RackReportTest::theHeadingTellsTheRacksTimeLinesAndModules()
{
    const Rack rack = rackOf(5);
    const QString text = plainTextIn(reportOf(rack, Language::English));
    const QString head = text.left(text.indexOf(headingOf(rack.modules.first(), Language::English)));
    QVERIFY2(head.startsWith(QStringLiteral("Rack Setup Report\n")), qPrintable(head));
    const QString saved = rack.time.toLocalTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    for (const QString& line : {QStringLiteral("Rack saved on ") + saved, QStringLiteral("Lines: SIM1, SIM2"),
                                QStringLiteral("Modules: 5"), QStringLiteral("Made on 2026-03-14 15:09:26"),
                                QStringLiteral("By Velmor " VELMOR_VERSION "; source: the file /lab/bench.velrack")})
        QVERIFY2(head.contains(line), qPrintable(line + QStringLiteral(" in ") + head));
}

void RackReportTest::everyChannelIsShownChosenForTheBalance()
{
    const Rack rack = rackOf(3);
    const QList<ReportTable> tables = tablesIn(reportOf(rack, Language::English));
    const QString chosen = pick(texts::grid::kAutoBalanceChosen, Language::English);
    for (int m = 0; m < rack.modules.size(); ++m) {
        const ReportTable& channels = tables[m * kTablesPerModule + kChannelTable];
        for (qsizetype row = 1; row < channels.size(); ++row)
            QCOMPARE(channels[row][kAutoBalanceColumn], chosen);
    }
}

void RackReportTest::twelveModulesEachStartOnAPageOfTheirOwn_data()
{
    eachModuleHasThePartsOfItsOwnReportInTheRacksOrder_data();
}

void RackReportTest::twelveModulesEachStartOnAPageOfTheirOwn()
{
    QFETCH(Language, language);
    const Rack rack = rackOf(12);
    const PdfReport pdf = renderReportPdf(reportOf(rack, language), language);
    QVERIFY(pdf.bytes.startsWith("%PDF-"));
    QCOMPARE(pageObjectsIn(pdf.bytes), pdf.pages);
    QCOMPARE(pdf.tablePages.size(), kTablesPerModule * 12);
    // The first module shares the first page with the rack's few lines.
    QCOMPARE(pdf.tablePages.first().first, 0);
    for (int m = 0; m < 12; ++m) {
        const auto part = pdf.tablePages.mid(m * kTablesPerModule, kTablesPerModule);
        for (const auto& [first, last] : part)
            QCOMPARE(last, first);
        // A module's first table is on a later page than the last table of
        // the module before it.
        if (m > 0)
            QVERIFY2(part.first().first > pdf.tablePages[m * kTablesPerModule - 1].second, qPrintable(QString::number(m)));
    }
    QCOMPARE(pdf.pages, pdf.tablePages.last().second + 1);
    // No heading is left at a page's foot without its table.
    for (qsizetype t = 0; t < pdf.tablePages.size(); ++t)
        QVERIFY2(pdf.headingPages[t] == pdf.tablePages[t].first, qPrintable(QString::number(t)));
    QVERIFY2(pdf.widestTable <= pdf.paintedWidth, qPrintable(QStringLiteral("%1 > %2").arg(pdf.widestTable).arg(pdf.paintedWidth)));
    qInfo("%d pages, %lld bytes", pdf.pages, static_cast<long long>(pdf.bytes.size()));
}

void RackReportTest::theChineseReportIsInChinese()
{
    const Rack rack = rackOf(3);
    const QString text = plainTextIn(reportOf(rack, Language::Chinese));
    for (const Text* t : {&texts::rack_report::kTitle, &texts::report::kCoefficients, &texts::rack_report::kBalanceMarks})
        QVERIFY2(text.contains(pick(*t, Language::Chinese)), t->zh);
    QVERIFY(text.contains(pick(texts::rack_report::kLines, Language::Chinese).arg(QStringLiteral("SIM1、SIM2"))));
    QVERIFY(text.contains(pick(texts::rack_report::kModuleCount, Language::Chinese).arg(3)));
    for (const RackModule& module : rack.modules)
        QVERIFY2(text.contains(headingOf(module, Language::Chinese)), qPrintable(headingOf(module, Language::Chinese)));
    for (const Text* t : {&texts::rack_report::kTitle, &texts::rack_report::kBalanceMarks, &texts::report::kCoefficients})
        QVERIFY2(!text.contains(pick(*t, Language::English)), t->en);
}

void RackReportTest::textFromTheRackFileCannotBecomeMarkup()
{
    Rack rack = rackOf(1);
    rack.lines = {QStringLiteral("<script>x</script>")};
    rack.modules[0].line = rack.lines[0];
    rack.modules[0].model = QStringLiteral("<b>X&Y</b>");
    const QString html = reportOf(rack, Language::English);
    QVERIFY(!html.contains(QStringLiteral("<script")));
    QVERIFY(!html.contains(QStringLiteral("<b>X")));
    const QString text = plainTextIn(html);
    QVERIFY(text.contains(QStringLiteral("Lines: <script>x</script>")));
    QVERIFY(text.contains(headingOf(rack.modules[0], Language::English)));
}

void RackReportTest::aRackWithoutModulesIsItsHeadingAlone()
{
    const Rack rack = rackOf(0);
    const QString html = reportOf(rack, Language::English);
    QVERIFY(tablesIn(html).isEmpty());
    QVERIFY(plainTextIn(html).contains(QStringLiteral("Modules: 0")));
    QCOMPARE(renderReportPdf(html, Language::English).pages, 1);
}

QTEST_MAIN(RackReportTest)
#include "rack_report_test.moc"
