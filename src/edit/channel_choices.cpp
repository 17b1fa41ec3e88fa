// What a list choice and the automatic-balance toggle store, and which cells follow.
#include "channel_rules.h"

#include "model/models.h"

#include "edit/grid_cells.h"
#include "model/range_from_gain.h"
#include "model/reference.h"
#include "texts/grid.h"

namespace velmor {

namespace {


constexpr int kCurrentSource = 1;  // excitation code 1 under excitationType 1: the 4 mA source
constexpr qint16 kAcCoupling = 1;

CellUpdate recordCell(const ModuleRecord& module, int row, int column, Language language)
{
    return {row, column, channelCellText(module, row - 1, column, 0, language)};
}

// The 4 mA source only works AC coupled.
bool onCurrentSource(const ModuleRecord& module, const ChannelRecord& channel)
{
    return module.excitationType == 1 && channel.excitation == kCurrentSource;
}

size_t adjustEntry(const ModuleRecord& module, int gain)
{
    return static_cast<size_t>(adjustEntryOf(module.modelCode, gain));
}

void writeChoice(ModuleRecord& module, int column, int item, int row, Language language, QList<CellUpdate>& cells)
{
    ChannelRecord& channel = module.channels[static_cast<size_t>(row - 1)];
    const auto code = static_cast<qint16>(item);
    switch (column) {
    case kExcitationColumn:
        channel.excitation = code;
        cells << recordCell(module, row, column, language);
        if (onCurrentSource(module, channel)) {
            channel.coupling = kAcCoupling;
            cells << recordCell(module, row, kCouplingColumn, language);
        }
        break;
    case kCouplingColumn:
        // A DC choice on the 4 mA source is turned back to AC.
        channel.coupling = onCurrentSource(module, channel) ? kAcCoupling : code;
        cells << recordCell(module, row, column, language);
        break;
    case kGainColumn: {
        channel.gain = code;
        // A gain step comes with its own adjust values.
        const size_t entry = adjustEntry(module, item);
        channel.zeroAdjust = channel.zeroAdjustTable[entry];
        channel.gainAdjust = channel.gainAdjustTable[entry];
        for (int shown : {kGainColumn, kZeroAdjustColumn, kGainAdjustColumn})
            cells << recordCell(module, row, shown, language);
        break;
    }
    case kCutoffColumn:
        channel.cutoff = item;
        cells << recordCell(module, row, column, language);
        break;
    case kHoldColumn:
        channel.holdExponent = static_cast<quint16>(item);
        cells << recordCell(module, row, column, language);
        break;
    case kIntegralColumn:
        channel.integral = code;
        cells << recordCell(module, row, column, language);
        break;
    case kBridgeColumn:
        channel.bridgeType = item;
        cells << recordCell(module, row, column, language);
        break;
    case kTypeColumn:
        setStrain(channel, item == 0);
        // Coefficient and sensitivity swap places; range, unit and type follow.
        for (int shown = kCoefColumn; shown <= kTypeColumn; ++shown)
            cells << recordCell(module, row, shown, language);
        break;
    }
    // A new gain or excitation changes the range the channel can reach.
    if ((column == kExcitationColumn || column == kGainColumn) && hasReferenceColumns(module.modelCode))
        cells << CellUpdate{row, kRangeColumn, applyRangeFromGain(module, row - 1)};
}

}  // namespace

EditResult chooseListItem(ModuleRecord& module, int column, int item, RowSpan rows, Language language)
{
    const ChannelEditor editor = channelEditor(module, column, language);
    if (editor.kind != EditorKind::List || item < 0 || item >= editor.items.size())
        return {};
    // "TM-C16" shares each cut-off among a group of channels.
    const RowSpan span = gridRows(module, column == kCutoffColumn ? cutoffRows(module.modelCode, rows) : rows);
    EditResult result;
    for (int row = span.first; row <= span.last; ++row) {
        writeChoice(module, column, item, row, language, result.cells);
        result.stored = true;
    }
    return result;
}

EditResult toggleAutoBalance(qint32& balanceMask, int row, Language language)
{
    if (row < 1 || row > kWiredChannels)
        return {};
    const quint32 bit = 1u << (row - 1);
    const quint32 mask = static_cast<quint32>(balanceMask) ^ bit;
    balanceMask = static_cast<qint32>(mask);
    const Text& mark = (mask & bit) ? texts::grid::kAutoBalanceChosen : texts::grid::kAutoBalanceLeftOut;
    EditResult result;
    result.cells << CellUpdate{row, kAutoBalanceColumn, pick(mark, language)};
    return result;
}

}  // namespace velmor
