// File > Export report... of the main window, as an operator uses it: the
// entry triggered, the file dialog answered, the file read back against what
// the window's grids and information panel show.

#include "config/config_file.h"
#include "model/models.h"
#include "sim/sim_values.h"
#include "support/report_reading.h"
#include "texts/message.h"
#include "texts/report.h"
#include "ui/cell_grid.h"
#include "window_rig.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using namespace velmor;
using namespace velmor::testing;

namespace {


using Table = ReportTable;

QByteArray fileBytes(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// What a grid of the window shows: its headings, then its rows.
Table shownByGrid(frmMain& window, const char* name)
{
    auto* model = qobject_cast<CellTextModel*>(child<CellGrid>(window, name)->model());
    if (!model)
        qFatal("%s has no cell model", name);
    return Table{model->cells().headings} + model->cells().rows;
}

// The module opened from a file, as an operator brings a setup to the window.
void openModule(WindowRig& rig, int modelCode)
{
    const QString path = rig.folder.filePath(QStringLiteral("module.cfg"));
    QVERIFY(saveConfigFile(path, sim::simulatedModule(9, modelCode, 5)));
    rig.files.openAnswer = path;
    child<QAction>(rig.window, "MnuFile_Open")->trigger();
    QCOMPARE(int(rig.window.state().current().modelCode), modelCode);
}

// What the export tells, and nothing from before (a machine without serial
// ports is told so at start).
void exportReport(WindowRig& rig, const QString& name)
{
    rig.dialogs.messages.clear();
    rig.files.saveAnswer = rig.folder.filePath(name);
    child<QAction>(rig.window, "MnuFile_ExportReport")->trigger();
}

}  // namespace

class ReportMenuTest : public QObject {
    Q_OBJECT
private slots:
    void entryReadsInTheWindowsLanguage();
    void reportShowsWhatTheWindowShows_data();
    void reportShowsWhatTheWindowShows();
    void pdfOfASixteenChannelModuleHasAtMostThreePages_data();
    void pdfOfASixteenChannelModuleHasAtMostThreePages();
    void cancelWritesNothing();
    void aNameWithoutPdfOrHtmlIsTold();
    void aFileThatCannotBeWrittenIsTold();
    void theEntryIsLockedWhileASearchRuns();
    void theDialogOffersBothTypesInTheWindowsLanguage();
    void theSystemDialogGivesTheChosenTypesSuffix_data();
    void theSystemDialogGivesTheChosenTypesSuffix();
    void theReportNamesItsSourceFileOrLine();
};

void ReportMenuTest::entryReadsInTheWindowsLanguage()
{
    WindowRig chinese(kChinese);
    QCOMPARE(child<QAction>(chinese.window, "MnuFile_ExportReport")->text(), QStringLiteral("导出报告...(&R)"));
    WindowRig english(kEnglish);
    QCOMPARE(child<QAction>(english.window, "MnuFile_ExportReport")->text(), QStringLiteral("Export &Report..."));
}

void ReportMenuTest::reportShowsWhatTheWindowShows_data()
{
    QTest::addColumn<int>("model");
    QTest::addColumn<int>("languageMode");
    QTest::newRow("TM-C16 zh") << int(kTmC16) << kChinese;
    QTest::newRow("TM-C16 en") << int(kTmC16) << kEnglish;
    QTest::newRow("TM-B8 zh") << int(kTmB8) << kChinese;
    QTest::newRow("TM-B8 en") << int(kTmB8) << kEnglish;
}

void ReportMenuTest::reportShowsWhatTheWindowShows()
{
    QFETCH(int, model);
    QFETCH(int, languageMode);
    WindowRig rig(languageMode);
    openModule(rig, model);
    exportReport(rig, QStringLiteral("report.html"));
    VELMOR_COMPARE_SAID(rig.dialogs.texts());
    const QString html = QString::fromUtf8(fileBytes(rig.files.saveAnswer));
    QVERIFY(html.startsWith(QStringLiteral("<!DOCTYPE html>")));
    const QList<Table> tables = tablesIn(html);
    QCOMPARE(tables.size(), 5);
    QCOMPARE(tables[1], shownByGrid(rig.window, "MSHGridOperate"));
    QCOMPARE(tables[2], shownByGrid(rig.window, "MSHGridNoOperate"));
    QCOMPARE(tables[3], shownByGrid(rig.window, "MSHGridCalibration"));
    // Every capability text of the information panel, beside its label.
    QStringList values;
    for (const QStringList& row : tables[0])
        values << row[1] << row[3];
    for (int list = 0; list < 10; ++list) {
        const QString text = child<QLineEdit>(rig.window, QStringLiteral("txtModulePar[%1]").arg(list))->text();
        QVERIFY(!text.isEmpty());
        QVERIFY2(values.contains(text), qPrintable(text));
    }
    QVERIFY(values.contains(child<QLineEdit>(rig.window, "txtModuleNumber")->text()));
    QVERIFY(values.contains(child<QLineEdit>(rig.window, "txtVer")->text()));
    // The line the window has chosen for the opened module, and its address.
    auto* ports = child<QComboBox>(rig.window, "cmbComPort");
    QCOMPARE(values[0], ports->count() > 0 ? ports->currentText() : QString::number(rig.window.state().current().portNumber));
    QCOMPARE(values[1], QStringLiteral("9"));
}

void ReportMenuTest::pdfOfASixteenChannelModuleHasAtMostThreePages_data()
{
    QTest::addColumn<int>("languageMode");
    QTest::newRow("zh") << kChinese;
    QTest::newRow("en") << kEnglish;
}

void ReportMenuTest::pdfOfASixteenChannelModuleHasAtMostThreePages()
{
    QFETCH(int, languageMode);
    WindowRig rig(languageMode);
    openModule(rig, kTmC16);
    QCOMPARE(int(rig.window.state().current().channelCount), 16);
    exportReport(rig, QStringLiteral("report.PDF"));
    VELMOR_COMPARE_SAID(rig.dialogs.texts());
    const QByteArray pdf = fileBytes(rig.files.saveAnswer);
    QVERIFY(pdf.startsWith("%PDF-"));
    const int pages = pageObjectsIn(pdf);
    QVERIFY2(pages >= 1 && pages <= 3, qPrintable(QString::number(pages)));
}

void ReportMenuTest::cancelWritesNothing()
{
    WindowRig rig;
    rig.dialogs.messages.clear();
    rig.files.saveAnswer.clear();
    child<QAction>(rig.window, "MnuFile_ExportReport")->trigger();
    VELMOR_COMPARE_SAID(rig.dialogs.texts());
    QCOMPARE(QDir(rig.folder.path()).entryList(QDir::Files | QDir::NoDotAndDotDot), QStringList{});
}

void ReportMenuTest::aNameWithoutPdfOrHtmlIsTold()
{
    WindowRig rig(kChinese);
    exportReport(rig, QStringLiteral("report.txt"));
    QVERIFY2(rig.dialogs.messages.size() == 1, qPrintable(saidAndExpected(rig.dialogs.texts(), {QStringLiteral("(one message)")})));
    QCOMPARE(rig.dialogs.messages.first().first, pick(texts::message::kTitle, Language::Chinese));
    QCOMPARE(rig.dialogs.messages.first().second,
             pick(texts::report::kNeedsSuffix, Language::Chinese).arg(rig.files.saveAnswer));
    QVERIFY(!QFile::exists(rig.files.saveAnswer));
}

void ReportMenuTest::aFileThatCannotBeWrittenIsTold()
{
    WindowRig rig(kEnglish);
    exportReport(rig, QStringLiteral("no-such-folder/report.pdf"));
    QVERIFY2(rig.dialogs.messages.size() == 1, qPrintable(saidAndExpected(rig.dialogs.texts(), {QStringLiteral("(one message)")})));
    QCOMPARE(rig.dialogs.messages.first().first, QStringLiteral("Module Setup"));
    const QString text = rig.dialogs.messages.first().second;
    const QString start = QStringLiteral("Cannot write the report %1: ").arg(rig.files.saveAnswer);
    QVERIFY2(text.startsWith(start) && text.size() > start.size(), qPrintable(text));
    QVERIFY(!QFile::exists(rig.files.saveAnswer));
}

void ReportMenuTest::theEntryIsLockedWhileASearchRuns()
{
    SimLine line({{3, kTmC16}}, Pacing::Fast, QStringLiteral("SIM1"));
    WindowRig rig(kEnglish);
    QAction* entry = child<QAction>(rig.window, "MnuFile_ExportReport");
    QVERIFY(entry->isEnabled());
    QList<bool> seenEnabled;
    QTimer probe;
    connect(&probe, &QTimer::timeout, [&] { seenEnabled << entry->isEnabled(); });
    probe.start(20);
    QTest::mouseClick(child<QPushButton>(rig.window, "cmdSearch"), Qt::LeftButton);
    probe.stop();
    QVERIFY(seenEnabled.size() > 2);
    QVERIFY(!seenEnabled.contains(true));
    QVERIFY(entry->isEnabled());
}

void ReportMenuTest::theDialogOffersBothTypesInTheWindowsLanguage()
{
    WindowRig chinese(kChinese);
    exportReport(chinese, QStringLiteral("report.pdf"));
    QCOMPARE(chinese.files.reportFilters, (QStringList{QStringLiteral("PDF 文件 (*.pdf)"),
                                                       QStringLiteral("HTML 文件 (*.html *.htm)")}));
    WindowRig english(kEnglish);
    exportReport(english, QStringLiteral("report.pdf"));
    QCOMPARE(english.files.reportFilters,
             (QStringList{QStringLiteral("PDF files (*.pdf)"), QStringLiteral("HTML files (*.html *.htm)")}));
}

void ReportMenuTest::theSystemDialogGivesTheChosenTypesSuffix_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("html");
    QTest::addColumn<QString>("chosen");
    QTest::newRow("PDF, no suffix") << "report" << false << "report.pdf";
    QTest::newRow("HTML, no suffix") << "report" << true << "report.html";
    QTest::newRow("PDF type, .htm typed") << "report.htm" << false << "report.htm";
}

