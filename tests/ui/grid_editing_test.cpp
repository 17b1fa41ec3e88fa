// The grids' editors driven as an operator drives them: clicks and drags on
// cells, the shared list, prompts, keys typed into the cells' boxes, the two
// cut-off choices and the frequency dialog, against a module read from a
// simulated line; then Send writes what the grids show.
#include "grid_hands.h"
#include "model/models.h"

#include "edit/grid_cells.h"
#include "protocol/frame.h"
#include "protocol/frame_text.h"
#include "protocol/rebuilt_frames.h"
#include "ui/cell_box.h"
#include "ui/cell_grid.h"
#include "ui/frm_frequence.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTest>
#include <QTimer>

#include <algorithm>

using namespace velmor;
using namespace velmor::testing;

namespace {

QString sentLabel(frmMain& window, int g)
{
    return child<QLabel>(window, QStringLiteral("lblModuleOperateString[%1]").arg(g))->text();
}

}  // namespace

class GridEditingTest : public QObject {
    Q_OBJECT

private slots:
    void rowsFiveToTwoTakeTheChosenCouplingAndTheFrameIsRebuilt();
    void aColumnWithoutItsCapabilityOpensNothing();
    void theBalancePromptIsCappedAndShownCapped();
    void aPromptAnswerThatIsNoNumberIsAnInputError();
    void theAutoBalanceToggleFlipsOneRowAndShowsItsPicture();
    void aDecimalTypedIntoACellPassesTheDecimalFilterAndIsStored();
    void aWholeNumberCellSwallowsThePoint();
    void aTypedCutoffOffersTwoChoicesAndFillsTheGroupOnTmC16();
    void typingIntoAnUnknownCutoffIsNoInputError_data();
    void typingIntoAnUnknownCutoffIsNoInputError();
    void ctrlClickSelectsOnlyWhatAnEditChanges();
    void theFrequencyDialogWritesTheWidenedGroup();
    void aZeroAdjustOf256WarnsAtOnceAndStaysShownUnstored();
    void aDragOverFourRowsAnswered2000Stores1023();
    void aTypedCoefficientIsStoredInHundredths();
    void anOpenEditorFollowsItsCellWhenTheGridScrollsOrTheWindowIsResized();
    void sendWritesWhatTheGridsShow();
};

void GridEditingTest::rowsFiveToTwoTakeTheChosenCouplingAndTheFrameIsRebuilt()
{
    ReadModule m(kTmB8);
    for (int c = 0; c < 8; ++c)
        m.channel(c).coupling = 0;
    CellGrid* grid = m.grid("MSHGridOperate");
    clickCell(grid, 5, kCouplingColumn);
    auto* list = child<QComboBox>(m.window(), "cmbGain");
    chooseItem(list, 0);  // the click on row 5 opened the list; put it away
    clickCell(grid, 2, kCouplingColumn, Qt::ShiftModifier);
    QCOMPARE(child<QLabel>(m.window(), "lblOperateEditor")->text(), QStringLiteral("AC Coupling:"));
    QCOMPARE(list->count(), 2);
    chooseItem(list, 1);

    for (int c = 0; c < 8; ++c)
        QCOMPARE(int(m.channel(c).coupling), c >= 1 && c <= 4 ? 1 : 0);
    QCOMPARE(cellText(grid, 2, kCouplingColumn), QStringLiteral("AC Coupling"));
    QCOMPARE(cellText(grid, 5, kCouplingColumn), QStringLiteral("AC Coupling"));
    QCOMPARE(cellText(grid, 6, kCouplingColumn), QStringLiteral("DC Coupling"));
    QVERIFY(!list->isVisible());
    // Both groups' write frames, rebuilt from the record, under their send labels.
    for (int g : {0, 1})
        QCOMPARE(sentLabel(m.window(), g), frameToText(rebuiltFrame(m.record(), {Block::Kind::ChannelGroup, g}, kCmdWrite)));
}

