#include "trim_grid_editor.h"

#include "cell_grid.h"
#include "edit/grid_cells.h"
#include "key_filter.h"
#include "texts/grid.h"
#include "texts/message.h"

#include <QItemSelection>
#include <QKeyEvent>
#include <QLineEdit>

namespace velmor {

TrimGridEditor::TrimGridEditor(TrimGrid kind, CellGrid* grid, SetupState& state, OperatorDialogs& dialogs,
                               Language language)
    : QObject(grid)
    , kind_(kind)
    , grid_(grid)
    , state_(state)
    , dialogs_(dialogs)
    , language_(language)
    , box_(new QLineEdit(grid->viewport()))
{
    box_->setObjectName(kind == TrimGrid::Adjust ? QStringLiteral("txtEdit") : QStringLiteral("txtCalibration"));
    box_->setAccessibleName(grid->accessibleName());
    box_->hide();
    if (kind == TrimGrid::Adjust)
        filterDigitKeys(box_);
    box_->installEventFilter(this);
    connect(box_, &QLineEdit::textChanged, this, &TrimGridEditor::box_Change);
    connect(box_, &QLineEdit::editingFinished, this, &TrimGridEditor::box_LostFocus);
    connect(grid_, &CellGrid::cellReleased, this, &TrimGridEditor::cellReleased);
}

void TrimGridEditor::close()
{
    row_ = 0;
    box_->hide();
}

void TrimGridEditor::cellReleased(int row, int column, RowSpan rows)
{
    close();
    if (column < 1)
        return;  // column 0 names the channel
    if (trimRowsNeedPrompt(rows))
        askRows(column, rows);
    else
        openBox(row, column);
}

void TrimGridEditor::openBox(int row, int column)
{
    row_ = row;
    column_ = column;
    const QModelIndex cell = grid_->model()->index(row - 1, column);
    // Inset from the cell so that the grid lines stay visible.
    box_->setGeometry(trimEditorRect(grid_->visualRect(cell), grid_->logicalDpiX()));
    box_->setText(grid_->cellModel()->cellText(row, column));
    box_->show();
    box_->setFocus();
}

void TrimGridEditor::askRows(int column, RowSpan rows)
{
    // The selection narrows to the column the drag ended in.
    const QModelIndex top = grid_->model()->index(rows.first - 1, column);
    const QModelIndex bottom = grid_->model()->index(rows.last - 1, column);
    grid_->selectionModel()->select(QItemSelection(top, bottom), QItemSelectionModel::ClearAndSelect);
    const TrimPrompt prompt = trimPrompt(kind_, language_);
    const QString answer = dialogs_.askText(prompt.title, prompt.text);
    // Cancelled or answered, the current cell is the selection's last row.
    grid_->selectionModel()->setCurrentIndex(bottom, QItemSelectionModel::NoUpdate);
    if (answer.trimmed().isEmpty())
        return;
    show(answerTrimRows(kind_, state_.current(), rows, column, answer));
}

void TrimGridEditor::box_Change(const QString& text)
{
    if (kind_ != TrimGrid::Adjust || row_ == 0 || adjustTextInRange(text, column_))
        return;
    dialogs_.showMessage(pick(texts::message::kTitle, language_), pick(texts::message::kInputDataError, language_));
    // The next key replaces the whole text.
    box_->selectAll();
}

void TrimGridEditor::box_LostFocus()
{
    if (row_ == 0)
        return;
    const int row = row_;
    row_ = 0;
    const QString cell = grid_->cellModel()->cellText(row, column_);
    show(typeIntoTrimCell(kind_, state_.current(), row, column_, cell, box_->text()));
    box_->hide();
}

bool TrimGridEditor::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == box_ && event->type() == QEvent::KeyPress
        && static_cast<const QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        close();  // put away, nothing stored
        grid_->setFocus();
        return true;
    }
    return false;
}

void TrimGridEditor::show(const EditResult& result)
{
    const QList<int> rows = grid_->showEdit(result);
    // An adjust value out of its range stays shown while the record keeps
    // the old one; such a cell is marked, so that nobody takes it for sent.
    if (kind_ == TrimGrid::Adjust)
        grid_->cellModel()->markUnstored(adjustGridCells(state_.current(), language_),
                                         pick(texts::grid::kShownNotStored, language_));
    if (!rows.isEmpty())
        emit stored(rows);
}

}  // namespace velmor
