#include "grid_editor.h"

#include "cell_grid.h"

namespace velmor {

GridEditor::GridEditor(CellGrid* grid, SetupState& state, OperatorDialogs& dialogs)
    : QObject(grid)
    , grid_(grid)
    , state_(state)
    , dialogs_(dialogs)
{
}

void GridEditor::showEdit(const EditResult& result)
{
    const QList<int> rows = grid_->showEdit(result);
    if (!rows.isEmpty())
        emit stored(rows);
}

}  // namespace velmor
