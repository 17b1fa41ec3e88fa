// A cut-off frequency typed into the grid's text box, taken from one of the two
// choices, or written by the frequency dialog.
#include "channel_rules.h"

#include "edit/grid_cells.h"

namespace velmor {

namespace {

// Option 1 adds 2 to the code, but never past the largest code the wire carries.
constexpr int kHighestCodeBeforeStep = 65534;
constexpr int kStepToLowerChoice = 2;

bool opensFrequencyDialog(const ModuleRecord& module)
{
    return channelEditor(module, kCutoffColumn, Language::English).kind == EditorKind::FrequencyDialog;
}

EditResult writeCutoff(ModuleRecord& module, RowSpan rows, const QString& text, int code)
{
    // "TM-C16" shares each cut-off among a group of channels.
    const RowSpan span = gridRows(module, cutoffRows(module.modelCode, rows));
    EditResult result;
    for (int row = span.first; row <= span.last; ++row) {
        module.channels[static_cast<size_t>(row - 1)].cutoff = code;
        result.cells << CellUpdate{row, kCutoffColumn, text};
        result.stored = true;
    }
    return result;
}

}  // namespace

FrequencyEntry frequencyEntry(const ModuleRecord& module, const QString& text, Language language)
{
    FrequencyEntry entry;
    const std::optional<double> frequency = wholeTextNumber(text);
    if (!frequency)
        return entry;
    entry.isNumber = true;
    // The grid's entry takes its limits from filterType alone; the "TM-C8"
    // lowest value belongs to the frequency dialog.
    ModuleRecord byFilterType;
    byFilterType.filterType = module.filterType;
    entry.fit = frequencyFit(*frequency, cutoffLimits(byFilterType));
    if (entry.fit == FrequencyFit::Within)
        updateCutoffChoice(entry.choice, *frequency, cutoffBaseOnEdit(module));
    for (int option = 0; option < 2; ++option)
        entry.captions[static_cast<size_t>(option)] = optionCaption(entry.choice, option, entry.fit, language);
    return entry;
}

EditResult takeCutoff(ModuleRecord& module, int row, const FrequencyEntry& entry, int option)
{
    // Out of range the choices name no frequency ("Overflow", "Too low").
    if (!entry.isNumber || entry.fit != FrequencyFit::Within || (option != 0 && option != 1))
        return {};
    if (!opensFrequencyDialog(module))
        return {};
    int code = entry.choice.code;
    if (option == 1 && code < kHighestCodeBeforeStep)
        code += kStepToLowerChoice;
    return writeCutoff(module, {row, row}, entry.captions[static_cast<size_t>(option)], code);
}

EditResult applyDialogCutoff(ModuleRecord& module, RowSpan rows, const QString& text, int code)
{
    if (!opensFrequencyDialog(module))
        return {};
    return writeCutoff(module, rows, text, code);
}

}  // namespace velmor
