#include "cell_box.h"

#include "cell_grid.h"
#include "twips.h"

#include <QHeaderView>
#include <QKeyEvent>

#include <algorithm>

namespace velmor {
namespace {

constexpr int kInsetLeft = 32;  // twips
constexpr int kInsetTop = 8;
constexpr int kNarrower = 50;
constexpr int kLower = 24;

}  // namespace

CellBox::CellBox(QWidget* control, CellGrid* grid, Fit fit)
    : QObject(control)
    , control_(control)
    , grid_(grid)
    , fit_(fit)
{
    control_->hide();
    control_->installEventFilter(this);
    // A scroll moves the viewport's children with its contents (and a resized
    // window moves the cells only by scrolling); a resized row or column does not.
    for (QHeaderView* header : {grid_->horizontalHeader(), grid_->verticalHeader()})
        connect(header, &QHeaderView::sectionResized, this, &CellBox::place);
}

QRect CellBox::insetRect(QRect cellRect, double dpi)
{
    const int width = std::max(0, cellRect.width() - twipsToPixels(kNarrower, dpi));
    const int height = std::max(0, cellRect.height() - twipsToPixels(kLower, dpi));
    return QRect(cellRect.left() + twipsToPixels(kInsetLeft, dpi), cellRect.top() + twipsToPixels(kInsetTop, dpi),
                 width, height);
}

void CellBox::open(int row, int column)
{
    row_ = row;
    column_ = column;
    place();
    control_->show();
    control_->setFocus();
}

void CellBox::close()
{
    row_ = 0;
    control_->hide();
}

bool CellBox::isOpen() const { return row_ > 0 && control_->isVisible(); }

void CellBox::place()
{
    if (row_ == 0)
        return;
    const QRect cell = grid_->visualRect(grid_->model()->index(row_ - 1, column_));
    control_->setGeometry(fit_ == Fit::Inset ? insetRect(cell, grid_->logicalDpiX()) : cell);
}

bool CellBox::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == control_ && event->type() == QEvent::KeyPress
        && static_cast<const QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        // Said first, so that the editor lets go of its cell before the
        // box, losing the focus, finishes its editing.
        emit escaped();
        close();
        grid_->setFocus();
        return true;
    }
    return false;
}

}  // namespace velmor
