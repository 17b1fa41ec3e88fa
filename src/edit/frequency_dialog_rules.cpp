#include "frequency_dialog_rules.h"

#include "model/models.h"

#include "channel_rules.h"
#include "model/number_text.h"
#include "texts/editor.h"

#include <cmath>

namespace velmor {

namespace {

// At start "TM-C8" counts on base 150000 with its own exact lowest value (the
// one cutoffLimits gives it), and that one division takes the same 149999.9
// dividend as the base's usual lowest value.
constexpr double kBase150000 = 150000.0;
constexpr double kLowestDividend150000 = 149999.9;

QString captionText(double value)
{
    return formatNumber(value, kCutoffPicture);
}

void showCandidates(FrequencyDialogState& state)
{
    for (size_t i = 0; i < state.captions.size(); ++i)
        state.captions[i] = captionText(state.choice.candidates[i]);
}

void startChoice(CutoffChoice& choice, const ModuleRecord& module, double frequency)
{
    if (module.modelCode == kTmC8 && frequency == cutoffLimits(module).lowest) {
        const double divider = std::round(kBase150000 / frequency);
        const double candidate = leadingNumber(captionText(kLowestDividend150000 / divider));
        choice.candidates = {candidate, candidate};
        choice.code = static_cast<int>(divider);  // base 150000 writes n itself
        return;
    }
    updateCutoffChoice(choice, frequency, cutoffBaseAtStart(module));
}

// The change rule on whatever text stands in the box.
void refresh(FrequencyDialogState& state, const ModuleRecord& module, Language language)
{
    const double frequency = leadingNumber(state.text);
    const FrequencyFit fit = frequencyFit(frequency, cutoffLimits(module));
    if (fit == FrequencyFit::Within)
        updateCutoffChoice(state.choice, frequency, cutoffBaseOnEdit(module));
    for (int option = 0; option < 2; ++option)
        state.captions[static_cast<size_t>(option)] = optionCaption(state.choice, option, fit, language);
}

}  // namespace

FrequencyDialogState startFrequencyDialog(const ModuleRecord& module, const QString& cellText)
{
    FrequencyDialogState state;
    state.text = cellText;
    const double frequency = leadingNumber(cellText);
    startChoice(state.choice, module, frequency);
    showCandidates(state);
    // Option 0 is the candidate at or above f, option 1 the one below it. Option 0
    // only when it shows f itself; otherwise option 1, which is either f itself or
    // the lower-frequency neighbour.
    state.selectedOption = state.captions[0] == captionText(frequency) ? 0 : 1;
    return state;
}

void frequencyTextChanged(FrequencyDialogState& state, const ModuleRecord& module, const QString& text,
                          Language language)
{
    state.text = text;
    refresh(state, module, language);
}

void frequencyOptionClicked(FrequencyDialogState& state, int option)
{
    if (option < 0 || option >= static_cast<int>(state.captions.size()))
        return;
    state.selectedOption = option;
    state.text = captionText(leadingNumber(state.captions[static_cast<size_t>(option)]));
}

void frequencyFocusLost(FrequencyDialogState& state, const ModuleRecord& module, Language language)
{
    state.text = captionText(leadingNumber(state.text));
    refresh(state, module, language);
}

EditResult acceptFrequencyDialog(const FrequencyDialogState& state, ModuleRecord& module, RowSpan rows)
{
    return applyDialogCutoff(module, rows, state.text, chosenCutoffCode(state.choice, state.selectedOption));
}

FrequencyDialogCaptions frequencyDialogCaptions(Language language)
{
    return {pick(texts::editor::kFrequencyCaption, language), pick(texts::editor::kOkButton, language),
            pick(texts::editor::kCancelButton, language)};
}

}  // namespace velmor
