// What the window tells beside its boxes: on full disks, with files that are
// short or cannot be written, when a write stops partway, when a search
// could not read a module wholly, when a cell shows what the record does not
// hold, and when another program holds the line.
#include "cli_runner.h"
#include "config/config_file.h"
#include "edit/grid_cells.h"
#include "sim/sim_values.h"
#include "support/sim_process.h"
#include "support/small_disk.h"
#include "texts/grid.h"
#include "ui/cell_grid.h"
#include "window_rig.h"

#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QStatusBar>
#include <QTabBar>
#include <QTest>
#include <QTimer>

using namespace velmor;
using namespace velmor::testing;

namespace {

QString statusText(frmMain& window) { return window.statusBar()->currentMessage(); }

bool writeFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

// The requests a velmor-sim took, from its frame log, as "command group" pairs.
QList<QPair<int, int>> requestsIn(const QString& log)
{
    QList<QPair<int, int>> out;
    for (const QByteArray& line : fileBytes(log).split('\n')) {
        const QList<QByteArray> fields = line.simplified().split(' ');
        if (fields.size() > 7 && fields[1] == ">")
            out.append({fields[6].toInt(nullptr, 16), fields[7].toInt(nullptr, 16)});
    }
    return out;
}

// Runs of one command in a list of requests: [17 x1, 18 x16, 17 x17] for a
// model check, a write chain and a read after it.
QList<QPair<int, int>> runsOf(const QList<QPair<int, int>>& requests)
{
    QList<QPair<int, int>> runs;  // command, length
    for (const auto& [command, group] : requests) {
        Q_UNUSED(group);
        if (!runs.isEmpty() && runs.last().first == command)
            ++runs.last().second;
        else
            runs.append({command, 1});
    }
    return runs;
}

}  // namespace

class NoticesTest : public QObject {
    Q_OBJECT
private slots:
    void aFullDiskLeavesTheOldReportAndExportWhole();
    void anOpenOfAShortFileSaysWhatItKept();
    void configurationFileFailuresSayThePathAndWhy();
    void aWriteThatStopsPartwaySaysWhatTheModuleHolds();
    void modulesNotReadWhollyAreNamed();
    void aCellShownButNotStoredIsMarked();
    void twoProgramsOnOneLineTakeTurns_data();
    void twoProgramsOnOneLineTakeTurns();
};

void NoticesTest::aFullDiskLeavesTheOldReportAndExportWhole()
{
    SmallDisk disk(16 * 1024);
    if (!disk.mounted())
        QSKIP(qPrintable(QStringLiteral("the window writes in this process, which no file-size limit may cut: ") + disk.how()));
    SimLine line({sim::ModuleAt{1, 2}}, Pacing::Fast, QStringLiteral("SIM1"));
    WindowRig rig;
    child<QPushButton>(rig.window, "cmdSearch")->click();
    rig.dialogs.messages.clear();
    const QByteArray old("the old file, which must stay whole\n");
    const QString report = disk.filePath(QStringLiteral("report.html"));
    const QString csv = disk.filePath(QStringLiteral("frames.csv"));
    QVERIFY(writeFile(report, old) && writeFile(csv, old));
    disk.fill(512);

    rig.files.saveAnswer = report;
    child<QAction>(rig.window, "MnuFile_ExportReport")->trigger();
    QVERIFY2(rig.dialogs.messages.size() == 1, qPrintable(saidAndExpected(rig.dialogs.texts(), {QStringLiteral("(one message)")})));
    QCOMPARE(rig.dialogs.texts().first(), QStringLiteral("Cannot write the report %1: No space left on device").arg(report));
    QCOMPARE(fileBytes(report), old);

    rig.dialogs.messages.clear();
    child<QAction>(rig.window, "MnuView_FrameLog")->trigger();
    rig.files.saveAnswer = csv;
    QTest::mouseClick(child<QPushButton>(rig.window, "cmdFrameLogExport"), Qt::LeftButton);
    VELMOR_COMPARE_SAID(rig.dialogs.texts(), {QStringLiteral("Cannot write the frame log %1: No space left on device").arg(csv)});
    QCOMPARE(fileBytes(csv), old);
    QStringList left = QDir(disk.path()).entryList(QDir::Files | QDir::Hidden);
    left.removeAll(QStringLiteral("filler"));
    QCOMPARE(left, (QStringList{QStringLiteral("frames.csv"), QStringLiteral("report.html")}));
}

