#include "trim_grid_editor.h"

#include "cell_box.h"
#include "cell_grid.h"
#include "edit/grid_cells.h"
#include "key_filter.h"
#include "texts/grid.h"
#include "texts/message.h"

#include <QItemSelection>
#include <QLineEdit>

namespace velmor {

TrimGridEditor::TrimGridEditor(TrimGrid kind, CellGrid* grid, SetupState& state, OperatorDialogs& dialogs)
    : GridEditor(grid, state, dialogs)
    , kind_(kind)
    , box_(new QLineEdit(grid->viewport()))
    , cell_(new CellBox(box_, grid, CellBox::Fit::Inset))
{
    box_->setObjectName(kind == TrimGrid::Adjust ? QStringLiteral("txtEdit") : QStringLiteral("txtCalibration"));
    box_->setAccessibleName(grid->accessibleName());
    if (kind == TrimGrid::Adjust)
        filterDigitKeys(box_);
    connect(cell_, &CellBox::escaped, this, [this] { row_ = 0; });
    connect(box_, &QLineEdit::textChanged, this, &TrimGridEditor::box_Change);
    connect(box_, &QLineEdit::editingFinished, this, &TrimGridEditor::box_LostFocus);
    connect(grid_, &CellGrid::cellReleased, this, &TrimGridEditor::cellReleased);
}

void TrimGridEditor::close()
{
    row_ = 0;
    cell_->close();
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
    box_->setText(grid_->cellModel()->cellText(row, column));
    cell_->open(row, column);
}

void TrimGridEditor::askRows(int column, RowSpan rows)
{
    // The selection narrows to the column the drag ended in.
    const QModelIndex top = grid_->model()->index(rows.first - 1, column);
    const QModelIndex bottom = grid_->model()->index(rows.last - 1, column);
    grid_->selectionModel()->select(QItemSelection(top, bottom), QItemSelectionModel::ClearAndSelect);
    const TrimPrompt prompt = trimPrompt(kind_, language());
    const QString answer = dialogs_.askText(prompt.title, prompt.text);
    // Cancelled or answered, the current cell is the selection's last row.
    grid_->selectionModel()->setCurrentIndex(bottom, QItemSelectionModel::NoUpdate);
    if (answer.trimmed().isEmpty())
        return;
    showMarked(answerTrimRows(kind_, state_.current(), rows, column, answer));
}

void TrimGridEditor::box_Change(const QString& text)
{
    if (kind_ != TrimGrid::Adjust || row_ == 0 || adjustTextInRange(text, column_))
        return;
    dialogs_.showMessage(pick(texts::message::kTitle, language()), pick(texts::message::kInputDataError, language()));
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
    showMarked(typeIntoTrimCell(kind_, state_.current(), row, column_, cell, box_->text()));
    cell_->close();
}

void TrimGridEditor::showMarked(const EditResult& result)
{
    showEdit(result);
    // An adjust value out of its range stays shown while the record keeps
    // the old one; such a cell is marked, so that nobody takes it for sent.
    if (kind_ == TrimGrid::Adjust)
        grid_->cellModel()->markUnstored(adjustGridCells(state_.current(), language()),
                                         pick(texts::grid::kShownNotStored, language()));
}

}  // namespace velmor
