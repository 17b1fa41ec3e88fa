// The setup report: its tables read back as QTextDocument (and so the PDF)
// reads them, against the grids' own cell texts of the same record; its HTML
// needing nothing outside itself; its PDF pages.
#include "edit/grid_cells.h"
#include "model/capabilities.h"
#include "model/models.h"
#include "protocol/frame.h"
#include "protocol/frame_text.h"
#include "protocol/rebuilt_frames.h"
#include "report/report_file.h"
#include "report/report_pdf.h"
#include "report/setup_report.h"
#include "sim/sim_values.h"
#include "support/report_reading.h"
#include "texts/grid.h"
#include "texts/report.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QTextDocument>

using namespace velmor;
using namespace velmor::testing;

Q_DECLARE_METATYPE(velmor::Language)

namespace {


// Tables in report order.
enum { kInfoTable, kChannelTable, kAdjustTable, kCoefTable, kFrameTable, kTableCount };

using Table = ReportTable;

// A module as the simulator's factory leaves it: every value one its
// capabilities offer, different from channel to channel.
ModuleRecord moduleOf(int modelCode) { return sim::simulatedModule(3, modelCode, 17); }

ReportSubject subject(qint32 mask = 0x5a5a)
{
    return {QStringLiteral("SIM7"), mask, QDateTime(QDate(2026, 3, 14), QTime(15, 9, 26)),
            reportSourceLine(QStringLiteral("SIM7"), 3, Language::English)};
}

Table gridTable(const GridCells& cells) { return Table{cells.headings} + cells.rows; }

// The frame text as the window's label holds it, its line breaks and the
// blanks at their ends aside.
QString frameLines(const QString& text)
{
    QStringList lines = text.split(QRegularExpression(QStringLiteral("\r?\n")));
    for (QString& line : lines)
        line = line.trimmed();
    lines.removeAll(QString());
    return lines.join(QLatin1Char('\n'));
}

int groupsOf(const ModuleRecord& record) { return std::max(1, (record.channelCount + 3) / 4); }

}  // namespace

class SetupReportTest : public QObject {
    Q_OBJECT
private slots:
    void tablesShowTheGridTexts_data();
    void tablesShowTheGridTexts();
    void informationShowsTheCapabilityTexts_data();
    void informationShowsTheCapabilityTexts();
    void framesAreTheWriteFramesTheWindowRebuilds_data();
    void framesAreTheWriteFramesTheWindowRebuilds();
    void headerNamesTheModuleAndTheTime();
    void htmlNeedsNothingOutsideItself();
    void everyReportNamesTheProgramsVersionAndItsSource();
    void textFromAFileCannotBecomeMarkup();
    void sixteenChannelsFitOnThreePagesWithNoTableSplit_data();
    void sixteenChannelsFitOnThreePagesWithNoTableSplit();
    void aTableThatWouldStraddleTwoPagesStartsOnTheNextWithItsHeading();
    void aHeadingIsNeverLeftAtAPagesFootWithoutItsTable();
    void formatFollowsTheSuffix();
    void fileIsWrittenAsPdfOrHtml();
    void unwritableFileSaysWhyAndLeavesNothing();
};

void SetupReportTest::tablesShowTheGridTexts_data()
{
    QTest::addColumn<int>("model");
    QTest::addColumn<Language>("language");
    for (const auto& [name, model] : {std::pair{"TM-C16", kTmC16}, {"TM-B8", kTmB8}, {"TM-B16", kTmB16}, {"TM-A4", kTmA4}}) {
        QTest::addRow("%s zh", name) << int(model) << Language::Chinese;
        QTest::addRow("%s en", name) << int(model) << Language::English;
    }
}