void GridEditingTest::aColumnWithoutItsCapabilityOpensNothing()
{
    ReadModule m(kTmC16);  // no bridge balance, no zero adjust
    CellGrid* grid = m.grid("MSHGridOperate");
    const ModuleRecord before = m.record();
    for (int column : {kBalanceColumn, kZeroAdjustColumn})
        clickCell(grid, 1, column);
    QVERIFY(!child<QComboBox>(m.window(), "cmbGain")->isVisible());
    QVERIFY(m.rig.dialogs.prompts.isEmpty());
    QCOMPARE(m.record(), before);
}

void GridEditingTest::theBalancePromptIsCappedAndShownCapped()
{
    ReadModule m(kTmB8);
    m.record().version = 40;
    m.rig.dialogs.typedAnswers = {QStringLiteral("5000")};
    CellGrid* grid = m.grid("MSHGridOperate");
    clickCell(grid, 3, kBalanceColumn);
    QCOMPARE(m.rig.dialogs.prompts.value(0), (QPair<QString, QString>{"Input", "Input number: "}));
    QCOMPARE(m.channel(2).balanceValue, 1023);
    QCOMPARE(cellText(grid, 3, kBalanceColumn), QStringLiteral("1023"));
}

void GridEditingTest::aPromptAnswerThatIsNoNumberIsAnInputError()
{
    ReadModule m(kTmB8);
    const ModuleRecord before = m.record();
    m.rig.dialogs.typedAnswers = {QStringLiteral("abc")};
    clickCell(m.grid("MSHGridOperate"), 1, kBalanceColumn);
    VELMOR_COMPARE_SAID(m.rig.dialogs.texts(), QStringList{QStringLiteral("Input data error.")});
    QCOMPARE(m.record(), before);
}

void GridEditingTest::theAutoBalanceToggleFlipsOneRowAndShowsItsPicture()
{
    ReadModule m(kTmB8);
    CellGrid* grid = m.grid("MSHGridOperate");
    const qint32 before = m.window().state().channelMask[0];
    clickCell(grid, 3, kAutoBalanceColumn);
    QCOMPARE(m.window().state().channelMask[0], qint32(before ^ (1 << 2)));
    const QModelIndex cell = grid->model()->index(2, kAutoBalanceColumn);
    QVERIFY(!grid->model()->data(cell, Qt::DecorationRole).value<QIcon>().isNull());
    QCOMPARE(grid->model()->data(cell, Qt::DisplayRole).toString(), QString());
    QCOMPARE(grid->model()->data(cell, Qt::AccessibleTextRole).toString(), QStringLiteral("○"));
}

void GridEditingTest::aDecimalTypedIntoACellPassesTheDecimalFilterAndIsStored()
{
    ReadModule m(kTmB8);
    CellGrid* grid = m.grid("MSHGridOperate");
    clickCell(grid, 2, kCoefColumn);  // the prompt opens; Cancel
    QTest::keyClick(grid, Qt::Key_2);
    auto* box = child<QLineEdit>(m.window(), "txtOperate");
    QVERIFY(box->isVisible());
    QTest::keyClicks(box, ".5x.7");
    QCOMPARE(box->text(), QStringLiteral("2.57"));
    QTest::keyClick(box, Qt::Key_Return);
    QVERIFY(!box->isVisible());
    QCOMPARE(m.channel(1).gaugeCoef, 2.57f);
    QCOMPARE(cellText(grid, 2, kCoefColumn), QStringLiteral("2.57"));
    QCOMPARE(sentLabel(m.window(), 0), frameToText(rebuiltFrame(m.record(), {Block::Kind::ChannelGroup, 0}, kCmdWrite)));
}

void GridEditingTest::aWholeNumberCellSwallowsThePoint()
{
    ReadModule m(kTmB8);
    CellGrid* grid = m.grid("MSHGridOperate");
    clickCell(grid, 1, kGainAdjustColumn);
    QTest::keyClick(grid, Qt::Key_7);
    auto* box = child<QLineEdit>(m.window(), "txtOperate");
    QTest::keyClicks(box, "0.5a");
    QCOMPARE(box->text(), QStringLiteral("705"));
    QTest::keyClick(box, Qt::Key_Return);
    QCOMPARE(m.channel(0).gainAdjust, 705);
    QCOMPARE(m.channel(0).gainAdjustTable[0], 705);
}

