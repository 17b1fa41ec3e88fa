#pragma once

#include "edit/cell_updates.h"
#include "edit/grid_cells.h"

#include "model/cutoff_groups.h"

#include <QAbstractTableModel>
#include <QHash>
#include <QIcon>
#include <QTableView>

namespace velmor {

// The light grey behind the reference columns, which are never sent to a module.
inline constexpr QRgb kGreyCellColor = qRgb(230, 230, 230);
// The light amber behind a marked cell (an edit not yet sent, a difference
// from another setup). Cells with a colour of their own are written in
// black, so that they read in a dark theme too.
inline constexpr QRgb kMarkedCellColor = qRgb(255, 214, 112);
inline constexpr QRgb kColouredCellText = qRgb(0, 0, 0);

// The texts of a grid, held as cells rather than derived from the record: the
// rules may leave a cell showing something the record does not hold (a typed
// value that was refused, an answer stored nowhere). Headings go to the
// horizontal header; every cell is centred; the grey columns get a grey
// background.
class CellTextModel : public QAbstractTableModel {
    Q_OBJECT
public:
    explicit CellTextModel(QObject* parent = nullptr);

    // Shows every heading and cell. Of a grid of the same shape and headings
    // only the cells that differ are told as changed; otherwise the model is
    // reset. Returns the columns whose texts changed.
    QList<int> showCells(const GridCells& cells);
    // Rewrites single cells (row 1 is the first data row, as the rules count);
    // cells outside the grid are left alone. Returns the columns touched.
    QList<int> setCells(const QList<CellUpdate>& updates);
    // A column whose cells show a picture chosen by their text; the text stays
    // the cell's accessible text and tool tip.
    void setPictures(int column, const QHash<QString, QIcon>& pictures);
    // Marks the cells whose text is not what the record holds (`stored`, the
    // grid as the record would show it): a typed value that was refused
    // stays shown. Such a cell gets a warning picture, and `note` with the
    // stored text ("%1") as its tool tip and accessible description. Showing
    // the cells anew takes every mark away.
    void markUnstored(const GridCells& stored, const QString& note);
    bool isMarkedUnstored(int row, int column) const { return unstored_.contains({row, column}); }
    // Marks cells (1-based row, column), each with its accessible
    // description: an edit not yet sent, a cell that differs from another
    // setup. Every other cell is unmarked.
    void markCells(const QHash<QPair<int, int>, QString>& descriptions);
    bool isMarked(int row, int column) const { return marked_.contains({row - 1, column}); }
    QString cellText(int row, int column) const;
    const GridCells& cells() const { return cells_; }

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    bool holds(const QModelIndex& index) const;
    // Sets one cell and tells the view; false when it already showed that text.
    bool setCell(int row, int column, const QString& text);

    GridCells cells_;
    int pictureColumn_ = -1;
    QHash<QString, QIcon> pictures_;
    // Cells shown but not stored (0-based row, column), with their notes.
    QHash<QPair<int, int>, QString> unstored_;
    // Marked cells (0-based row, column), with their descriptions.
    QHash<QPair<int, int>, QString> marked_;
};

// One of the three grids of the main window: a table view that owns its cell
// model and sizes its columns to the widest heading or cell.
class CellGrid : public QTableView {
    Q_OBJECT
public:
    CellGrid(const QString& objectName, const QString& accessibleName, QWidget* parent = nullptr);

    // Shows the cells; the row numbers are hidden when column 0 names the rows.
    void showCells(const GridCells& cells);
    // Rewrites the cells an edit changed.
    void setCells(const QList<CellUpdate>& updates);
    // Shows what an edit returned; the rows (1-based) whose record it changed,
    // none when it stored nothing.
    QList<int> showEdit(const EditResult& result);

    CellTextModel* cellModel() const { return model_; }
    // The rows (1-based) of the current selection together with `row`.
    RowSpan selectedRows(int row) const;
    // Widths the operator gave columns by dragging their edges in the
    // heading, or that an earlier run kept (0: none): such a column is never
    // fitted narrower.
    QList<int> operatorWidths() const { return operatorWidths_; }
    void setOperatorWidths(const QList<int>& widths);

signals:
    // A mouse button came up over the cell at `row` (1-based) and `column`:
    // a click, or the end of a drag that selected `rows`.
    void cellReleased(int row, int column, velmor::RowSpan rows);

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    // Tells a drag in the heading from the program's own resizing.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // The widest of heading and cells, so that no heading is clipped, and
    // no narrower than the operator made it.
    void fitColumns(const QList<int>& columns);

    CellTextModel* model_;
    QList<int> operatorWidths_;
    bool headingHeld_ = false;  // a mouse button is down on the heading
};

}  // namespace velmor
