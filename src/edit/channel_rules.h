#pragma once

#include "edit/cell_updates.h"
#include "model/cutoff_frequency.h"
#include "model/cutoff_groups.h"
#include "model/module_table.h"
#include "texts/language.h"

#include <QString>
#include <QStringList>

#include <array>
#include <optional>

// The editing rules of the channel grid MSHGridOperate: which editor a click
// gets, what an answer stores into which channels, and which cells change.
// Rows are the grid's (row r is channel index r - 1); columns are the grid's own
// (grid_cells.h). Every returned cell lists rows from the upper to the lower and,
// within a row, columns in ascending order. `stored` tells whether the rule
// wrote into the module record (even a value it already held); cells may change
// while nothing is stored.
namespace velmor {

enum class EditorKind { None, List, WholeNumberPrompt, NumberPrompt, Toggle, FrequencyDialog };

// Why a click opens nothing.
enum class Refusal {
    None,
    NoCapability,       // the column's capability code is 0
    ReferenceReadOnly,  // reference columns of "TM-B16": shown, not editable
    NoSuchColumn,       // outside 1..16, or a reference column on a model without them
    UnknownCapability,  // a capability code the column knows no items for (gain list 8, filter 5, ...)
    NoEditor,           // the unit column follows the type and has no editor of its own
};

struct ChannelEditor {
    EditorKind kind = EditorKind::None;
    Refusal refusal = Refusal::None;
    QString caption;                  // the list editor's caption, or the frequency label for column 6
    QStringList items;                // list items in code order (the item's position is the code written)
    QString promptTitle, promptText;  // for the prompts

    bool operator==(const ChannelEditor&) const = default;
};

// Which editor a click on `column` of the channel grid gets for the module, or why none.
ChannelEditor channelEditor(const ModuleRecord& module, int column, Language language);

// The one dispatch on an editor's kind, for every front end: `front` says
// what it does with a list, a number prompt, the toggle, the frequency dialog
// and with no editor at all (members list, prompt, toggle, frequencyDialog,
// none, each taking the editor and returning the same type).
template <typename Front>
auto withEditor(const ChannelEditor& editor, Front&& front)
{
    switch (editor.kind) {
    case EditorKind::List: return front.list(editor);
    case EditorKind::WholeNumberPrompt:
    case EditorKind::NumberPrompt: return front.prompt(editor);
    case EditorKind::Toggle: return front.toggle(editor);
    case EditorKind::FrequencyDialog: return front.frequencyDialog(editor);
    case EditorKind::None: break;
    }
    return front.none(editor);
}

// Opening the division list (column 7) on a channel whose holdExponent is above
// 7 lowers it to 7 first. Nothing for other columns or when the list does not open.
void openingList(ModuleRecord& module, int column, int row);

// A list choice (item position) written into every row of `rows` (either order).
// Cut-off steps on "TM-C16" are widened to whole cut-off groups. Nothing when the
// column opens no list or the item is not in it.
EditResult chooseListItem(ModuleRecord& module, int column, int item, RowSpan rows, Language language);

// A prompt answer for columns 2, 8, 9 (whole number, capped, stored unevenly)
// and 12, 13, 14 (number; 14 runs the automatic gain choice). Empty after
// trimming: nothing. An answer that is not a number, or is negative: nothing.
EditResult answerPrompt(ModuleRecord& module, int column, const QString& answer, RowSpan rows, Language language);

// Column 3: flips the row's bit of the module's automatic-balance mask; only that
// row changes. The mask is not part of the record, so nothing counts as stored.
EditResult toggleAutoBalance(qint32& balanceMask, int row, Language language);

// txtOperate losing the focus outside column 6: cellText is what the cell
// showed, boxText what was typed. Nothing for column 6 and for cells a click
// would not edit (refused columns, the toggle).
EditResult typeIntoCell(ModuleRecord& module, int row, int column, const QString& cellText, const QString& boxText,
                        Language language);

// The frequency entry of txtOperate (column 6): limits by filterType, the two
// Option1 captions ("Overflow" / "Too low" out of range) and whether the text is
// a number at all (when it is not, the window says "Input data error.").
struct FrequencyEntry {
    bool isNumber = false;
    FrequencyFit fit = FrequencyFit::Within;
    CutoffChoice choice;
    std::array<QString, 2> captions;
};
FrequencyEntry frequencyEntry(const ModuleRecord& module, const QString& text, Language language);

// Taking a frequency (Option1 element `option`, or the editor leaving column 6):
// the caption into the cut-off cell, the code (+2 for option 1 when below
// 65534) into `cutoff`; on "TM-C16" into every row of the row's cut-off group.
// Nothing when the entry holds no frequency within the limits.
EditResult takeCutoff(ModuleRecord& module, int row, const FrequencyEntry& entry, int option);

// The frequency dialog's OK: the dialog's text and code (the caller has already
// added 2 for option 1) into the selected rows, "TM-C16" widened to whole groups.
// Nothing on a module whose cut-off column opens no dialog.
EditResult applyDialogCutoff(ModuleRecord& module, RowSpan rows, const QString& text, int code);

// Helpers the rules share.

// The largest balance value: 255 on "TM-C8" and 4095 on the others above
// version 40; 1023 up to version 40.
int balanceCap(const ModuleRecord& module);

// The rows of `rows` that the module's grid has, upper first; empty (first >
// last) when none.
RowSpan gridRows(const ModuleRecord& module, RowSpan rows);

// A text that is a number as a whole (blanks around it allowed); "12abc",
// "inf" and "" are not.
std::optional<double> wholeTextNumber(const QString& text);

}  // namespace velmor