void GridEditingTest::aTypedCutoffOffersTwoChoicesAndFillsTheGroupOnTmC16()
{
    ReadModule m(kTmC16);
    CellGrid* grid = m.grid("MSHGridOperate");
    grid->setCurrentIndex(grid->model()->index(4, kCutoffColumn));  // row 5, by the keyboard
    QTest::keyClick(grid, Qt::Key_1);
    auto* box = child<QLineEdit>(m.window(), "txtOperate");
    QTest::keyClicks(box, "000");
    auto* lower = child<QRadioButton>(m.window(), "Option1[1]");
    QCOMPARE(child<QRadioButton>(m.window(), "Option1[0]")->text(), QStringLiteral("1000.00000"));
    QCOMPARE(lower->text(), QStringLiteral("980.39216"));
    QVERIFY(lower->isVisible());
    QTest::mouseClick(lower, Qt::LeftButton);
    // Rows 4-6 share one cut-off on "TM-C16".
    for (int row = 4; row <= 6; ++row) {
        QCOMPARE(m.channel(row - 1).cutoff, 102);
        QCOMPARE(cellText(grid, row, kCutoffColumn), QStringLiteral("980.39216"));
    }
    QVERIFY(m.channel(6).cutoff != 102 || cellText(grid, 7, kCutoffColumn) != QStringLiteral("980.39216"));
    QVERIFY(!box->isVisible());
    QVERIFY(!lower->isVisible());
}

void GridEditingTest::typingIntoAnUnknownCutoffIsNoInputError_data()
{
    QTest::addColumn<int>("languageMode");
    QTest::addColumn<QString>("unknown");
    QTest::newRow("English") << kEnglish << QStringLiteral("Unknown");
    QTest::newRow("Chinese") << kChinese << QStringLiteral("未知");
}

// A cut-off code outside the filter's range reads "Unknown"; the operator types
// a frequency over it. Only what is typed is checked: the cell's own text
// opening the box is no input error.
void GridEditingTest::typingIntoAnUnknownCutoffIsNoInputError()
{
    QFETCH(int, languageMode);
    QFETCH(QString, unknown);
    ReadModule m(kTmC16, languageMode);
    m.line.memory(1).channels[9].cutoff = 2;  // below 10: no continuous cut-off
    QTest::mouseClick(child<QPushButton>(m.window(), "cmdFrame3Receive"), Qt::LeftButton);
    CellGrid* grid = m.grid("MSHGridOperate");
    QCOMPARE(cellText(grid, 10, kCutoffColumn), unknown);
    grid->setCurrentIndex(grid->model()->index(9, kCutoffColumn));
    QTest::keyClick(grid, Qt::Key_5);
    auto* box = child<QLineEdit>(m.window(), "txtOperate");
    QVERIFY(box->isVisible());
    QCOMPARE(box->text(), QStringLiteral("5"));
    QTest::keyClicks(box, "00");
    VELMOR_COMPARE_SAID(m.rig.dialogs.texts());
    QCOMPARE(child<QRadioButton>(m.window(), "Option1[0]")->text(), QStringLiteral("500.00000"));
    QTest::mouseClick(child<QRadioButton>(m.window(), "Option1[0]"), Qt::LeftButton);
    QCOMPARE(m.channel(9).cutoff, 200);
    VELMOR_COMPARE_SAID(m.rig.dialogs.texts());
}

