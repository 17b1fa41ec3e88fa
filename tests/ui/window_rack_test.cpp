// File > Rack in the window: a rack saved from two lines, checked after a
// module changed, restored with only the differing group on the wire, and
// reported; the results table read through its accessibility interface, in
// English and in Chinese.
#include "accessible_reading.h"
#include "model/models.h"
#include "support/file_bytes.h"
#include "window_rig.h"

#include <QAccessible>
#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QRegularExpression>
#include <QPushButton>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTableWidget>
#include <QTimer>

using namespace velmor;
using namespace velmor::testing;

namespace {

// The results window the last rack command opened, its rows as "LINE
// ADDRESS MODEL STATUS".
RackResultsDialog* lastResults(frmMain& window)
{
    const QList<RackResultsDialog*> shown = window.findChildren<RackResultsDialog*>();
    return shown.isEmpty() ? nullptr : shown.last();
}

QStringList rowsOf(RackResultsDialog* results)
{
    QStringList rows;
    QTableWidget* table = results->table();
    for (int r = 0; r < table->rowCount(); ++r)
        rows << QStringLiteral("%1 %2 %3 %4")
                    .arg(table->item(r, 0)->text(), table->item(r, 1)->text(), table->item(r, 2)->text(),
                         table->item(r, 4)->text());
    return rows;
}

// A menu entry chosen, as a click on it does.
void choose(frmMain& window, const char* entry) { child<QAction>(window, entry)->trigger(); }

// The writes a line took since `from`: "ADDRESS GROUP" of each command 18.
QStringList writesOf(const SimLine& line, qsizetype from)
{
    QStringList writes;
    const QList<QByteArray> requests = line.requests();
    for (qsizetype i = from; i < requests.size(); ++i)
        if (requests[i].size() > 5 && static_cast<quint8>(requests[i][4]) == 18)
            writes << QStringLiteral("%1 %2").arg(static_cast<quint8>(requests[i][3])).arg(static_cast<quint8>(requests[i][5]));
    return writes;
}

// The lines saved as a rack through the menu, its results closed; the rack
// file is what the file dialogs answer from then on.
QString saveRack(WindowRig& rig)
{
    const QString rack = rig.folder.filePath(QStringLiteral("bench.velrack"));
    rig.files.saveAnswer = rack;
    rig.files.openAnswer = rack;
    choose(rig.window, "MnuFile_RackSave");
    if (RackResultsDialog* results = lastResults(rig.window))
        results->close();
    return rack;
}

}  // namespace

class WindowRackTest : public QObject {
    Q_OBJECT
private slots:
    void saveCheckRestoreAndReport();
    void aDamagedRackIsRefusedBeforeAnythingIsSent();
    void theResultsReadInChinese();
    void aStoppedRestoreBeginsNoFurtherModule_data();
    void aStoppedRestoreBeginsNoFurtherModule();
    void theMenuAnswersTheKeyboard();
    void aForeignModuleIsWrittenOnlyWhenTheOperatorSaysSo();
};