void SetupReportTest::tablesShowTheGridTexts()
{
    QFETCH(int, model);
    QFETCH(Language, language);
    const ModuleRecord record = moduleOf(model);
    QCOMPARE(record.modelCode, model);
    const QList<Table> tables = tablesIn(setupReportHtml(record, subject(), language));
    QCOMPARE(tables.size(), kTableCount);
    const GridCells channels = channelGridCells(record, language, subject().balanceMask);
    QCOMPARE(tables[kChannelTable], gridTable(channels));
    QCOMPARE(tables[kAdjustTable], gridTable(adjustGridCells(record, language)));
    QCOMPARE(tables[kCoefTable], gridTable(calibrationGridCells(record, language)));
    // The shapes that the two models differ in: the reference columns, and
    // the eleven gain coefficients of the TM-B8.
    QCOMPARE(tables[kChannelTable].first().size(), model == kTmB8 || model == kTmB16 ? 17 : 11);
    QCOMPARE(tables[kCoefTable].first().size(), model == kTmB8 ? 12 : 9);
    QCOMPARE(tables[kChannelTable].size(), 1 + kModels[model].channels);
    // Both marks of the automatic-balance column, as the mask has them.
    QCOMPARE(tables[kChannelTable][1][kAutoBalanceColumn], QStringLiteral("○"));
    QCOMPARE(tables[kChannelTable][2][kAutoBalanceColumn], QStringLiteral("●"));
}

void SetupReportTest::informationShowsTheCapabilityTexts_data() { tablesShowTheGridTexts_data(); }

void SetupReportTest::informationShowsTheCapabilityTexts()
{
    QFETCH(int, model);
    QFETCH(Language, language);
    ModuleRecord record = moduleOf(model);
    record.moduleNumber = 4711;
    record.version = 23;
    const Table info = tablesIn(setupReportHtml(record, subject(), language))[kInfoTable];
    // Label and value pairs, two to a row.
    QMap<QString, QString> shown;
    for (const QStringList& row : info) {
        QCOMPARE(row.size(), 4);
        shown.insert(row[0], row[1]);
        shown.insert(row[2], row[3]);
    }
    QCOMPARE(shown.value(pick(texts::grid::kPortLabel, language)), QStringLiteral("SIM7"));
    QCOMPARE(shown.value(pick(texts::grid::kModuleLabel, language)), QString::number(record.busAddress));
    QCOMPARE(shown.value(pick(texts::grid::kNumberLabel, language)), QStringLiteral("4711"));
    QCOMPARE(shown.value(pick(texts::grid::kVersionLabel, language)), QStringLiteral("23"));
    const std::pair<const Text*, Capability> lists[] = {
        {&texts::grid::kModelLabel, Capability::Model},         {&texts::grid::kBalanceLabel, Capability::Balance},
        {&texts::grid::kExcitationLabel, Capability::Excitation}, {&texts::grid::kCouplingLabel, Capability::AcCoupling},
        {&texts::grid::kFilterLabel, Capability::Filter},       {&texts::grid::kHoldLabel, Capability::Hold},
        {&texts::grid::kZeroAdjustLabel, Capability::Zero},     {&texts::grid::kGainAdjustLabel, Capability::Adjust},
        {&texts::grid::kGainLabel, Capability::Gain},           {&texts::grid::kIntegralLabel, Capability::Integral},
    };
    for (const auto& [label, capability] : lists) {
        // The item the panel's list selects for the record's code.
        const QString item = optionList(capability, language)
                                 .at(shownIndex(capability, capabilityCode(record, capability)));
        QCOMPARE(shown.value(pick(*label, language)), item);
    }
    QCOMPARE(shown.size(), 14);
}

void SetupReportTest::framesAreTheWriteFramesTheWindowRebuilds_data() { tablesShowTheGridTexts_data(); }

