// Edits shown and not yet sent: marked in the grids and the information
// panel, counted in the status bar, gone once their group is sent or read
// again, and named when the window closes with some left.
#include "grid_hands.h"
#include "model/models.h"

#include "accessible_reading.h"
#include "ui/module_info_fields.h"

#include <QAccessibleTableInterface>
#include <QLabel>
#include <QLineEdit>
#include <QStatusBar>

using namespace velmor;
using namespace velmor::testing;

namespace {

QLabel* unsentCount(frmMain& window) { return child<QLabel>(window, "lblUnsent"); }

// Chooses in the open list an item other than the one the cell shows.
void chooseAnotherItem(frmMain& window, CellGrid* grid, int row, int column)
{
    auto* list = child<QComboBox>(window, "cmbGain");
    clickCell(grid, row, column);
    QTRY_VERIFY(list->view()->isVisible());
    const int shown = std::max(0, list->findText(cellText(grid, row, column)));
    chooseItem(list, (shown + 1) % list->count());
}

// Types a number into a cell of the adjust grid, as its box takes it.
void typeIntoAdjustCell(frmMain& window, int row, int column, const QString& number)
{
    clickCell(child<CellGrid>(window, "MSHGridNoOperate"), row, column);
    auto* box = child<QLineEdit>(window, "txtEdit");
    QVERIFY(box->isVisible());
    box->selectAll();
    QTest::keyClicks(box, number);
    QTest::keyClick(box, Qt::Key_Return);
}

// What a screen reader hears of a grid cell (row 1 is the first channel).
QString cellDescription(CellGrid* grid, int row, int column)
{
    QAccessibleInterface* table = QAccessible::queryAccessibleInterface(grid);
    QAccessibleInterface* cell = table->tableInterface()->cellAt(row - 1, column);
    return cell ? cell->text(QAccessible::Description) : QString();
}

// Relative luminance contrast of two colours, as readability guides reckon it.
double contrast(QColor a, QColor b)
{
    const auto luminance = [](QColor c) {
        const auto linear = [](double v) { return v <= 0.03928 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4); };
        return 0.2126 * linear(c.redF()) + 0.7152 * linear(c.greenF()) + 0.0722 * linear(c.blueF());
    };
    const double la = luminance(a), lb = luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

}  // namespace

class UnsentEditsTest : public QObject {
    Q_OBJECT
private slots:
    void anEditIsMarkedCountedAndGoneWhenItsGroupIsSent();
    void onlyReadingTheEditsOwnGroupTakesItsMarkAway();
    void theInformationPanelMarksItsRowsUntilSent();
    void theMarkReadsInADarkTheme();
    void closingNamesTheEditsNotSent_data();
    void closingNamesTheEditsNotSent();
    void anOpenedFileIsNoEdit();
};

void UnsentEditsTest::anEditIsMarkedCountedAndGoneWhenItsGroupIsSent()
{
    ReadModule m(kTmB8);
    CellGrid* grid = m.grid("MSHGridOperate");
    QVERIFY(!unsentCount(m.window())->isVisible());
    const QString held = cellText(grid, 1, kGainColumn);
    chooseAnotherItem(m.window(), grid, 1, kGainColumn);
    QVERIFY(cellText(grid, 1, kGainColumn) != held);

    const CellTextModel* cells = grid->cellModel();
    QVERIFY(cells->isMarked(1, kGainColumn));
    QVERIFY(!cells->isMarked(2, kGainColumn));
    const QModelIndex index = cells->index(0, kGainColumn);
    QCOMPARE(cells->data(index, Qt::BackgroundRole).value<QBrush>().color(), QColor(kMarkedCellColor));
    const QString description = QStringLiteral("Edited, not sent: the module holds %1.").arg(held);
    QCOMPARE(cellDescription(grid, 1, kGainColumn), description);
    QCOMPARE(cells->data(index, Qt::ToolTipRole).toString(), description);
    QCOMPARE(cellDescription(grid, 2, kGainColumn), QString());
    QVERIFY(unsentCount(m.window())->isVisible());
    // The gain's rules took the adjust values of the new gain step with it.
    QCOMPARE(unsentCount(m.window())->text(), QStringLiteral("Edits not sent: 3"));
    QCOMPARE(unsentCount(m.window())->toolTip(), QStringLiteral("TM-B8 at address 1: CH1 Gain, CH1 Zero Adjust, CH1 Gain Adjust"));
    QCOMPARE(accessibleText(unsentCount(m.window()), QAccessible::Name), QStringLiteral("Edits not sent: 3"));

    QTest::mouseClick(child<QPushButton>(m.window(), "cmdSend[0]"), Qt::LeftButton);
    QCOMPARE(m.line.memory(1).channels[0].gain, m.channel(0).gain);
    QVERIFY(!cells->isMarked(1, kGainColumn));
    QCOMPARE(cells->data(index, Qt::BackgroundRole), QVariant());
    QCOMPARE(cellDescription(grid, 1, kGainColumn), QString());
    QVERIFY(!unsentCount(m.window())->isVisible());
}