void WindowRackTest::saveCheckRestoreAndReport()
{
    SimLine sim1({{1, kTmC16}, {4, kTmB8}}, Pacing::Fast, QStringLiteral("SIM1"));
    SimLine sim2({{2, kTmA4}}, Pacing::Fast, QStringLiteral("SIM2"));
    WindowRig rig;
    const QString rack = rig.folder.filePath(QStringLiteral("bench.velrack"));
    rig.files.saveAnswer = rack;
    QSignalSpy said(rig.window.statusBar(), &QStatusBar::messageChanged);
    choose(rig.window, "MnuFile_RackSave");
    // While it searched, the status bar told where each line was.
    bool bothLines = false;
    for (const QList<QVariant>& message : said)
        bothLines = bothLines
                 || QRegularExpression(QStringLiteral("^SIM1: asking address \\d+ \\(\\d+ of 17\\); SIM2: asking address \\d+"))
                        .match(message.first().toString())
                        .hasMatch();
    QVERIFY(bothLines);
    RackResultsDialog* saved = lastResults(rig.window);
    QVERIFY(saved);
    QCOMPARE(rowsOf(saved), (QStringList{"SIM1 1 TM-C16 saved", "SIM1 4 TM-B8 saved", "SIM2 2 TM-A4 saved"}));
    QVERIFY(QFile::exists(rack));
    QCOMPARE(moduleTabTexts(rig.window), (QStringList{"1 TM-C16", "2 TM-B8", "3 TM-A4"}));
    saved->close();

    // Someone changes channel 7 of the TM-C16 behind the window's back.
    const qint32 original = sim1.memory(1).channels[6].cutoff;
    sim1.memory(1).channels[6].cutoff = (original + 100) % 65536;
    rig.files.openAnswer = rack;
    choose(rig.window, "MnuFile_RackCheck");
    RackResultsDialog* checked = lastResults(rig.window);
    QVERIFY(checked);
    QCOMPARE(rowsOf(checked), (QStringList{"SIM1 1 TM-C16 different", "SIM1 4 TM-B8 same", "SIM2 2 TM-A4 same"}));
    QVERIFY2(checked->table()->item(0, 5)->text().startsWith(QStringLiteral("CH7 Cut off")),
             qPrintable(checked->table()->item(0, 5)->text()));
    // The table as a screen reader finds it: its name and a cell's text.
    QAccessibleInterface* table = QAccessible::queryAccessibleInterface(checked->table());
    QVERIFY(table);
    QCOMPARE(table->text(QAccessible::Name), QStringLiteral("Rack results"));
    QVERIFY(table->tableInterface());
    QCOMPARE(table->tableInterface()->cellAt(0, 4)->text(QAccessible::Name), QStringLiteral("different"));
    QCOMPARE(checked->findChild<QLabel*>(QStringLiteral("RackSummary"))->text(),
             QStringLiteral("3 modules: 2 same, 1 different, 0 missing, 0 foreign, 0 extra."));
    // Esc closes the results like any dialog.
    checked->activateWindow();
    QTest::keyClick(checked->table(), Qt::Key_Escape);
    QVERIFY(!checked->isVisible());

    const qsizetype from1 = sim1.requests().size();
    const qsizetype from2 = sim2.requests().size();
    rig.dialogs.answer = true;
    choose(rig.window, "MnuFile_RackRestore");
    RackResultsDialog* restored = lastResults(rig.window);
    QVERIFY(restored);
    QCOMPARE(rowsOf(restored), (QStringList{"SIM1 1 TM-C16 restored", "SIM1 4 TM-B8 unchanged", "SIM2 2 TM-A4 unchanged"}));
    QCOMPARE(restored->table()->item(0, 5)->text(), QStringLiteral("sent: channel group 2"));
    // The restore's question named the one module to write; on the wire, the
    // second channel group of address 1 and nothing else.
    QVERIFY2(rig.dialogs.questions.last().second.contains(QStringLiteral("SIM1 1 TM-C16")),
             qPrintable(rig.dialogs.questions.last().second));
    QCOMPARE(writesOf(sim1, from1), QStringList{"1 2"});
    QVERIFY(writesOf(sim2, from2).isEmpty());
    QCOMPARE(sim1.memory(1).channels[6].cutoff, original);
    QCOMPARE(moduleTabTexts(rig.window), (QStringList{"1 TM-C16", "2 TM-B8", "3 TM-A4"}));
    restored->close();

    // The report: one document, a section per module.
    rig.files.saveAnswer = rig.folder.filePath(QStringLiteral("bench.html"));
    choose(rig.window, "MnuFile_RackReport");
    const QString html = QString::fromUtf8(fileBytes(rig.files.saveAnswer));
    for (const char* model : {"TM-C16", "TM-B8", "TM-A4"})
        QVERIFY2(html.contains(QLatin1String(model)), model);
}

