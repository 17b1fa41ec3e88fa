// The window's size and place: a first start that shows the whole channel
// grid within the screen, and what the last run left, kept between runs.

#include "model/models.h"
#include "ui/cell_grid.h"
#include "ui/operator_settings.h"
#include "ui/window_placement.h"
#include "window_rig.h"

#include <QAbstractButton>
#include <QDockWidget>
#include <QHeaderView>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

using namespace velmor;
using namespace velmor::testing;

namespace {

CellGrid* channelGrid(frmMain& window) { return child<CellGrid>(window, "MSHGridOperate"); }

void settle() { QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest); }

QRect frameOf(const QWidget& window) { return window.frameGeometry(); }

}  // namespace

class WindowPlacementTest : public QObject {
    Q_OBJECT
private slots:
    void init();
    void firstStartShowsTheWholeChannelGridOnA1080pScreen_data();
    void firstStartShowsTheWholeChannelGridOnA1080pScreen();
    void firstStartOnA720pScreenKeepsEveryButtonReachable();
    void sizePlacePaneAndColumnWidthsOutliveTheWindow();
    void aPlaceOnNoScreenNowIsDropped();
    void nothingRememberedIsAFirstStart();
    void aSearchThatWidensTheGridGrowsAFirstStartsWindow();
};

void WindowPlacementTest::init() { OperatorSettings().clear(); }

void WindowPlacementTest::firstStartShowsTheWholeChannelGridOnA1080pScreen_data()
{
    QTest::addColumn<int>("languageMode");
    QTest::newRow("English") << kEnglish;
    QTest::newRow("Chinese") << kChinese;
}

void WindowPlacementTest::firstStartShowsTheWholeChannelGridOnA1080pScreen()
{
    QFETCH(int, languageMode);
    WindowRig rig(languageMode);
    const QRect screen(0, 0, 1920, 1040);  // 1080 less a panel
    CellGrid* grid = channelGrid(rig.window);
    QCOMPARE(grid->model()->rowCount(), 16);
    settle();
    QVERIFY(grid->verticalScrollBar()->maximum() > 0);  // as it opened before
    fitFirstStart(rig.window, *grid, screen);
    settle();
    QCOMPARE(grid->horizontalScrollBar()->maximum(), 0);
    QCOMPARE(grid->verticalScrollBar()->maximum(), 0);
    QVERIFY2(screen.contains(frameOf(rig.window)), qPrintable(QStringLiteral("%1,%2 %3x%4")
                                                                    .arg(rig.window.x()).arg(rig.window.y())
                                                                    .arg(rig.window.width()).arg(rig.window.height())));
}

void WindowPlacementTest::firstStartOnA720pScreenKeepsEveryButtonReachable()
{
    WindowRig rig;
    const QRect screen(0, 0, 1280, 680);
    fitFirstStart(rig.window, *channelGrid(rig.window), screen);
    settle();
    QVERIFY(screen.contains(frameOf(rig.window)));
    // Every frame in turn, as its tab shows it; a button below a short page
    // is scrolled to, as the operator would.
    int buttons = 0;
    for (int frame = 0; frame < 3; ++frame) {
        rig.window.TabStrip1_Click(frame);
        settle();
        for (QAbstractButton* button : rig.window.findChildren<QAbstractButton*>()) {
            if (!button->isVisible())
                continue;
            for (QWidget* above = button->parentWidget(); above; above = above->parentWidget())
                if (auto* page = qobject_cast<QScrollArea*>(above))
                    page->ensureWidgetVisible(button, 0, 0);
            const QRect onWindow(button->mapTo(&rig.window, QPoint(0, 0)), button->size());
            QVERIFY2(rig.window.rect().contains(onWindow), qPrintable(button->objectName()));
            QVERIFY2(button->visibleRegion().boundingRect() == button->rect(), qPrintable(button->objectName()));
            ++buttons;
        }
    }
    QVERIFY(buttons >= 20);
}

