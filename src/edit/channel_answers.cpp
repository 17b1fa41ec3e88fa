// What a prompt answer stores in the selected channels: columns 2, 8, 9 take a
// whole number, columns 12, 13, 14 a decimal one.
#include "channel_rules.h"

#include "model/limits.h"

#include "edit/grid_cells.h"
#include "model/auto_gain.h"
#include "model/number_text.h"

#include <algorithm>
#include <cmath>

namespace velmor {

namespace {

CellUpdate recordCell(const ModuleRecord& module, int row, int column, Language language)
{
    return {row, column, channelCellText(module, row - 1, column, 0, language)};
}

// The three whole-number prompts store unevenly; the table is required as it stands.
EditResult answerWhole(ModuleRecord& module, int column, double answer, RowSpan span)
{
    double value = std::nearbyint(answer);  // halves to even
    if (value < 0)
        return {};
    if (value == 0)
        value = 0;  // no "-0" in a cell
    if (column == kBalanceColumn)
        value = std::min<double>(value, balanceCap(module));
    else if (column == kZeroAdjustColumn)
        value = std::min<double>(value, kZeroAdjustHighest);
    const QString shown = formatNumber(value, kWholePicture);
    EditResult result;
    for (int row = span.first; row <= span.last; ++row) {
        ChannelRecord& channel = module.channels[static_cast<size_t>(row - 1)];
        if (column == kBalanceColumn) {
            channel.balanceValue = static_cast<qint32>(value);
            result.stored = true;
        } else if (column == kZeroAdjustColumn) {
            // The zero-adjust prompt fills the gain adjust and its first entry: deliberate, kept.
            channel.gainAdjust = static_cast<qint32>(value);
            channel.gainAdjustTable[0] = channel.gainAdjust;
            result.stored = true;
        }
        // The gain-adjust prompt stores nothing; its cells alone show the answer (deliberate).
        result.cells << CellUpdate{row, column, shown};
    }
    return result;
}

EditResult answerDecimal(ModuleRecord& module, int column, double answer, RowSpan span, Language language)
{
    if (answer < 0)
        return {};
    EditResult result;
    for (int row = span.first; row <= span.last; ++row) {
        ChannelRecord& channel = module.channels[static_cast<size_t>(row - 1)];
        const auto value = static_cast<float>(answer);
        result.stored = true;
        if (column == kCoefColumn) {
            channel.gaugeCoef = value;
            result.cells << recordCell(module, row, column, language);
        } else if (column == kSensitivityColumn) {
            channel.sensitivity = value;
            result.cells << recordCell(module, row, column, language);
        } else if (column == kRangeColumn) {
            channel.fullRange = value;
            chooseGain(module, row - 1);
            result.cells << recordCell(module, row, kGainColumn, language)
                         << recordCell(module, row, column, language);
        }
    }
    return result;
}

}  // namespace

EditResult answerPrompt(ModuleRecord& module, int column, const QString& answer, RowSpan rows, Language language)
{
    const EditorKind kind = channelEditor(module, column, language).kind;
    if (kind != EditorKind::WholeNumberPrompt && kind != EditorKind::NumberPrompt)
        return {};
    if (answer.trimmed().isEmpty())
        return {};
    const std::optional<double> number = wholeTextNumber(answer);
    if (!number)
        return {};
    const RowSpan span = gridRows(module, rows);
    if (kind == EditorKind::WholeNumberPrompt)
        return answerWhole(module, column, *number, span);
    return answerDecimal(module, column, *number, span, language);
}

}  // namespace velmor