void NoticesTest::anOpenOfAShortFileSaysWhatItKept()
{
    WindowRig rig;
    const QString full = rig.folder.filePath(QStringLiteral("full.cfg"));
    QVERIFY(saveConfigFile(full, sim::simulatedModule(9, 2, 5)));
    const QString path = rig.folder.filePath(QStringLiteral("short.cfg"));
    QVERIFY(writeFile(path, fileBytes(full).left(4000)));
    const qint32 keptBalance = rig.window.state().current().channels[10].balanceValue;
    rig.files.openAnswer = path;
    child<QAction>(rig.window, "MnuFile_Open")->trigger();
    VELMOR_COMPARE_SAID(rig.dialogs.texts());  // no box: Open of a short file is no failure
    QCOMPARE(statusText(rig.window), QStringLiteral("%1 holds 4,000 of 8,679 bytes: channels 8-16 kept their values").arg(path));
    QCOMPARE(rig.window.state().current().channels[10].balanceValue, keptBalance);
    QCOMPARE(rig.window.state().current().moduleNumber, sim::simulatedModule(9, 2, 5).moduleNumber);
}

void NoticesTest::configurationFileFailuresSayThePathAndWhy()
{
    WindowRig rig;
    const QString missing = rig.folder.filePath(QStringLiteral("none/setup.cfg"));
    rig.files.saveAnswer = missing;
    child<QAction>(rig.window, "MnuFile_SaveAs")->trigger();
    VELMOR_COMPARE_SAID(rig.dialogs.texts(), {QStringLiteral("Open configure file fail!")});
    QCOMPARE(statusText(rig.window), missing + QStringLiteral(": No such file or directory"));
    rig.dialogs.messages.clear();
    rig.files.openAnswer = missing;
    child<QAction>(rig.window, "MnuFile_Open")->trigger();
    VELMOR_COMPARE_SAID(rig.dialogs.texts());  // Open tells no box, as ever
    QCOMPARE(statusText(rig.window), missing + QStringLiteral(": No such file or directory"));
}

void NoticesTest::aWriteThatStopsPartwaySaysWhatTheModuleHolds()
{
    SimLine line({sim::ModuleAt{1, 2}}, Pacing::Fast, QStringLiteral("SIM1"));
    WindowRig rig;
    child<QPushButton>(rig.window, "cmdSearch")->click();
    rig.dialogs.messages.clear();
    // The second channel group's write goes unanswered.
    line.addFault(1, sim::FaultKind::Silence, 17 + 1 + 2);
    child<QAction>(rig.window, "MnuOperate_Send")->trigger();
    VELMOR_COMPARE_SAID(rig.dialogs.texts(), {QStringLiteral("No respond.")});
    QCOMPARE(statusText(rig.window), QStringLiteral("group 1 was written; groups 2-4 and adjust blocks 1-4 and the "
                                                    "coefficients were not."));
}

void NoticesTest::modulesNotReadWhollyAreNamed()
{
    SimLine line({sim::ModuleAt{1, 2}, sim::ModuleAt{3, 0}}, Pacing::Fast, QStringLiteral("SIM1"));
    // Module 3's third exchange (its first after the search's) goes unanswered.
    line.addFault(3, sim::FaultKind::Silence, 3);
    WindowRig rig;
    child<QPushButton>(rig.window, "cmdSearch")->click();
    QCOMPARE(rig.dialogs.texts().last(), QStringLiteral("Found 2 modules."));
    const QString said = QStringLiteral("Module 2 (SIM1, address 3) could not be read wholly.");
    QCOMPARE(statusText(rig.window), said);
    auto* tabs = child<QTabBar>(rig.window, "TabStripCom");
    QCOMPARE(tabs->tabToolTip(1), said);
    QCOMPARE(tabs->tabToolTip(0), QString());
}