// Ctrl+click adds no lone row to the selection: the grid shows one run of
// rows selected, and an edit changes exactly those rows.
void GridEditingTest::ctrlClickSelectsOnlyWhatAnEditChanges()
{
    ReadModule m(kTmB8);
    for (int c = 0; c < 8; ++c)
        m.channel(c).coupling = 0;
    CellGrid* grid = m.grid("MSHGridOperate");
    auto* list = child<QComboBox>(m.window(), "cmbGain");
    clickCell(grid, 2, kCouplingColumn);
    chooseItem(list, 0);
    clickCell(grid, 6, kCouplingColumn, Qt::ControlModifier);
    QList<int> shown;
    for (const QModelIndex& index : grid->selectionModel()->selectedIndexes())
        if (!shown.contains(index.row() + 1))
            shown << index.row() + 1;
    std::sort(shown.begin(), shown.end());
    QVERIFY(!shown.isEmpty());
    QCOMPARE(shown.size(), shown.last() - shown.first() + 1);  // one run
    QVERIFY(shown.contains(2) && shown.contains(6));
    chooseItem(list, 1);
    for (int c = 0; c < 8; ++c)
        QVERIFY2(int(m.channel(c).coupling) == (shown.contains(c + 1) ? 1 : 0), qPrintable(QStringLiteral("channel %1").arg(c + 1)));
}

void GridEditingTest::theFrequencyDialogWritesTheWidenedGroup()
{
    ReadModule m(kTmC16);
    CellGrid* grid = m.grid("MSHGridOperate");
    bool seen = false;
    QTimer::singleShot(0, [&] {
        auto* dialog = qobject_cast<frmFrequence*>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        seen = true;
        auto* text = dialog->findChild<QLineEdit*>(QStringLiteral("txtEdit"));
        text->selectAll();
        QTest::keyClicks(text, "1000");
        QTest::mouseClick(dialog->findChild<QRadioButton*>(QStringLiteral("Option1[0]")), Qt::LeftButton);
        QTest::mouseClick(dialog->findChild<QPushButton*>(QStringLiteral("cmdOK")), Qt::LeftButton);
    });
    clickCell(grid, 8, kCutoffColumn);
    QVERIFY(seen);
    for (int row = 7; row <= 8; ++row) {
        QCOMPARE(m.channel(row - 1).cutoff, 100);
        QCOMPARE(cellText(grid, row, kCutoffColumn), QStringLiteral("1000.00000"));
    }
}

void GridEditingTest::aZeroAdjustOf256WarnsAtOnceAndStaysShownUnstored()
{
    ReadModule m(kTmB8);
    m.window().TabStrip1_Click(1);
    CellGrid* grid = m.grid("MSHGridNoOperate");
    const qint32 before = m.channel(0).zeroAdjustTable[0];
    clickCell(grid, 1, 1);
    auto* box = child<QLineEdit>(m.window(), "txtEdit");
    QVERIFY(box->isVisible());
    QVERIFY(box->geometry().width() < grid->visualRect(grid->model()->index(0, 1)).width());
    box->selectAll();
    QTest::keyClicks(box, "25x6");
    VELMOR_COMPARE_SAID(m.rig.dialogs.texts(), QStringList{QStringLiteral("Input data error.")});
    QCOMPARE(box->selectedText(), QStringLiteral("256"));
    QTest::keyClick(box, Qt::Key_Return);
    QCOMPARE(m.channel(0).zeroAdjustTable[0], before);
    QCOMPARE(cellText(grid, 1, 1), QStringLiteral("256"));
}

void GridEditingTest::aDragOverFourRowsAnswered2000Stores1023()
{
    ReadModule m(kTmB8);
    m.window().TabStrip1_Click(1);
    CellGrid* grid = m.grid("MSHGridNoOperate");
    m.rig.dialogs.typedAnswers = {QStringLiteral("2000")};
    QTest::mousePress(grid->viewport(), Qt::LeftButton, {}, centreOf(grid, 2, 6));
    QTest::mouseMove(grid->viewport(), centreOf(grid, 5, 6));
    QTest::mouseRelease(grid->viewport(), Qt::LeftButton, {}, centreOf(grid, 5, 6));
    QCOMPARE(m.rig.dialogs.prompts.value(0), (QPair<QString, QString>{"Input", "Input number: "}));
    for (int row = 1; row <= 6; ++row) {
        const bool dragged = row >= 2 && row <= 5;
        QCOMPARE(m.channel(row - 1).gainAdjustTable[1] == 1023, dragged);
        QCOMPARE(cellText(grid, row, 6) == QStringLiteral("1023"), dragged);
    }
    QCOMPARE(grid->currentIndex().row(), 4);
    const QString label = child<QLabel>(m.window(), "lblModuleNoOperateString[1]")->text();
    QCOMPARE(label, frameToText(rebuiltFrame(m.record(), {Block::Kind::AdjustBlock, 1}, kCmdWrite)));
}

