#pragma once

#include "edit/cell_updates.h"

#include <QList>
#include <QObject>

namespace velmor {

class CellGrid;

// What the grids' editors share beyond their boxes (CellBox): an edit's
// cells shown in the grid, and the rows whose record changed said.
class GridEditor : public QObject {
    Q_OBJECT
public:
    explicit GridEditor(CellGrid* grid);

signals:
    // The record of the current module changed in these rows (1-based).
    void stored(const QList<int>& rows);

protected:
    // Shows the edit's cells and says `stored` when the record changed.
    void showEdit(const EditResult& result);

    CellGrid* grid_;
};

}  // namespace velmor
