#pragma once

#include <QObject>
#include <QRect>

class QWidget;

namespace velmor {

class CellGrid;

// The mechanism every in-place editor of the grids shares: a control laid
// over one cell that stays over it while the grid scrolls or is resized, and
// that Escape puts away with nothing stored, the focus back on the grid.
class CellBox : public QObject {
    Q_OBJECT
public:
    // Over the whole cell, or inset so that the grid lines stay visible.
    enum class Fit { WholeCell, Inset };

    // `control` is a child of the grid's viewport, hidden until opened.
    CellBox(QWidget* control, CellGrid* grid, Fit fit);

    // Lays the control over the cell (row 1-based), shows it and gives it the focus.
    void open(int row, int column);
    // Hides the control; nothing is stored.
    void close();
    bool isOpen() const;

    // Inset: 32 twips on the left and 8 at the top, 50 twips narrower and 24
    // lower. Each amount is converted on its own and rounded to the nearest
    // pixel; at 96 dpi that is 2, 1, 3 and 2 pixels. A size never goes below 0.
    static QRect insetRect(QRect cellRect, double dpi);

signals:
    // Escape is putting the control away: nothing is to be stored.
    void escaped();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void place();

    QWidget* control_;
    CellGrid* grid_;
    Fit fit_;
    int row_ = 0;
    int column_ = 0;
};

}  // namespace velmor