void GridEditingTest::aTypedCoefficientIsStoredInHundredths()
{
    ReadModule m(kTmB8);
    QTest::mouseClick(child<QPushButton>(m.window(), "cmdShow"), Qt::LeftButton);
    CellGrid* grid = m.grid("MSHGridCalibration");
    clickCell(grid, 3, 11);  // "TM-B8" keeps eleven gain coefficients
    auto* box = child<QLineEdit>(m.window(), "txtCalibration");
    box->selectAll();
    QTest::keyClicks(box, "1.25");
    QTest::keyClick(box, Qt::Key_Return);
    QCOMPARE(m.channel(2).gainCoef[10], 125);
    QCOMPARE(cellText(grid, 3, 11), QStringLiteral("1.25"));
}

void GridEditingTest::anOpenEditorFollowsItsCellWhenTheGridScrollsOrTheWindowIsResized()
{
    ReadModule m(kTmC16);
    m.window().TabStrip1_Click(1);
    m.window().resize(m.window().minimumSize());
    CellGrid* grid = m.grid("MSHGridNoOperate");
    const auto insetCell = [grid](int row, int column) {
        return CellBox::insetRect(grid->visualRect(grid->model()->index(row - 1, column)), grid->logicalDpiX());
    };
    QVERIFY(grid->verticalScrollBar()->maximum() > 0);  // not every row shows at this size
    grid->scrollTo(grid->model()->index(15, 7));
    clickCell(grid, 16, 7);
    auto* box = child<QLineEdit>(m.window(), "txtEdit");
    QVERIFY(box->isVisible());
    const QRect opened = box->geometry();
    QCOMPARE(opened, insetCell(16, 7));

    grid->verticalScrollBar()->setValue(grid->verticalScrollBar()->value() - 1);
    QVERIFY(insetCell(16, 7) != opened);
    QCOMPARE(box->geometry(), insetCell(16, 7));

    const QRect scrolled = box->geometry();
    m.window().resize(1920, 1080);
    QVERIFY(insetCell(16, 7) != scrolled);
    QCOMPARE(box->geometry(), insetCell(16, 7));
    QVERIFY(box->isVisible());
}

void GridEditingTest::sendWritesWhatTheGridsShow()
{
    ReadModule m(kTmB8);
    CellGrid* grid = m.grid("MSHGridOperate");
    clickCell(grid, 1, kGainColumn);
    chooseItem(child<QComboBox>(m.window(), "cmbGain"), 3);
    clickCell(grid, 2, kExcitationColumn);
    chooseItem(child<QComboBox>(m.window(), "cmbGain"), 1);
    const QString shown = sentLabel(m.window(), 0);
    QTest::mouseClick(child<QPushButton>(m.window(), "cmdSend[0]"), Qt::LeftButton);
    VELMOR_COMPARE_SAID(m.rig.dialogs.texts());
    QCOMPARE(int(m.line.memory(1).channels[0].gain), 3);
    QCOMPARE(int(m.line.memory(1).channels[1].excitation), 1);
    QCOMPARE(cellText(grid, 2, kExcitationColumn), QStringLiteral("5.0V"));
    // What went out is what the send label showed once the grid changed.
    QCOMPARE(frameToText(m.line.requests().last()), shown);
}

QTEST_MAIN(GridEditingTest)
#include "grid_editing_test.moc"
