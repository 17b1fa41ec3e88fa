#include "window_placement.h"

#include "cell_grid.h"
#include "operator_settings.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QMainWindow>
#include <QScrollBar>

#include <algorithm>

namespace velmor {
namespace {

const QString kGeometry = QStringLiteral("window/geometry");
const QString kState = QStringLiteral("window/state");
const QString kPlace = QStringLiteral("window/place");  // the frame's rectangle on the desktop
constexpr qint64 kGrantWaitMs = 500;

QString widthsKey(const CellGrid* grid) { return QStringLiteral("grids/%1/widths").arg(grid->objectName()); }

// What the grid lacks to show all of itself, after the layout has settled.
QSize shortfall(const QTableView& grid)
{
    QApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    const int frame = 2 * grid.frameWidth();
    const int width = (grid.verticalHeader()->isVisible() ? grid.verticalHeader()->width() : 0)
                      + grid.horizontalHeader()->length() + frame;
    const int height = grid.horizontalHeader()->height() + grid.verticalHeader()->length() + frame;
    return QSize(std::max(0, width - grid.width()), std::max(0, height - grid.height()));
}

// The window's frame (title bar, borders) around its contents.
QSize decoration(const QMainWindow& window) { return window.frameGeometry().size() - window.geometry().size(); }

// A shown window takes a new size once the window system has granted it; the
// wait is bounded, since a window manager may grant another size or none.
void resizeShown(QMainWindow& window, const QSize& size)
{
    window.resize(size);
    QElapsedTimer waited;
    waited.start();
    while (window.size() != size && waited.elapsed() < kGrantWaitMs)
        QApplication::processEvents(QEventLoop::ExcludeUserInputEvents, 20);
}

void centre(QMainWindow& window, const QRect& available)
{
    const QSize outer = window.size() + decoration(window);
    window.move(available.topLeft() + QPoint((available.width() - outer.width()) / 2, (available.height() - outer.height()) / 2));
}

}  // namespace

void fitFirstStart(QMainWindow& window, const QTableView& grid, const QRect& available)
{
    growToShow(window, grid, available);
    centre(window, available);
}

void growToShow(QMainWindow& window, const QTableView& grid, const QRect& available)
{
    const QSize room = available.size() - decoration(window);
    // No narrower than its widest frame, whichever is shown now.
    resizeShown(window, window.size().expandedTo(window.minimumSizeHint()).boundedTo(room));
    // Other widgets share the grid's space; a few rounds let the layout settle.
    for (int round = 0; round < 8; ++round) {
        const QSize lacking = shortfall(grid);
        const QSize wanted = (window.size() + lacking).boundedTo(room);
        if (lacking == QSize(0, 0) || wanted == window.size())
            break;
        resizeShown(window, wanted);
    }
    // Whole on the screen: grown to the right or down, it may stand over an edge.
    const QRect frame = window.frameGeometry();
    const QPoint inside(std::clamp(frame.x(), available.left(), std::max(available.left(), available.right() + 1 - frame.width())),
                        std::clamp(frame.y(), available.top(), std::max(available.top(), available.bottom() + 1 - frame.height())));
    if (inside != frame.topLeft())
        window.move(inside);
}

bool restorePlacement(QMainWindow& window, const QList<CellGrid*>& grids, const QList<QRect>& screens)
{
    OperatorSettings settings;
    const QByteArray geometry = settings.value(kGeometry).toByteArray();
    if (geometry.isEmpty() || !window.restoreGeometry(geometry))
        return false;
    window.restoreState(settings.value(kState).toByteArray());
    for (CellGrid* grid : grids) {
        QList<int> widths;
        for (const QVariant& width : settings.value(widthsKey(grid)).toList())
            widths << width.toInt();
        grid->setOperatorWidths(widths);
    }
    // Judged by the place kept, before the platform moved the window anywhere.
    const QRect frame = settings.value(kPlace).toRect();
    const bool seen = std::any_of(screens.begin(), screens.end(), [&](const QRect& s) { return s.intersects(frame); });
    if (!seen && !screens.isEmpty()) {
        window.resize(window.size().boundedTo(screens.first().size() - decoration(window)));
        centre(window, screens.first());
    }
    return true;
}

void rememberPlacement(const QMainWindow& window, const QList<CellGrid*>& grids)
{
    OperatorSettings settings;
    settings.setValue(kGeometry, window.saveGeometry());
    settings.setValue(kState, window.saveState());
    settings.setValue(kPlace, window.frameGeometry());
    for (const CellGrid* grid : grids) {
        QVariantList widths;
        for (int width : grid->operatorWidths())
            widths << width;
        settings.setValue(widthsKey(grid), widths);
    }
}

}  // namespace velmor
