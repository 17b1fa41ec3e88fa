#include "grid_editor.h"

#include "cell_grid.h"

namespace velmor {

GridEditor::GridEditor(CellGrid* grid) : QObject(grid), grid_(grid) {}

void GridEditor::showEdit(const EditResult& result)
{
    const QList<int> rows = grid_->showEdit(result);
    if (!rows.isEmpty())
        emit stored(rows);
}

}  // namespace velmor