void UnsentEditsTest::onlyReadingTheEditsOwnGroupTakesItsMarkAway()
{
    ReadModule m(kTmC16);
    CellGrid* channels = m.grid("MSHGridOperate");
    CellGrid* adjust = m.grid("MSHGridNoOperate");
    const QString held = cellText(channels, 5, kExcitationColumn);
    chooseAnotherItem(m.window(), channels, 5, kExcitationColumn);  // channel 5: group 2
    m.window().TabStrip1_Click(1);
    typeIntoAdjustCell(m.window(), 2, 6, QStringLiteral("777"));
    QVERIFY(channels->cellModel()->isMarked(5, kExcitationColumn));
    QVERIFY(adjust->cellModel()->isMarked(2, 6));
    // The excitation's rules changed the coupling with it.
    QVERIFY(channels->cellModel()->isMarked(5, kCouplingColumn));
    QCOMPARE(unsentCount(m.window())->text(), QStringLiteral("Edits not sent: 3"));
    QCOMPARE(unsentCount(m.window())->toolTip(),
             QStringLiteral("TM-C16 at address 1: CH5 Excitation, CH5 Coupling, CH2 Gain Adjust2"));

    // Group 1 read again: channel 5's edit is not in it.
    m.window().TabStrip1_Click(0);
    QTest::mouseClick(child<QPushButton>(m.window(), "cmdReceive[0]"), Qt::LeftButton);
    QVERIFY(channels->cellModel()->isMarked(5, kExcitationColumn));
    QTest::mouseClick(child<QPushButton>(m.window(), "cmdReceive[1]"), Qt::LeftButton);
    QVERIFY(!channels->cellModel()->isMarked(5, kExcitationColumn));
    QVERIFY(!channels->cellModel()->isMarked(5, kCouplingColumn));
    QCOMPARE(cellText(channels, 5, kExcitationColumn), held);
    QCOMPARE(unsentCount(m.window())->text(), QStringLiteral("Edits not sent: 1"));

    // Reading everything brings the adjust block back too.
    QTest::mouseClick(child<QPushButton>(m.window(), "cmdFrame3Receive"), Qt::LeftButton);
    QVERIFY(!adjust->cellModel()->isMarked(2, 6));
    QCOMPARE(cellText(adjust, 2, 6), adjustCellText(m.line.memory(1).channels[1], 6));
    QVERIFY(!unsentCount(m.window())->isVisible());
}

void UnsentEditsTest::theInformationPanelMarksItsRowsUntilSent()
{
    ReadModule m(kTmC16);
    auto* number = child<QLineEdit>(m.window(), "txtModuleNumber");
    const QString held = number->text();
    number->setFocus();
    number->selectAll();
    QTest::keyClicks(number, held == QStringLiteral("4321") ? "1234" : "4321");
    auto* fields = m.window().findChild<ModuleInfoFields*>();
    QVERIFY(fields);
    QVERIFY(fields->isMarkedUnsent(3));
    QCOMPARE(number->palette().color(QPalette::Base), QColor(kMarkedCellColor));
    QCOMPARE(number->palette().color(QPalette::Text), QColor(kColouredCellText));
    QCOMPARE(accessibleText(number, QAccessible::Description),
             QStringLiteral("Edited, not sent: the module holds %1.").arg(held));
    QVERIFY(child<QLineEdit>(m.window(), "txtVer")->accessibleDescription().isEmpty());
    QCOMPARE(unsentCount(m.window())->toolTip(), QStringLiteral("TM-C16 at address 1: serial num."));

    m.window().TabStrip1_Click(2);
    QTest::mouseClick(child<QPushButton>(m.window(), "cmdModuleInfoSend"), Qt::LeftButton);
    QCOMPARE(QString::number(m.line.memory(1).moduleNumber), number->text());
    QVERIFY(!fields->isMarkedUnsent(3));
    QVERIFY(number->palette().color(QPalette::Base) != QColor(kMarkedCellColor));
    QCOMPARE(accessibleText(number, QAccessible::Description), QString());
    QVERIFY(!unsentCount(m.window())->isVisible());
}

