// File > History...: the shown module's entries, newest first and filtered;
// two setups compared with their differing cells marked; an entry restored
// to the module by writing only the groups that differ.
#include "grid_hands.h"
#include "history_reading.h"
#include "model/models.h"
#include "edit/grid_cells.h"
#include "ui/history_dialog.h"

#include <QCheckBox>
#include <QScreen>
#include <QDateEdit>
#include <QLabel>
#include <QTableView>

using namespace velmor;
using namespace velmor::testing;

namespace {

// The window with its history in the rig's folder, a module read.
struct HistoryRig {
    explicit HistoryRig(const QList<sim::ModuleAt>& modules) : line(modules, Pacing::Fast, QStringLiteral("SIM1"))
    {
        rig.window.useHistory(*historyTargetNamed(rig.folder.filePath(QStringLiteral("history.sqlite"))));
    }
    void read(int address)
    {
        chooseModule(rig.window, line, address);
        QTest::mouseClick(child<QPushButton>(rig.window, "cmdFrame3Receive"), Qt::LeftButton);
    }
    // File > History..., as a click on the menu entry gives it.
    HistoryDialog* openHistory()
    {
        child<QAction>(rig.window, "MnuFile_History")->trigger();
        auto* dialog = rig.window.findChild<HistoryDialog*>();
        if (dialog)
            dialog->setAttribute(Qt::WA_DeleteOnClose, false);  // the test looks at it after it closes
        return dialog;
    }
    SimLine line;
    WindowRig rig;
};

// Chooses rows of the list as the operator does, Ctrl held for the second.
void chooseRows(HistoryDialog* dialog, const QList<int>& rows)
{
    auto* list = child<QTableView>(*dialog, "lstHistory");
    list->clearSelection();
    for (int row : rows) {
        const QRect cell = list->visualRect(list->model()->index(row, 1));
        QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::ControlModifier, cell.center());
    }
}

// A different gain in channel `row`'s cell, and its group sent.
void changeGainAndSend(frmMain& window, int row)
{
    CellGrid* grid = child<CellGrid>(window, "MSHGridOperate");
    auto* list = child<QComboBox>(window, "cmbGain");
    clickCell(grid, row, kGainColumn);
    QTRY_VERIFY(list->view()->isVisible());
    chooseItem(list, (std::max(0, list->findText(cellText(grid, row, kGainColumn))) + 1) % list->count());
    QTest::mouseClick(child<QPushButton>(window, QStringLiteral("cmdSend[%1]").arg((row - 1) / 4)), Qt::LeftButton);
}

}  // namespace

class HistoryWindowTest : public QObject {
    Q_OBJECT
private slots:
    void ctrlHOpensTheHistory();
    void theShownModulesEntriesComeNewestFirstAndFiltered();
    void twoEntriesAreComparedWithTheirCellsMarked();
    void restoreWritesOnlyTheGroupsThatDifferAfterAConfirmation();
    void anEntryOfAnotherModelIsNotRestored();
    void aLongHistoryIsListedAPageAtATimeAsTheListScrolls();
};

void HistoryWindowTest::ctrlHOpensTheHistory()
{
    HistoryRig h({{1, kTmB8}});
    h.rig.window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&h.rig.window));
    QTest::keyClick(&h.rig.window, Qt::Key_H, Qt::ControlModifier);
    auto* dialog = h.rig.window.findChild<HistoryDialog*>();
    QVERIFY(dialog && dialog->isVisible());
    QVERIFY(dialog->entries().isEmpty());
    // Never larger than the screen it opens on.
    QVERIFY(dialog->screen()->availableGeometry().size().expandedTo(dialog->size()) == dialog->screen()->availableGeometry().size());
}

void HistoryWindowTest::theShownModulesEntriesComeNewestFirstAndFiltered()
{
    // A session: a search, a write, a save, a read of another module and of this one.
    HistoryRig h({{1, kTmB8}, {2, kTmC16}});
    QTest::mouseClick(child<QPushButton>(h.rig.window, "cmdSearch"), Qt::LeftButton);
    QCOMPARE(h.rig.window.state().current().busAddress, 1);
    changeGainAndSend(h.rig.window, 1);
    h.rig.files.saveAnswer = h.rig.folder.filePath(QStringLiteral("b8.cfg"));
    h.rig.window.MnuFile_SaveAs_Click();
    h.read(2);
    h.read(1);
    HistoryDialog* dialog = h.openHistory();
    QVERIFY(dialog && dialog->isVisible());
    QCOMPARE(kindsOf(dialog->entries()), (QStringList{"read", "save", "write", "read"}));
    for (const HistoryEntry& e : dialog->entries())
        QCOMPARE(e.moduleNumber, h.line.memory(1).moduleNumber);
    auto* list = child<QTableView>(*dialog, "lstHistory");
    QCOMPARE(list->model()->rowCount(), 4);
    QCOMPARE(list->model()->index(0, 2).data().toString(), QStringLiteral("read"));

    auto* kinds = child<QComboBox>(*dialog, "cmbHistoryKind");
    kinds->setCurrentIndex(kinds->findText(QStringLiteral("write")));
    QCOMPARE(kindsOf(dialog->entries()), QStringList{"write"});
    kinds->setCurrentIndex(0);
    child<QDateEdit>(*dialog, "dtpHistorySince")->setDate(QDate::currentDate().addDays(1));
    child<QCheckBox>(*dialog, "chkHistorySince")->setChecked(true);
    QVERIFY(dialog->entries().isEmpty());
}

