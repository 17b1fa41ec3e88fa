#pragma once

#include <QList>
#include <QRect>

class QMainWindow;
class QTableView;

namespace velmor {

class CellGrid;

// At a first start: big enough that `grid` shows every row and column without
// scroll bars, never larger than `available` (a screen's area without its
// panels), and centred on it.
void fitFirstStart(QMainWindow& window, const QTableView& grid, const QRect& available);
// The same without centring: the window grows where it stands, moved only as
// far as it takes to stay whole on `available`.
void growToShow(QMainWindow& window, const QTableView& grid, const QRect& available);

// The size, place and pane layout of the window and the widths the operator
// gave the grids' columns, as the last run left them; false when none was
// kept. A place on none of `screens` (their available areas) now is dropped
// for the centre of the first, and the size kept within it.
bool restorePlacement(QMainWindow& window, const QList<CellGrid*>& grids, const QList<QRect>& screens);
void rememberPlacement(const QMainWindow& window, const QList<CellGrid*>& grids);

}  // namespace velmor
