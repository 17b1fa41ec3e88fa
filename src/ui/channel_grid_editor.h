#pragma once

#include "edit/channel_rules.h"
#include "grid_editor.h"

#include <array>

class QComboBox;
class QKeyEvent;
class QLabel;
class QLineEdit;
class QRadioButton;
class QWidget;

namespace velmor {

class CellBox;
class CellGrid;

// The editors of the channel grid MSHGridOperate: the shared list cmbGain,
// the number prompt, the automatic-balance toggle, the frequency dialog, and
// txtOperate for a value typed straight into a cell, with the two cut-off
// choices Option1. What a click opens and what an answer stores are the
// rules' business (edit/channel_rules.h); this class only asks and shows.
class ChannelGridEditor : public GridEditor {
    Q_OBJECT
public:
    ChannelGridEditor(CellGrid* grid, SetupState& state, OperatorDialogs& dialogs);

    // The editor's caption and the two cut-off choices, shown under the grid.
    QWidget* strip() const { return strip_; }
    // Puts every editor away without storing anything (another module is shown).
    void close();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void cellReleased(int row, int column, RowSpan rows);
    void openList(const ChannelEditor& editor, int row, int column, RowSpan rows);
    void cmbGain_Click(int item);
    void askNumber(const ChannelEditor& editor, int column, RowSpan rows);
    void openFrequencyDialog(int row, RowSpan rows);
    // Opens txtOperate over the current cell when a key types into the grid.
    bool startTyping(const QKeyEvent& key);
    void txtOperate_Change(const QString& text);
    // The two cut-off choices for a frequency text; false, changing nothing,
    // when the text is no number.
    bool showChoices(const QString& text);
    void txtOperate_LostFocus();
    void Option1_Click(int option);
    void message();
    ModuleRecord& module();

    QWidget* strip_;
    QLabel* caption_;
    QComboBox* cmbGain_;
    QLineEdit* txtOperate_;
    CellBox* listCell_;
    CellBox* typedCell_;
    std::array<QRadioButton*, 2> Option1_{};
    FrequencyEntry entry_;
    // The cell txtOperate edits, and the rows the list's choice goes to.
    int row_ = 0;
    int column_ = 0;
    RowSpan listRows_{0, -1};
};

}  // namespace velmor
