// velmor-cli rack report on a rack saved from velmor-sim lines: one HTML or
// PDF file with every module's part, its tables those of the module's own
// report; made with the lines gone, so it asks nothing of them; a damaged rack
// file, a wrong suffix or a report over its own rack file refused with nothing
// written.
#include "cli_runner.h"
#include "support/report_reading.h"
#include "support/sim_process.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace velmor;
using namespace velmor::testing;

namespace {

constexpr int kTablesPerModule = 5;

}  // namespace

class CliRackReportTest : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void aRackReportIsOneHtmlFileWithEveryModule();
    void aRackReportIsOnePdfFile();
    void theChineseReportIsInChinese();
    void aDamagedOrMissingRackIsRefusedWithNothingWritten();
    void aReportWithoutPdfOrHtmlSuffixIsRefused();
    void theReportCannotReplaceItsRackFile();
    void aReportOverADirectoryIsRefused();

private:
    CliResult report(const QStringList& arguments) const
    {
        return runCli(QStringList{QStringLiteral("--no-history")} + arguments);
    }
    QString file(const char* name) const { return dir_.filePath(QLatin1String(name)); }

    QTemporaryDir dir_;
    QString rack_;
};

void CliRackReportTest::initTestCase()
{
    QTemporaryDir ports;
    SimProcess sim1, sim2;
    sim1.usePortsDir(ports.path());
    sim2.usePortsDir(ports.path());
    const QStringList quiet{QStringLiteral("--fast"), QStringLiteral("--log"), QStringLiteral("/dev/null")};
    QVERIFY2(sim1.start(quiet + QStringList{"--name", "SIM1", "--module", "1:TM-C16", "--module", "4:TM-B8"}), qPrintable(sim1.error()));
    QVERIFY2(sim2.start(quiet + QStringList{"--name", "SIM2", "--module", "2:TM-A4", "--module", "3:TM-C8"}), qPrintable(sim2.error()));
    rack_ = file("bench.velrack");
    const CliResult saved = runCli({QStringLiteral("--no-history"), QStringLiteral("rack"), QStringLiteral("save"), rack_}, ports.path());
    QCOMPARE(saved.exitCode, 0);
    // The TM-B8 alone, for its own report.
    QCOMPARE(runCli({QStringLiteral("--no-history"), QStringLiteral("read"), QStringLiteral("--port"), QStringLiteral("SIM1"),
                     QStringLiteral("--address"), QStringLiteral("4"), QStringLiteral("--save"), file("b8.cfg")},
                    ports.path())
                 .exitCode,
             0);
    // The lines go away here: every report below is made without them.
    QVERIFY(sim1.stop());
    QVERIFY(sim2.stop());
}

void CliRackReportTest::aRackReportIsOneHtmlFileWithEveryModule()
{
    const QString out = file("bench.html");
    const CliResult made = report({QStringLiteral("--json"), QStringLiteral("rack"), QStringLiteral("report"), rack_,
                                   QStringLiteral("--out"), out});
    QCOMPARE(made.exitCode, 0);
    QCOMPARE(made.json().value(QStringLiteral("file")).toString(), rack_);
    QCOMPARE(made.json().value(QStringLiteral("report")).toString(), out);
    QCOMPARE(made.json().value(QStringLiteral("format")).toString(), QStringLiteral("html"));
    const QString html = QString::fromUtf8(fileBytes(out));
    const QList<ReportTable> tables = tablesIn(html);
    QCOMPARE(tables.size(), 4 * kTablesPerModule);

    // The modules in the rack's order, each under its heading.
    const QString text = plainTextIn(html);
    qsizetype from = 0;
    for (const char* heading : {"TM-C16 No\\. \\d+ — SIM1, address 1\\n", "TM-B8 No\\. \\d+ — SIM1, address 4\\n",
                                "TM-A4 No\\. \\d+ — SIM2, address 2\\n", "TM-C8 No\\. \\d+ — SIM2, address 3\\n"}) {
        const qsizetype at = text.indexOf(QRegularExpression(QString::fromUtf8(heading)), from);
        QVERIFY2(at >= from, heading);
        from = at + 1;
    }

    // The TM-B8's grids and frames as its own report shows them; its
    // information too, but for the line, which the rack names.
    const QString own = file("b8.html");
    QCOMPARE(report({QStringLiteral("report"), file("b8.cfg"), QStringLiteral("--out"), own}).exitCode, 0);
    const QList<ReportTable> ownTables = tablesIn(QString::fromUtf8(fileBytes(own)));
    QCOMPARE(ownTables.size(), kTablesPerModule);
    QCOMPARE(tables.mid(kTablesPerModule + 1, kTablesPerModule - 1), ownTables.mid(1));
    QCOMPARE(tables[kTablesPerModule].size(), ownTables[0].size());
    QCOMPARE(tables[kTablesPerModule].mid(1), ownTables[0].mid(1));
    QCOMPARE(tables[kTablesPerModule][0][1], QStringLiteral("SIM1"));
}