void WindowPlacementTest::sizePlacePaneAndColumnWidthsOutliveTheWindow()
{
    int widened = 0;
    {
        WindowRig rig;
        rig.window.resize(1100, 760);
        rig.window.move(40, 30);
        QVERIFY(!child<QDockWidget>(rig.window, "FrameLogPane")->isVisible());
        child<QAction>(rig.window, "MnuView_FrameLog")->trigger();  // the pane comes
        QVERIFY(child<QDockWidget>(rig.window, "FrameLogPane")->isVisible());
        QHeaderView* header = channelGrid(rig.window)->horizontalHeader();
        widened = header->sectionSize(3) + 70;
        // The operator drags the column's right edge 70 pixels to the right.
        const QPoint edge(header->sectionViewportPosition(3) + header->sectionSize(3) - 1, header->height() / 2);
        QTest::mousePress(header->viewport(), Qt::LeftButton, {}, edge);
        QTest::mouseMove(header->viewport(), edge + QPoint(35, 0));
        QTest::mouseMove(header->viewport(), edge + QPoint(70, 0));
        QTest::mouseRelease(header->viewport(), Qt::LeftButton, {}, edge + QPoint(70, 0));
        QCOMPARE(header->sectionSize(3), widened);
        // The program's own fitting is not the operator's.
        QCOMPARE(channelGrid(rig.window)->operatorWidths().value(2), 0);
        rig.window.close();
    }
    WindowRig rig;
    QVERIFY(!child<QDockWidget>(rig.window, "FrameLogPane")->isVisible());  // before the place is restored
    rig.window.placeOnScreen();
    QCOMPARE(rig.window.size(), QSize(1100, 760));
    QCOMPARE(rig.window.pos(), QPoint(40, 30));
    QVERIFY(child<QDockWidget>(rig.window, "FrameLogPane")->isVisible());
    CellGrid* grid = channelGrid(rig.window);
    QCOMPARE(grid->columnWidth(3), widened);
    // Cells shown anew fit their columns, never narrower than the operator made them.
    rig.window.state().current().channels[0].cutoff = 1;
    grid->showCells(grid->cellModel()->cells());
    QCOMPARE(grid->columnWidth(3), widened);
}

void WindowPlacementTest::aPlaceOnNoScreenNowIsDropped()
{
    {
        WindowRig rig;
        rig.window.resize(900, 700);
        rig.window.move(3000, 2000);  // on a second screen, since unplugged
        rememberPlacement(rig.window, {});
    }
    WindowRig rig;
    const QRect screen(0, 0, 1280, 680);
    QVERIFY(restorePlacement(rig.window, {}, {screen}));
    QVERIFY(screen.contains(frameOf(rig.window)));
    QCOMPARE(rig.window.width(), 900);  // kept within the screen's height
}

void WindowPlacementTest::nothingRememberedIsAFirstStart()
{
    WindowRig rig;
    QVERIFY(!restorePlacement(rig.window, {}, {QRect(0, 0, 1920, 1040)}));
}

void WindowPlacementTest::aSearchThatWidensTheGridGrowsAFirstStartsWindow()
{
    // A TM-B8 adds its six reference columns to the grid a first start fitted.
    SimLine line({{1, kTmB8}}, Pacing::Fast, QStringLiteral("SIM1"));
    WindowRig rig;
    rig.window.placeOnScreen();
    const QSize first = rig.window.size();
    CellGrid* grid = channelGrid(rig.window);
    const int before = grid->horizontalHeader()->length();
    QTest::mouseClick(child<QAbstractButton>(rig.window, "cmdSearch"), Qt::LeftButton);
    settle();
    QVERIFY(grid->horizontalHeader()->length() > before);
    const QRect screen = rig.window.screen()->availableGeometry();
    QVERIFY(rig.window.width() > first.width());
    QVERIFY(screen.contains(frameOf(rig.window)));
    // Every column in view, unless the screen is too narrow for them.
    QVERIFY(grid->horizontalScrollBar()->maximum() == 0 || frameOf(rig.window).width() == screen.width());

    // A size the operator chose is left alone.
    rig.window.resize(rig.window.width() - 40, rig.window.height());
    const QSize chosen = rig.window.size();
    QTest::mouseClick(child<QAbstractButton>(rig.window, "cmdSearch"), Qt::LeftButton);
    QCOMPARE(rig.window.size(), chosen);
}

QTEST_MAIN(WindowPlacementTest)
#include "window_placement_test.moc"