void SetupReportTest::framesAreTheWriteFramesTheWindowRebuilds()
{
    QFETCH(int, model);
    QFETCH(Language, language);
    const ModuleRecord record = moduleOf(model);
    const Table frames = tablesIn(setupReportHtml(record, subject(), language))[kFrameTable];
    const int groups = groupsOf(record);
    QCOMPARE(frames.size(), 1 + 1 + 2 * groups);
    QList<int> selectors{kGroupInfo};
    for (int g = 0; g < groups; ++g)
        selectors << kGroupChannelsFirst + g;
    for (int g = 0; g < groups; ++g)
        selectors << kGroupAdjustFirst + g;
    for (int i = 0; i < selectors.size(); ++i) {
        const QStringList& row = frames[i + 1];
        const QByteArray frame = rebuiltFrame(record, Block::ofSelector(selectors[i]), kCmdWrite);
        QCOMPARE(frame.size(), kFullFrameLength);
        QCOMPARE(static_cast<quint8>(frame[kCommandOffset]), quint8{18});
        QCOMPARE(row[1], frameLines(frameToText(frame)));
        QCOMPARE(row[1].section(QLatin1Char(' '), 0, 0, QString::SectionSkipEmpty), QStringLiteral("AA"));
    }
    QCOMPARE(frames[1][0], pick(texts::report::kInfoFrame, language));
    QCOMPARE(frames[2][0], pick(texts::report::kChannelFrame, language).arg(1).arg(4));
    QCOMPARE(frames.last()[0], pick(texts::report::kAdjustFrame, language).arg(4 * groups - 3).arg(4 * groups));
}

void SetupReportTest::headerNamesTheModuleAndTheTime()
{
    const ModuleRecord record = moduleOf(kTmB8);
    for (Language language : {Language::Chinese, Language::English}) {
        QTextDocument document;
        document.setHtml(setupReportHtml(record, subject(), language));
        const QString text = document.toPlainText();
        QVERIFY2(text.startsWith(pick(texts::report::kTitle, language) + QStringLiteral(" \u2014 TM-B8")), qPrintable(text.left(80)));
        QVERIFY(text.contains(pick(texts::report::kMadeAt, language).arg(QStringLiteral("2026-03-14 15:09:26"))));
        QCOMPARE(document.metaInformation(QTextDocument::DocumentTitle), pick(texts::report::kTitle, language) + QStringLiteral(" \u2014 TM-B8"));
    }
}

void SetupReportTest::htmlNeedsNothingOutsideItself()
{
    for (int model : {kTmC16, kTmB8})
        for (Language language : {Language::Chinese, Language::English}) {
            const QString html = setupReportHtml(moduleOf(model), subject(), language);
            for (const char* outside : {"src=", "href=", "url(", "@import", "<link", "<script", "<img", "<object", "<iframe"})
                QVERIFY2(!html.contains(QLatin1String(outside), Qt::CaseInsensitive), outside);
            // Its style sheet is inside it.
            QVERIFY(html.contains(QStringLiteral("<style>")));
            QVERIFY(html.contains(QStringLiteral("<meta charset=\"utf-8\"/>")));
        }
}

void SetupReportTest::everyReportNamesTheProgramsVersionAndItsSource()
{
    const ModuleRecord record = moduleOf(kTmC16);
    QTextDocument fromLine;
    fromLine.setHtml(setupReportHtml(record, subject(), Language::English));
    QVERIFY2(fromLine.toPlainText().contains(QStringLiteral("By Velmor " VELMOR_VERSION "; source: the module at address 3 on SIM7")),
             qPrintable(fromLine.toPlainText().left(300)));
    ReportSubject fromFile = subject();
    fromFile.source = reportSourceFile(QStringLiteral("/lab/rack <1>.cfg"), Language::Chinese);
    QTextDocument document;
    document.setHtml(setupReportHtml(record, fromFile, Language::Chinese));
    QVERIFY2(document.toPlainText().contains(QStringLiteral("程序：Velmor " VELMOR_VERSION "；来源：文件 /lab/rack <1>.cfg")),
             qPrintable(document.toPlainText().left(300)));
}

void SetupReportTest::textFromAFileCannotBecomeMarkup()
{
    ModuleRecord record = moduleOf(kTmB8);
    record.modelName = fixedText(u"<b>X&Y</b>");
    const QString line = QStringLiteral("<script>alert(1)</script>");
    ReportSubject who = subject();
    who.line = line;
    const QString html = setupReportHtml(record, who, Language::English);
    QVERIFY(!html.contains(QStringLiteral("<b>X")));
    QVERIFY(!html.contains(QStringLiteral("<script")));
    QVERIFY(html.contains(QStringLiteral("&lt;b&gt;X&amp;Y&lt;/b&gt;")));
    QTextDocument document;
    document.setHtml(html);
    QVERIFY(document.toPlainText().contains(line));
}