// An adjust value out of range stays shown while the record keeps the old
// one: the cell is marked, for the eye and for a screen reader.
void NoticesTest::aCellShownButNotStoredIsMarked()
{
    SimLine line({sim::ModuleAt{1, 2}}, Pacing::Fast, QStringLiteral("SIM1"));
    WindowRig rig;
    child<QPushButton>(rig.window, "cmdSearch")->click();
    child<QTabBar>(rig.window, "TabStrip1")->setCurrentIndex(1);
    auto* grid = child<CellGrid>(rig.window, "MSHGridNoOperate");
    const int kept = rig.window.state().current().channels[0].zeroAdjustTable[0];
    const QModelIndex cell = grid->model()->index(0, 1);
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, grid->visualRect(cell).center());
    auto* box = child<QLineEdit>(rig.window, "txtEdit");
    QVERIFY(box->isVisible());
    box->selectAll();
    QTest::keyClicks(box, "256");
    QTest::keyClick(box, Qt::Key_Return);
    QCOMPARE(grid->cellModel()->cellText(1, 1), QStringLiteral("256"));
    QCOMPARE(rig.window.state().current().channels[0].zeroAdjustTable[0], kept);
    QVERIFY(grid->cellModel()->isMarkedUnstored(0, 1));
    const QString note = pick(texts::grid::kShownNotStored, Language::English).arg(kept);
    QCOMPARE(cell.data(Qt::AccessibleDescriptionRole).toString(), note);
    QCOMPARE(cell.data(Qt::ToolTipRole).toString(), note);
    QVERIFY(!cell.data(Qt::DecorationRole).value<QIcon>().isNull());
    QVERIFY(!grid->cellModel()->isMarkedUnstored(0, 2));
    // A read shows the record again: no mark.
    QTest::mouseClick(child<QPushButton>(rig.window, "cmdFrame2Receive"), Qt::LeftButton);
    QVERIFY(!grid->cellModel()->isMarkedUnstored(0, 1));
}

void NoticesTest::twoProgramsOnOneLineTakeTurns_data()
{
    QTest::addColumn<bool>("commandLineFirst");
    QTest::newRow("command line, then window") << true;
    QTest::newRow("window, then command line") << false;
}

// velmor-cli writes a module while the window reads it, on one paced line:
// whichever comes second waits for the other's whole chain, so that on the
// line each chain's requests follow one another.
void NoticesTest::twoProgramsOnOneLineTakeTurns()
{
    QFETCH(bool, commandLineFirst);
    QTemporaryDir dir;
    const QString config = dir.filePath(QStringLiteral("m.cfg"));
    QVERIFY(saveConfigFile(config, sim::simulatedModule(1, 2, 1)));
    const QString log = dir.filePath(QStringLiteral("frames.log"));
    SimProcess sim;
    sim.usePortsDir(simPortsDir());
    QVERIFY2(sim.start({QStringLiteral("--module"), QStringLiteral("1:TM-C16"), QStringLiteral("--log"), log}), qPrintable(sim.error()));
    WindowRig rig;
    chooseModuleAt(rig.window, sim.portName(), 1);

    QProcess cli;
    const auto startCli = [&] {
        cli.start(QStringLiteral(VELMOR_CLI_EXECUTABLE),
                  {QStringLiteral("write"), QStringLiteral("--port"), sim.linkPath(), QStringLiteral("--address"),
                   QStringLiteral("1"), QStringLiteral("--config"), config});
    };
    if (commandLineFirst) {
        startCli();
        QTRY_VERIFY_WITH_TIMEOUT(!requestsIn(log).isEmpty(), 5000);  // the command line has the line
    } else {
        // The window's read is under way when the command line comes.
        QTimer::singleShot(400, &rig.window, startCli);
    }
    QTest::mouseClick(child<QPushButton>(rig.window, "cmdFrame3Receive"), Qt::LeftButton);
    QTRY_VERIFY_WITH_TIMEOUT(cli.state() == QProcess::NotRunning, 30000);
    QVERIFY2(cli.exitCode() == 0, cli.readAllStandardError().constData());
    VELMOR_COMPARE_SAID(rig.dialogs.texts());

    // A model check and 16 writes from the command line, 17 reads from the window.
    const QList<QPair<int, int>> runs = runsOf(requestsIn(log));
    const QList<QPair<int, int>> expected = commandLineFirst ? QList<QPair<int, int>>{{0x11, 1}, {0x12, 16}, {0x11, 17}}
                                                             : QList<QPair<int, int>>{{0x11, 17 + 1}, {0x12, 16}};
    QCOMPARE(runs, expected);
}

QTEST_MAIN(NoticesTest)
#include "notices_test.moc"