void WindowRackTest::aDamagedRackIsRefusedBeforeAnythingIsSent()
{
    SimLine sim1({{1, kTmC16}}, Pacing::Fast, QStringLiteral("SIM1"));
    WindowRig rig;
    const QString rack = rig.folder.filePath(QStringLiteral("cut.velrack"));
    {
        QFile file(rack);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("{\"format\": \"velmor-rack\", \"formatVersion\": 1, \"lines\": [\"SIM1\"");
    }
    rig.files.openAnswer = rack;
    for (const char* entry : {"MnuFile_RackCheck", "MnuFile_RackRestore"}) {
        rig.dialogs.messages.clear();
        choose(rig.window, entry);
        QCOMPARE(rig.dialogs.messages.size(), 1);
        QVERIFY2(rig.dialogs.messages.first().second.startsWith(rack + QStringLiteral(" is not a rack file")),
                 qPrintable(rig.dialogs.messages.first().second));
    }
    QVERIFY(sim1.requests().isEmpty());
    QVERIFY(!lastResults(rig.window));
}

void WindowRackTest::theResultsReadInChinese()
{
    SimLine sim1({{3, kTmB8}}, Pacing::Fast, QStringLiteral("SIM1"));
    WindowRig rig(kChinese);
    rig.files.saveAnswer = rig.folder.filePath(QStringLiteral("bench.velrack"));
    QCOMPARE(child<QAction>(rig.window, "MnuFile_RackSave")->text(), QStringLiteral("保存机架(&S)..."));
    choose(rig.window, "MnuFile_RackSave");
    rig.files.openAnswer = rig.files.saveAnswer;
    choose(rig.window, "MnuFile_RackCheck");
    RackResultsDialog* checked = lastResults(rig.window);
    QVERIFY(checked);
    QCOMPARE(checked->table()->horizontalHeaderItem(4)->text(), QStringLiteral("状态"));
    QVERIFY(rowsOf(checked).contains(QStringLiteral("SIM1 3 TM-B8 相同")));
    QCOMPARE(QAccessible::queryAccessibleInterface(checked->table())->text(QAccessible::Name), QStringLiteral("机架结果"));
}

void WindowRackTest::aStoppedRestoreBeginsNoFurtherModule_data()
{
    QTest::addColumn<bool>("byEscape");
    QTest::newRow("Stop button") << false;
    QTest::newRow("Esc") << true;
}

void WindowRackTest::aStoppedRestoreBeginsNoFurtherModule()
{
    QFETCH(bool, byEscape);
    SimLine sim1({{1, kTmC16}, {4, kTmB8}}, Pacing::Fast, QStringLiteral("SIM1"));
    WindowRig rig;
    saveRack(rig);
    // The results closed, the window is the operator's again.
    rig.window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&rig.window));
    for (const int address : {1, 4})
        sim1.memory(address).channels[1].cutoff = (sim1.memory(address).channels[1].cutoff + 100) % 65536;

    // The operator stops as the first write reaches the line.
    auto* button = child<QPushButton>(rig.window, "cmdSearch");
    QString caption;
    QObject::connect(&sim1.line(), &sim::VirtualLine::frameLogged, &rig.window,
                     [&](sim::Direction direction, const QByteArray& frame) {
                         if (direction != sim::Direction::Received || static_cast<quint8>(frame.at(4)) != 18
                             || !caption.isEmpty())
                             return;
                         QTimer::singleShot(0, &rig.window, [&] {
                             caption = button->text();
                             if (byEscape)
                                 QTest::keyClick(&rig.window, Qt::Key_Escape);
                             else
                                 QTest::mouseClick(button, Qt::LeftButton);
                         });
                     });
    QSignalSpy said(rig.window.statusBar(), &QStatusBar::messageChanged);
    const qsizetype from = sim1.requests().size();
    choose(rig.window, "MnuFile_RackRestore");
    QCOMPARE(caption, QStringLiteral("&Stop"));
    RackResultsDialog* restored = lastResults(rig.window);
    QVERIFY(restored);
    QCOMPARE(rowsOf(restored), (QStringList{"SIM1 1 TM-C16 restored", "SIM1 4 TM-B8 skipped"}));
    QCOMPARE(restored->table()->item(1, 5)->text(), QStringLiteral("the restore was stopped before it"));
    QCOMPARE(writesOf(sim1, from), QStringList{"1 1"});
    // Each line's progress was in the status bar as it went.
    QStringList messages;
    for (const QList<QVariant>& message : said)
        messages << message.first().toString();
    QVERIFY2(messages.contains(QStringLiteral("SIM1: 1 of 2 modules")), qPrintable(messages.join(QLatin1Char('|'))));
    QCOMPARE(button->text(), QStringLiteral("&Search"));
}

