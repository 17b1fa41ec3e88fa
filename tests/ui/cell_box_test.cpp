// The mechanism the grids' in-place editors share: laid over its cell, inset
// in twips where asked, following the cell as the grid scrolls or is resized,
// put away by Escape.
#include "ui/cell_box.h"

#include "edit/grid_cells.h"
#include "ui/cell_grid.h"

#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

using namespace velmor;

namespace {

constexpr qint32 kAllChosen = -1;

// A channel grid of a 16-channel module, too small to show all its rows and
// columns, with a box over no cell yet.
struct SmallGrid {
    SmallGrid()
    {
        grid.cellModel()->showCells(channelGridCells(defaultModule(), Language::English, kAllChosen));
        grid.resize(260, 140);
        grid.show();
        QApplication::setActiveWindow(&grid);
        QVERIFY(QTest::qWaitForWindowExposed(&grid));
    }
    QRect cellRect(int row, int column) const { return grid.visualRect(grid.model()->index(row - 1, column)); }

    CellGrid grid{QStringLiteral("MSHGridOperate"), QStringLiteral("Channel parameters")};
    QLineEdit* control = new QLineEdit(grid.viewport());
    CellBox box{control, &grid, CellBox::Fit::WholeCell};
};

}  // namespace

class CellBoxTest : public QObject {
    Q_OBJECT

private slots:
    void opensOverItsCell();
    void followsItsCellWhenTheGridScrolls();
    void followsItsCellWhenAColumnOrTheGridIsResized();
    void escapePutsItAwayAndIsSaidOnce();
    void editorRectIsInsetInTwips_data();
    void editorRectIsInsetInTwips();
};

void CellBoxTest::opensOverItsCell()
{
    SmallGrid g;
    QVERIFY(!g.control->isVisible());
    g.box.open(2, 3);
    QVERIFY(g.box.isOpen());
    QCOMPARE(g.control->geometry(), g.cellRect(2, 3));
    g.box.close();
    QVERIFY(!g.control->isVisible());
}

void CellBoxTest::followsItsCellWhenTheGridScrolls()
{
    SmallGrid g;
    g.box.open(12, 4);
    const QRect before = g.control->geometry();
    QVERIFY(g.grid.verticalScrollBar()->maximum() > 0);
    QVERIFY(g.grid.horizontalScrollBar()->maximum() > 0);
    g.grid.verticalScrollBar()->setValue(g.grid.verticalScrollBar()->maximum());
    g.grid.horizontalScrollBar()->setValue(g.grid.horizontalScrollBar()->maximum());
    QVERIFY(g.cellRect(12, 4) != before);  // the cell moved
    QCOMPARE(g.control->geometry(), g.cellRect(12, 4));
}

void CellBoxTest::followsItsCellWhenAColumnOrTheGridIsResized()
{
    SmallGrid g;
    g.box.open(3, 2);
    g.grid.horizontalHeader()->resizeSection(1, g.grid.horizontalHeader()->sectionSize(1) + 40);
    QCOMPARE(g.control->geometry(), g.cellRect(3, 2));
    g.grid.horizontalHeader()->resizeSection(2, g.grid.horizontalHeader()->sectionSize(2) + 25);
    QCOMPARE(g.control->geometry(), g.cellRect(3, 2));
    // A grid big enough for every row scrolls back to the top: the cell moves.
    g.grid.verticalScrollBar()->setValue(g.grid.verticalScrollBar()->maximum());
    const QRect scrolled = g.cellRect(3, 2);
    g.grid.resize(1200, 900);
    QCOMPARE(g.grid.verticalScrollBar()->maximum(), 0);
    QVERIFY(g.cellRect(3, 2) != scrolled);
    QCOMPARE(g.control->geometry(), g.cellRect(3, 2));
}

void CellBoxTest::escapePutsItAwayAndIsSaidOnce()
{
    SmallGrid g;
    QSignalSpy escaped(&g.box, &CellBox::escaped);
    g.box.open(1, 1);
    QTest::keyClick(g.control, Qt::Key_A);
    QTest::keyClick(g.control, Qt::Key_Escape);
    QCOMPARE(escaped.count(), 1);
    QVERIFY(!g.control->isVisible());
    QVERIFY(!g.box.isOpen());
    QCOMPARE(QApplication::focusWidget(), &g.grid);
    QTest::keyClick(&g.grid, Qt::Key_Escape);  // the grid's own Escape is none of the box's business
    QCOMPARE(escaped.count(), 1);
}

void CellBoxTest::editorRectIsInsetInTwips_data()
{
    QTest::addColumn<QRect>("cell");
    QTest::addColumn<double>("dpi");
    QTest::addColumn<QRect>("editor");
    // 96 dpi: 32 twips = 2.13 px -> 2, 8 = 0.53 -> 1, 50 = 3.33 -> 3, 24 = 1.6 -> 2.
    QTest::newRow("96 dpi") << QRect(100, 40, 80, 24) << 96.0 << QRect(102, 41, 77, 22);
    // 144 dpi: 3.2 -> 3, 0.8 -> 1, 5, 2.4 -> 2.
    QTest::newRow("144 dpi") << QRect(0, 0, 120, 36) << 144.0 << QRect(3, 1, 115, 34);
    // 192 dpi: 4.27 -> 4, 1.07 -> 1, 6.67 -> 7, 3.2 -> 3.
    QTest::newRow("192 dpi") << QRect(10, 20, 160, 48) << 192.0 << QRect(14, 21, 153, 45);
    QTest::newRow("1440 dpi is one pixel a twip") << QRect(0, 0, 1000, 300) << 1440.0 << QRect(32, 8, 950, 276);
    QTest::newRow("cell smaller than the insets") << QRect(5, 5, 2, 1) << 96.0 << QRect(7, 6, 0, 0);
}

void CellBoxTest::editorRectIsInsetInTwips()
{
    QFETCH(QRect, cell);
    QFETCH(double, dpi);
    QFETCH(QRect, editor);
    QCOMPARE(CellBox::insetRect(cell, dpi), editor);
}

QTEST_MAIN(CellBoxTest)
#include "cell_box_test.moc"
