#pragma once

#include "edit/cell_updates.h"
#include "model/cutoff_groups.h"
#include "model/module_table.h"
#include "texts/language.h"

#include <QString>

// Editing rules of the adjust grid MSHGridNoOperate (zeroAdjustTable in columns
// 1-4, gainAdjustTable in columns 5-8, whole numbers) and of the coefficient
// grid MSHGridCalibration (gainCoef in hundredths, zeroCoef in tenths; model
// code 3 has gainCoef in columns 1-11 and no zeroCoef). Rows are the grid's:
// row 1 is channel index 0. A text that is not a number reads as 0, since the
// number reading takes the longest leading numeric part.
namespace velmor {

enum class TrimGrid { Adjust, Calibration };

// Adjust grid, on every change of txtEdit's text: the text read as a number and
// truncated toward zero must lie within 0..255 (column below 5) or 0..1023
// (column 5 and above). On false the window shows texts::message::kInputDataError under
// texts::message::kTitle and selects the box's whole text. The coefficient grid has no such
// check. The key filter lets only digits through, but a paste reaches the box,
// so this check is what catches pasted signs and letters.
bool adjustTextInRange(const QString& text, int column);

// txtEdit / txtCalibration losing the focus. cellText is the text the cell
// showed when the editor opened, boxText the box's text. Equal trimmed texts
// change nothing. Otherwise the cell takes the box's text as it stands and the
// value is stored:
// - adjust: rounded, halves to even, and stored only within 0..255 / 0..1023.
//   Out of range the cell keeps the typed text while the record keeps its old
//   value; deliberately not reverted (the change check has already warned).
// - calibration: x10 into zeroCoef for the zero columns, otherwise x100 into
//   gainCoef; rounded, halves to even, no range check (a value beyond a 32-bit
//   field saturates).
// A cell outside the grid (row beyond the shown channels, column beyond the
// grid's last) changes nothing. `stored` is set when a value went into the record.
EditResult typeIntoTrimCell(TrimGrid grid, ModuleRecord& module, int row, int column, const QString& cellText,
                            const QString& boxText);

// Setting one value into several rows after a mouse selection, narrowed by the
// window to its current (last selected) column. A selection of one row asks
// nothing; otherwise the window asks with trimPrompt() and hands the answer to
// answerTrimRows(). In both cases, and when the answer cancels, the window makes
// the selection's last row the current row.
bool trimRowsNeedPrompt(RowSpan rows);

struct TrimPrompt {
    QString title;
    QString text;

    bool operator==(const TrimPrompt&) const = default;
};

TrimPrompt trimPrompt(TrimGrid grid, Language language);

// The prompt's answer into every shown row of the span, upper to lower (the span
// may be given either way round). An empty (trimmed) answer cancels, and a single
// row does nothing. Adjust: rounded, halves to even; above the column's limit it
// becomes the limit and the cells show "255" / "1023"; otherwise the cells show
// the answer as typed. Negative answers are not checked here: deliberate.
// Calibration: scaled by 100 (gain) or 10 (zero) and rounded, as in typing; the
// cells show the answer as typed.
EditResult answerTrimRows(TrimGrid grid, ModuleRecord& module, RowSpan rows, int column, const QString& answer);

}  // namespace velmor
