#pragma once

#include "edit/trim_rules.h"
#include "grid_editor.h"

class QLineEdit;

namespace velmor {

class CellBox;
class CellGrid;

// The in-place editor of the adjust grid (txtEdit, digits only, warned while
// typing) or of the coefficient grid (txtCalibration, any key), and the prompt
// that sets one value into the rows a drag selected. The rules are in
// edit/trim_rules.h; this class only asks and shows.
class TrimGridEditor : public GridEditor {
    Q_OBJECT
public:
    TrimGridEditor(TrimGrid kind, CellGrid* grid, SetupState& state, OperatorDialogs& dialogs);

    // Puts the box away without storing anything (another module is shown).
    void close();

private:
    void cellReleased(int row, int column, RowSpan rows);
    void openBox(int row, int column);
    void askRows(int column, RowSpan rows);
    void box_Change(const QString& text);
    void box_LostFocus();
    // The edit shown, an adjust cell that the record does not keep marked.
    void showMarked(const EditResult& result);

    TrimGrid kind_;
    QLineEdit* box_;
    CellBox* cell_;
    // The cell being edited, taken when the box opens.
    int row_ = 0;
    int column_ = 0;
};

}  // namespace velmor