void UnsentEditsTest::theMarkReadsInADarkTheme()
{
    QVERIFY(contrast(QColor(kMarkedCellColor), QColor(kColouredCellText)) >= 7.0);
    QVERIFY(contrast(QColor(kGreyCellColor), QColor(kColouredCellText)) >= 7.0);

    ReadModule m(kTmB8);
    QPalette dark;
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    dark.setColor(QPalette::Window, QColor(45, 45, 45));
    dark.setColor(QPalette::Text, Qt::white);
    dark.setColor(QPalette::WindowText, Qt::white);
    m.window().setPalette(dark);
    CellGrid* grid = m.grid("MSHGridOperate");
    chooseAnotherItem(m.window(), grid, 3, kGainColumn);
    const QModelIndex index = grid->cellModel()->index(2, kGainColumn);
    QCOMPARE(grid->cellModel()->data(index, Qt::ForegroundRole).value<QBrush>().color(), QColor(kColouredCellText));
    // The cell as drawn: amber where an unmarked cell is dark.
    grid->clearSelection();
    const QImage drawn = grid->viewport()->grab().toImage();
    const QRect cell = grid->visualRect(index);
    QCOMPARE(drawn.pixelColor(cell.left() + 2, cell.top() + 2), QColor(kMarkedCellColor));
    const QRect plain = grid->visualRect(grid->cellModel()->index(3, kGainColumn));
    QCOMPARE(drawn.pixelColor(plain.left() + 2, plain.top() + 2), QColor(30, 30, 30));
}

void UnsentEditsTest::closingNamesTheEditsNotSent_data()
{
    QTest::addColumn<int>("languageMode");
    QTest::addColumn<QString>("saved");
    QTest::addColumn<QString>("said");
    QTest::newRow("English") << kEnglish << "Saved to %1"
                             << "Saved to %1. Edits not sent to the modules: TM-B8 at address 1: CH2 Gain, CH2 Zero Adjust, CH2 Gain Adjust";
    QTest::newRow("Chinese") << kChinese << "已保存到 %1" << "已保存到 %1。未发送到模块的修改：TM-B8（地址 1）：CH2 放大倍数、CH2 零点调整、CH2 增益调整";
}

void UnsentEditsTest::closingNamesTheEditsNotSent()
{
    QFETCH(int, languageMode);
    QFETCH(QString, saved);
    QFETCH(QString, said);
    ReadModule m(kTmB8, languageMode);
    chooseAnotherItem(m.window(), m.grid("MSHGridOperate"), 2, kGainColumn);
    m.window().close();
    QCOMPARE(m.window().statusBar()->currentMessage(), said.arg(m.window().configPath()));

    ReadModule untouched(kTmB8, languageMode);
    untouched.window().close();
    QCOMPARE(untouched.window().statusBar()->currentMessage(), saved.arg(untouched.window().configPath()));
}

void UnsentEditsTest::anOpenedFileIsNoEdit()
{
    ReadModule m(kTmC16);
    CellGrid* grid = m.grid("MSHGridOperate");
    chooseAnotherItem(m.window(), grid, 4, kGainColumn);
    m.rig.files.saveAnswer = m.rig.folder.filePath(QStringLiteral("edited.cfg"));
    m.window().MnuFile_SaveAs_Click();
    QVERIFY(grid->cellModel()->isMarked(4, kGainColumn));  // saving sends nothing

    m.window().openConfigFile(m.rig.files.saveAnswer);
    QVERIFY(!grid->cellModel()->isMarked(4, kGainColumn));
    QVERIFY(!unsentCount(m.window())->isVisible());
    // Edits count from what was opened.
    chooseAnotherItem(m.window(), grid, 4, kGainColumn);
    QVERIFY(grid->cellModel()->isMarked(4, kGainColumn));
}

QTEST_MAIN(UnsentEditsTest)
#include "unsent_edits_test.moc"