void WindowRackTest::theMenuAnswersTheKeyboard()
{
    SimLine sim1({{1, kTmA4}}, Pacing::Fast, QStringLiteral("SIM1"));
    WindowRig rig;
    rig.window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&rig.window));
    rig.files.saveAnswer = rig.folder.filePath(QStringLiteral("bench.velrack"));
    // Alt+F opens File; K its Rack menu; S saves.
    auto* file = child<QMenu>(rig.window, "MnuFile");
    auto* rack = child<QMenu>(rig.window, "MnuFile_Rack");
    QTest::keyClick(&rig.window, Qt::Key_F, Qt::AltModifier);
    QTRY_VERIFY(file->isVisible());
    QTest::keyClick(file, Qt::Key_K);
    QTRY_VERIFY(rack->isVisible());
    QTest::keyClick(rack, Qt::Key_S);
    QTRY_VERIFY(lastResults(rig.window));
    QCOMPARE(rowsOf(lastResults(rig.window)), QStringList{"SIM1 1 TM-A4 saved"});
}

void WindowRackTest::aForeignModuleIsWrittenOnlyWhenTheOperatorSaysSo()
{
    SimLine sim1({{1, kTmA4}}, Pacing::Fast, QStringLiteral("SIM1"));
    WindowRig rig;
    const QString rack = saveRack(rig);
    // Another TM-A4 in its place: another number, another cut-off.
    const ModuleRecord kept = sim1.memory(1);
    sim1.memory(1).moduleNumber = kept.moduleNumber == 4321 ? 1234 : 4321;
    sim1.memory(1).channels[1].cutoff = (kept.channels[1].cutoff + 1) % 3;

    // Declined: nothing to write, nothing sent.
    rig.dialogs.answer = false;
    const qsizetype from = sim1.requests().size();
    choose(rig.window, "MnuFile_RackRestore");
    QVERIFY2(rig.dialogs.questions.last().second.startsWith(
                 QStringLiteral("These places did not answer, or another module of the same model answers there:\nSIM1 1 TM-A4")),
             qPrintable(rig.dialogs.questions.last().second));
    QCOMPARE(rig.dialogs.messages.last().second,
             QStringLiteral("Every module of %1 is the same as the rack file or is skipped; nothing was sent.").arg(rack));
    QVERIFY(writesOf(sim1, from).isEmpty());

    // Agreed, the module alone on its line: the information too, then the channels.
    rig.dialogs.answer = true;
    rig.dialogs.questions.clear();
    choose(rig.window, "MnuFile_RackRestore");
    QCOMPARE(rig.dialogs.questions.size(), 3);
    QCOMPARE(rig.dialogs.questions.last().second, QStringLiteral("SIM1: Only one module."));
    QCOMPARE(rowsOf(lastResults(rig.window)), QStringList{"SIM1 1 TM-A4 restored"});
    QCOMPARE(writesOf(sim1, from), (QStringList{"255 0", "1 1"}));
    QCOMPARE(sim1.memory(1).moduleNumber, kept.moduleNumber);
    QCOMPARE(sim1.memory(1).channels[1].cutoff, kept.channels[1].cutoff);
}

QTEST_MAIN(WindowRackTest)
#include "window_rack_test.moc"
