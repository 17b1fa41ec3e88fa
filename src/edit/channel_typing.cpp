// A value typed straight into a cell of the channel grid through txtOperate.
#include "channel_rules.h"

#include "edit/grid_cells.h"
#include "model/auto_gain.h"
#include "model/limits.h"
#include "model/models.h"
#include "model/number_text.h"
#include "model/range_from_gain.h"

namespace velmor {

namespace {

// Typed zero adjusts land at the channel's adjust entry (per gain step on
// "TM-A4"). A gain code outside the table (a bad file) leaves the table alone.
void storeZeroAdjust(const ModuleRecord& module, ChannelRecord& channel, int value)
{
    channel.zeroAdjust = value;
    const int entry = adjustEntryOf(module.modelCode, channel.gain);
    if (entry >= 0 && entry < kTableEntries)
        channel.zeroAdjustTable[static_cast<size_t>(entry)] = value;
}

// Stores what the typed text allows; returns whether it did. Refused values stay
// shown in the cell while the record keeps its own.
bool storeTyped(ModuleRecord& module, int row, int column, const QString& text, Language language,
                QList<CellUpdate>& cells)
{
    const int channelIndex = row - 1;
    ChannelRecord& channel = module.channels[static_cast<size_t>(channelIndex)];
    switch (column) {
    case kBalanceColumn:
        if (const std::optional<int> value = wholeNumberWithin(text, balanceCap(module))) {
            channel.balanceValue = *value;
            return true;
        }
        return false;
    case kZeroAdjustColumn:
        if (const std::optional<int> value = wholeNumberWithin(text, kZeroAdjustHighest)) {
            storeZeroAdjust(module, channel, *value);
            return true;
        }
        return false;
    case kGainAdjustColumn:
        // Entry 0 for every model, unlike the zero adjust: as the grid always did.
        if (const std::optional<int> value = wholeNumberWithin(text, kGainAdjustHighest)) {
            channel.gainAdjust = *value;
            channel.gainAdjustTable[0] = *value;
            return true;
        }
        return false;
    case kCoefColumn:
    case kSensitivityColumn: {
        // Read as far as it is a number: "abc" counts as 0 here, unlike the range.
        const double value = leadingNumber(text);
        if (value < 0)
            return false;
        (column == kCoefColumn ? channel.gaugeCoef : channel.sensitivity) = static_cast<float>(value);
        cells << CellUpdate{row, kRangeColumn, applyRangeFromGain(module, channelIndex)};
        return true;
    }
    case kRangeColumn: {
        const std::optional<double> value = wholeTextNumber(text);
        if (!value || *value < 0)
            return false;
        channel.fullRange = static_cast<float>(*value);
        chooseGain(module, channelIndex);
        cells.prepend(CellUpdate{row, kGainColumn, channelCellText(module, channelIndex, kGainColumn, 0, language)});
        return true;
    }
    default:
        return false;
    }
}

}  // namespace

EditResult typeIntoCell(ModuleRecord& module, int row, int column, const QString& cellText, const QString& boxText,
                        Language language)
{
    if (column == kCutoffColumn)
        return {};
    // The box only opens over cells that a click would edit.
    const ChannelEditor editor = channelEditor(module, column, language);
    if (editor.refusal != Refusal::None || editor.kind == EditorKind::Toggle)
        return {};
    const RowSpan span = gridRows(module, {row, row});
    if (span.first > span.last || cellText.trimmed() == boxText.trimmed())
        return {};
    EditResult result;
    result.cells << CellUpdate{row, column, boxText};
    result.stored = storeTyped(module, row, column, boxText, language, result.cells);
    return result;
}

}  // namespace velmor