void SetupReportTest::sixteenChannelsFitOnThreePagesWithNoTableSplit_data()
{
    QTest::addColumn<int>("model");
    QTest::addColumn<Language>("language");
    for (const auto& [name, model] : {std::pair{"TM-C16", kTmC16}, {"TM-B16", kTmB16}, {"TM-C16D", kTmC16D}, {"TM-B8", kTmB8}}) {
        QTest::addRow("%s zh", name) << int(model) << Language::Chinese;
        QTest::addRow("%s en", name) << int(model) << Language::English;
    }
}

void SetupReportTest::sixteenChannelsFitOnThreePagesWithNoTableSplit()
{
    QFETCH(int, model);
    QFETCH(Language, language);
    const PdfReport pdf = renderReportPdf(setupReportHtml(moduleOf(model), subject(), language), language);
    QVERIFY(pdf.bytes.startsWith("%PDF-"));
    QVERIFY(pdf.bytes.trimmed().endsWith("%%EOF"));
    // The writer's own count, one page object per page.
    const int pageObjects = pageObjectsIn(pdf.bytes);
    QCOMPARE(pageObjects, pdf.pages);
    QVERIFY2(pdf.pages >= 1 && pdf.pages <= 3, qPrintable(QString::number(pdf.pages)));
    QCOMPARE(pdf.tablePages.size(), int(kTableCount));
    for (const auto& [first, last] : pdf.tablePages)
        QCOMPARE(last, first);
    // Nothing reaches past the right margin.
    QVERIFY(pdf.widestTable > 0);
    QVERIFY2(pdf.widestTable <= pdf.paintedWidth, qPrintable(QStringLiteral("%1 > %2").arg(pdf.widestTable).arg(pdf.paintedWidth)));
    qInfo("%d pages, tables on pages %s", pdf.pages,
          qPrintable([&] {
              QStringList p;
              for (const auto& [first, last] : pdf.tablePages)
                  p << QString::number(first + 1);
              return p.join(QLatin1Char(','));
          }()));
}

void SetupReportTest::aTableThatWouldStraddleTwoPagesStartsOnTheNextWithItsHeading()
{
    const auto rows = [](int count) {
        QString html;
        for (int r = 0; r < count; ++r)
            html += QStringLiteral("<tr><td>%1</td><td>cell</td></tr>").arg(r);
        return html;
    };
    const auto filler = [](int lines) { return QStringLiteral("<p>filler</p>").repeated(lines); };
    const QString moved = QStringLiteral("<h2>moved</h2><table border=\"1\">") + rows(25) + QStringLiteral("</table>");
    // More and more lines ahead of the table push it down the first page;
    // it is never split, and the first time it is not on the first page...
    int pushedAt = -1;
    for (int lines = 0; lines < 400 && pushedAt < 0; lines += 4) {
        const PdfReport pdf = renderReportPdf(filler(lines) + moved, Language::English);
        QCOMPARE(pdf.tablePages.size(), 1);
        QCOMPARE(pdf.tablePages[0].first, pdf.tablePages[0].second);
        if (pdf.tablePages[0].first > 0)
            pushedAt = lines;
    }
    QVERIFY(pushedAt > 0);
    // ...the lines and the heading alone still fit on it: the table went to
    // the next page, heading and all, rather than start at the foot of this one.
    QCOMPARE(renderReportPdf(filler(pushedAt) + QStringLiteral("<h2>moved</h2>"), Language::English).pages, 1);
    QCOMPARE(renderReportPdf(filler(pushedAt) + moved, Language::English).pages, 2);

    // A table longer than any page breaks where it must.
    const PdfReport longer = renderReportPdf(QStringLiteral("<h2>long</h2><table border=\"1\">") + rows(300)
                                                 + QStringLiteral("</table>"),
                                             Language::English);
    QCOMPARE(longer.tablePages.size(), 1);
    QVERIFY(longer.tablePages[0].second > longer.tablePages[0].first);
    QCOMPARE(longer.pages, longer.tablePages[0].second + 1);
    QCOMPARE(pageObjectsIn(longer.bytes), longer.pages);
}