void ReportMenuTest::theSystemDialogGivesTheChosenTypesSuffix()
{
    QFETCH(QString, typed);
    QFETCH(bool, html);
    QFETCH(QString, chosen);
    QTemporaryDir folder;
    QWidget owner;
    SystemFileChooser files(&owner);
    bool answered = false;
    // The operator picks the type from the list, types the name and presses Enter.
    QTimer::singleShot(0, [&] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        dialog->setDirectory(folder.path());
        if (html)
            QTest::keyClick(dialog->findChild<QComboBox*>(QStringLiteral("fileTypeCombo")), Qt::Key_Down);
        auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        QTest::keyClicks(name, typed);
        QTest::keyClick(name, Qt::Key_Return);
        answered = true;
    });
    const QString path = files.reportFileName(QStringLiteral("PDF files (*.pdf)"), QStringLiteral("HTML files (*.html *.htm)"));
    QVERIFY(answered);
    QCOMPARE(path, QDir(folder.path()).filePath(chosen));
}

void ReportMenuTest::theReportNamesItsSourceFileOrLine()
{
    SimLine line({{9, kTmC16}}, Pacing::Fast, QStringLiteral("SIM1"));
    WindowRig rig;
    openModule(rig, kTmC16);
    exportReport(rig, QStringLiteral("from-file.html"));
    QString html = QString::fromUtf8(fileBytes(rig.files.saveAnswer));
    QVERIFY2(html.contains(QStringLiteral("By Velmor " VELMOR_VERSION "; source: the file %1").arg(rig.files.openAnswer)),
             qPrintable(html.left(600)));
    // Read from the module since, the record's source is the line.
    chooseModule(rig.window, line, 9);
    QTest::mouseClick(child<QPushButton>(rig.window, "cmdFrame3Receive"), Qt::LeftButton);
    exportReport(rig, QStringLiteral("from-line.html"));
    html = QString::fromUtf8(fileBytes(rig.files.saveAnswer));
    QVERIFY2(html.contains(QStringLiteral("source: the module at address 9 on SIM1")), qPrintable(html.left(600)));
}

QTEST_MAIN(ReportMenuTest)
#include "report_menu_test.moc"