void HistoryWindowTest::twoEntriesAreComparedWithTheirCellsMarked()
{
    HistoryRig h({{1, kTmC16}});
    h.read(1);
    const QString before = cellText(child<CellGrid>(h.rig.window, "MSHGridOperate"), 3, kGainColumn);
    changeGainAndSend(h.rig.window, 3);
    HistoryDialog* dialog = h.openHistory();
    QVERIFY(dialog);
    QCOMPARE(kindsOf(dialog->entries()), (QStringList{"write", "read"}));
    chooseRows(dialog, {0, 1});
    QTest::mouseClick(child<QPushButton>(*dialog, "cmdHistoryCompare"), Qt::LeftButton);
    CellGrid* grid = child<CellGrid>(*dialog, "historyChannels");
    QVERIFY(grid->cellModel()->isMarked(3, kGainColumn));
    QVERIFY(!grid->cellModel()->isMarked(2, kGainColumn));
    QCOMPARE(grid->cellModel()->data(grid->cellModel()->index(2, kGainColumn), Qt::AccessibleDescriptionRole).toString(),
             QStringLiteral("Differs: A holds %1.").arg(before));
    const QString said = child<QLabel>(*dialog, "lblHistoryComparing")->text();
    QVERIFY2(said.startsWith(QStringLiteral("A: entry %1 (read, ").arg(dialog->entries()[1].id)), qPrintable(said));

    // One entry against the module now: the write is what the module holds.
    chooseRows(dialog, {0});
    QTest::mouseClick(child<QPushButton>(*dialog, "cmdHistoryCompare"), Qt::LeftButton);
    QVERIFY2(child<QLabel>(*dialog, "lblHistoryComparing")->text().endsWith(QStringLiteral("cells that differ: 0")),
             qPrintable(child<QLabel>(*dialog, "lblHistoryComparing")->text()));
    QVERIFY(!grid->cellModel()->isMarked(3, kGainColumn));
}

void HistoryWindowTest::restoreWritesOnlyTheGroupsThatDifferAfterAConfirmation()
{
    HistoryRig h({{1, kTmC16}});
    h.read(1);
    const ModuleRecord first = h.line.memory(1);
    changeGainAndSend(h.rig.window, 6);   // channel group 2
    changeGainAndSend(h.rig.window, 14);  // channel group 4
    QVERIFY(h.line.memory(1).channels[5].gain != first.channels[5].gain);
    HistoryDialog* dialog = h.openHistory();
    QVERIFY(dialog);
    const int read = static_cast<int>(dialog->entries().size()) - 1;  // the oldest
    QCOMPARE(dialog->entries()[read].kind, EntryKind::Read);
    chooseRows(dialog, {read});
    h.line.clearFrames();
    QTest::mouseClick(child<QPushButton>(*dialog, "cmdHistoryRestore"), Qt::LeftButton);
    QCOMPARE(h.rig.dialogs.questions.size(), 1);
    const QString question = h.rig.dialogs.questions.first().second;
    QVERIFY2(question.contains(QStringLiteral("CH6 Gain")) && question.contains(QStringLiteral("CH14 Gain")),
             qPrintable(question));
    QVERIFY2(question.endsWith(QStringLiteral("Sent: channel group 2, channel group 4.")), qPrintable(question));
    // Two groups went, nothing else.
    QCOMPARE(h.line.requests().size(), 2);
    QCOMPARE(h.line.memory(1).channels, first.channels);
    // Read again, the grid shows the restored values.
    QTest::mouseClick(child<QPushButton>(h.rig.window, "cmdFrame3Receive"), Qt::LeftButton);
    QCOMPARE(child<CellGrid>(h.rig.window, "MSHGridOperate")->cellModel()->cells(),
             channelGridCells(first, Language::English, h.rig.window.state().currentMask()));
}

void HistoryWindowTest::anEntryOfAnotherModelIsNotRestored()
{
    HistoryRig h({{1, kTmC16}, {2, kTmB8}});
    h.read(1);
    h.read(2);
    h.rig.window.settleHistory();
    HistoryEntry other;
    HistoryStore store;
    QString error;
    QVERIFY(store.open(*historyTargetNamed(h.rig.folder.filePath(QStringLiteral("history.sqlite"))), &error));
    HistoryFilter c16;
    c16.model = QStringLiteral("TM-C16");
    other = store.find(c16, &error).first();
    h.line.clearFrames();
    h.rig.window.restoreEntry(other);
    QVERIFY(h.line.requests().isEmpty());
    QCOMPARE(h.rig.dialogs.messages.last().second,
             QStringLiteral("Entry %1 is a setup of a TM-C16 and the module is a TM-B8: nothing was written.").arg(other.id));
}

void HistoryWindowTest::aLongHistoryIsListedAPageAtATimeAsTheListScrolls()
{
    HistoryRig h({{1, kTmB8}});
    h.read(1);
    h.rig.window.settleHistory();
    const ModuleRecord module = h.rig.window.state().current();
    {
        HistoryStore store;
        QString error;
        QVERIFY(store.open(*historyTargetNamed(h.rig.folder.filePath(QStringLiteral("history.sqlite"))), &error));
        for (int i = 0; i < 1100; ++i) {
            HistoryEntry entry = entryNow(EntryKind::Write, &module, QStringLiteral("SIM1"), 1);
            QVERIFY(store.add(entry, &error));
        }
    }
    HistoryDialog* dialog = h.openHistory();
    QVERIFY(dialog);
    QCOMPARE(dialog->entries().size(), 500);
    auto* list = child<QTableView>(*dialog, "lstHistory");
    for (qsizetype listed : {1000, 1101}) {
        list->scrollToBottom();
        QTRY_COMPARE(dialog->entries().size(), listed);
    }
    QCOMPARE(dialog->entries().last().kind, EntryKind::Read);  // the oldest, listed last
}

QTEST_MAIN(HistoryWindowTest)
#include "history_window_test.moc"