void CliRackReportTest::aRackReportIsOnePdfFile()
{
    const QString out = file("bench.pdf");
    const CliResult made = report({QStringLiteral("rack"), QStringLiteral("report"), rack_, QStringLiteral("--out"), out});
    QCOMPARE(made.exitCode, 0);
    const QByteArray pdf = fileBytes(out);
    QVERIFY(pdf.startsWith("%PDF-"));
    // A page at least for each module.
    QVERIFY2(pageObjectsIn(pdf) >= 4, qPrintable(QString::number(pageObjectsIn(pdf))));
}

void CliRackReportTest::theChineseReportIsInChinese()
{
    const QString out = file("bench-zh.html");
    QCOMPARE(report({QStringLiteral("--lang"), QStringLiteral("zh"), QStringLiteral("rack"), QStringLiteral("report"), rack_,
                     QStringLiteral("--out"), out})
                 .exitCode,
             0);
    const QString text = plainTextIn(QString::fromUtf8(fileBytes(out)));
    QVERIFY2(text.startsWith(QStringLiteral("机架设置报告\n")), qPrintable(text.left(80)));
    QVERIFY(text.contains(QStringLiteral("模块数：4")));
    QVERIFY(text.contains(QRegularExpression(QStringLiteral("TM-B8 编号 \\d+ — 线路 SIM1 地址 4"))));
}

void CliRackReportTest::aDamagedOrMissingRackIsRefusedWithNothingWritten()
{
    const QByteArray whole = fileBytes(rack_);
    const QString cut = file("cut.velrack");
    {
        QFile f(cut);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write(whole.left(whole.size() / 2));
    }
    const QString out = file("cut.pdf");
    const CliResult refused = report({QStringLiteral("rack"), QStringLiteral("report"), cut, QStringLiteral("--out"), out});
    QCOMPARE(refused.exitCode, 2);
    QVERIFY2(refused.errText().startsWith(cut + QStringLiteral(" is not a rack file")), qPrintable(refused.errText()));
    QVERIFY(!QFile::exists(out));

    const CliResult missing = report({QStringLiteral("rack"), QStringLiteral("report"), file("none.velrack"),
                                      QStringLiteral("--out"), out});
    QCOMPARE(missing.exitCode, 4);
    QVERIFY(!QFile::exists(out));
}

void CliRackReportTest::aReportWithoutPdfOrHtmlSuffixIsRefused()
{
    const QString out = file("bench.txt");
    const CliResult refused = report({QStringLiteral("rack"), QStringLiteral("report"), rack_, QStringLiteral("--out"), out});
    QCOMPARE(refused.exitCode, 2);
    QCOMPARE(refused.errText(), QStringLiteral("The report's file name must end in .pdf or .html: ") + out);
    QVERIFY(!QFile::exists(out));
    QCOMPARE(report({QStringLiteral("rack"), QStringLiteral("report"), rack_}).exitCode, 2);
}

void CliRackReportTest::theReportCannotReplaceItsRackFile()
{
    // A rack file may have any name, even one a report would take.
    const QString named = file("rack.html");
    QVERIFY(QFile::copy(rack_, named));
    const CliResult refused = report({QStringLiteral("rack"), QStringLiteral("report"), named, QStringLiteral("--out"),
                                      dir_.path() + QStringLiteral("/./rack.html")});
    QCOMPARE(refused.exitCode, 2);
    QVERIFY2(refused.errText().contains(QStringLiteral("is the rack file")), qPrintable(refused.errText()));
    QCOMPARE(fileBytes(named), fileBytes(rack_));
}

void CliRackReportTest::aReportOverADirectoryIsRefused()
{
    const QString out = file("folder.pdf");
    QVERIFY(QDir().mkpath(out));
    const CliResult refused = report({QStringLiteral("rack"), QStringLiteral("report"), rack_, QStringLiteral("--out"), out});
    QCOMPARE(refused.exitCode, 4);
    QVERIFY2(refused.errText().contains(QStringLiteral("is not a regular file")), qPrintable(refused.errText()));
}

QTEST_MAIN(CliRackReportTest)
#include "cli_rack_report_test.moc"
