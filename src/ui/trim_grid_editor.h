#pragma once

#include "edit/cell_updates.h"
#include "edit/trim_rules.h"
#include "link/operator_dialogs.h"
#include "model/module_table.h"
#include "texts/language.h"

#include <QObject>

class QLineEdit;

namespace velmor {

class CellGrid;

// The in-place editor of the adjust grid (txtEdit, digits only, warned while
// typing) or of the coefficient grid (txtCalibration, any key), and the prompt
// that sets one value into the rows a drag selected. The rules are in
// edit/trim_rules.h; this class only asks and shows.
class TrimGridEditor : public QObject {
    Q_OBJECT
public:
    TrimGridEditor(TrimGrid kind, CellGrid* grid, SetupState& state, OperatorDialogs& dialogs, Language language);

    // Puts the box away without storing anything (another module is shown).
    void close();

signals:
    // The record of the current module changed in these rows (1-based).
    void stored(const QList<int>& rows);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void cellReleased(int row, int column, RowSpan rows);
    void openBox(int row, int column);
    void askRows(int column, RowSpan rows);
    void box_Change(const QString& text);
    void box_LostFocus();
    void show(const EditResult& result);

    TrimGrid kind_;
    CellGrid* grid_;
    SetupState& state_;
    OperatorDialogs& dialogs_;
    Language language_;
    QLineEdit* box_;
    // The cell being edited, taken when the box opens.
    int row_ = 0;
    int column_ = 0;
};

}  // namespace velmor
