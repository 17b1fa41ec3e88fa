#pragma once

#include "edit/cell_updates.h"
#include "link/operator_dialogs.h"
#include "model/module_table.h"
#include "texts/language.h"

#include <QList>
#include <QObject>

namespace velmor {

class CellGrid;

// What the grids' editors share beyond their boxes (CellBox): the record
// they edit, the operator they ask, an edit's cells shown in the grid, and
// the rows whose record changed said.
class GridEditor : public QObject {
    Q_OBJECT
public:
    GridEditor(CellGrid* grid, SetupState& state, OperatorDialogs& dialogs);

signals:
    // The record of the current module changed in these rows (1-based).
    void stored(const QList<int>& rows);

protected:
    // Shows the edit's cells and says `stored` when the record changed.
    void showEdit(const EditResult& result);
    // The language the window was started in, held by the state.
    Language language() const { return languageOf(state_.languageMode); }

    CellGrid* grid_;
    SetupState& state_;
    OperatorDialogs& dialogs_;
};

}  // namespace velmor