void SetupReportTest::aHeadingIsNeverLeftAtAPagesFootWithoutItsTable()
{
    // Rows of four lines, as the write frames have: where the heading still
    // fits at a page's foot and the first rows do not, the table goes to the
    // next page whole.
    QString table = QStringLiteral("<h2>frames</h2><table border=\"1\"><thead><tr><th>a</th><th>b</th></tr></thead>");
    for (int r = 0; r < 6; ++r)
        table += QStringLiteral("<tr><td>%1</td><td>1<br/>2<br/>3<br/>4</td></tr>").arg(r);
    table += QStringLiteral("</table>");
    int moved = 0;
    for (int lines = 40; lines < 90; ++lines) {
        const PdfReport pdf = renderReportPdf(QStringLiteral("<p>filler</p>").repeated(lines) + table, Language::English);
        QCOMPARE(pdf.tablePages.size(), 1);
        QCOMPARE(pdf.tablePages[0].second, pdf.tablePages[0].first);
        QVERIFY2(pdf.headingPages[0] == pdf.tablePages[0].first, qPrintable(QString::number(lines)));
        moved += pdf.tablePages[0].first;
    }
    // Some of them went to the second page.
    QVERIFY(moved > 0);
}

void SetupReportTest::formatFollowsTheSuffix()
{
    QCOMPARE(reportFormatFor(QStringLiteral("/tmp/a.pdf")), std::optional{ReportFormat::Pdf});
    QCOMPARE(reportFormatFor(QStringLiteral("A.PDF")), std::optional{ReportFormat::Pdf});
    QCOMPARE(reportFormatFor(QStringLiteral("a.b.html")), std::optional{ReportFormat::Html});
    QCOMPARE(reportFormatFor(QStringLiteral("a.htm")), std::optional{ReportFormat::Html});
    QCOMPARE(reportFormatFor(QStringLiteral("a.txt")), std::nullopt);
    QCOMPARE(reportFormatFor(QStringLiteral("pdf")), std::nullopt);
    QCOMPARE(reportFormatFor(QStringLiteral("a.pdf.cfg")), std::nullopt);
}

void SetupReportTest::fileIsWrittenAsPdfOrHtml()
{
    QTemporaryDir dir;
    const QString html = setupReportHtml(moduleOf(kTmC16), subject(), Language::Chinese);
    const QString htmlPath = dir.filePath(QStringLiteral("r.html"));
    QCOMPARE(writeReportFile(htmlPath, ReportFormat::Html, html, Language::Chinese), QString());
    QFile htmlFile(htmlPath);
    QVERIFY(htmlFile.open(QIODevice::ReadOnly));
    QCOMPARE(QString::fromUtf8(htmlFile.readAll()), html);

    const QString pdfPath = dir.filePath(QStringLiteral("r.pdf"));
    QCOMPARE(writeReportFile(pdfPath, ReportFormat::Pdf, html, Language::Chinese), QString());
    QFile pdfFile(pdfPath);
    QVERIFY(pdfFile.open(QIODevice::ReadOnly));
    const QByteArray bytes = pdfFile.readAll();
    QVERIFY(bytes.startsWith("%PDF-"));
    QCOMPARE(bytes.size(), renderReportPdf(html, Language::Chinese).bytes.size());
}

void SetupReportTest::unwritableFileSaysWhyAndLeavesNothing()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("missing/r.pdf"));
    const QString html = setupReportHtml(moduleOf(kTmA4), subject(), Language::English);
    QVERIFY(!writeReportFile(path, ReportFormat::Pdf, html, Language::English).isEmpty());
    QVERIFY(!QFile::exists(path));
    QVERIFY(!writeReportFile(dir.path(), ReportFormat::Html, html, Language::English).isEmpty());
}

QTEST_MAIN(SetupReportTest)
#include "setup_report_test.moc"
