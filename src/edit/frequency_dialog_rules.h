#pragma once

#include "edit/cell_updates.h"
#include "model/cutoff_frequency.h"
#include "model/cutoff_groups.h"
#include "model/module_table.h"
#include "texts/language.h"

#include <QString>

#include <array>

// The frequency dialog frmFrequence as state and steps, without widgets. The
// arithmetic (bases, candidates, limits, captions) is model/cutoff_frequency.h;
// this adds what the dialog holds between the operator's steps.
namespace velmor {

struct FrequencyDialogState {
    QString text;                       // txtEdit
    CutoffChoice choice;                // candidates, and the code of option 0
    int selectedOption = 0;             // Option1(0) or Option1(1)
    std::array<QString, 2> captions;    // of Option1(0) and Option1(1)
};

// The dialog opening over a cut-off cell whose text is cellText (the channel
// grid hands it over already formatted). Candidates use the base at start:
// 150000 for model code 6 ("TM-C8") or filterType 4, else 50000; on "TM-C8" the
// exact lowest value there is 1.83111. The captions show the candidates without a
// limit check. Preselected: the option whose caption equals the frequency at five
// decimals, else option 1, the lower-frequency candidate.
FrequencyDialogState startFrequencyDialog(const ModuleRecord& module, const QString& cellText);

// The operator changed txtEdit's text. Above or below the module's limits both
// captions say "Overflow" / "Too low" and the candidates and code stay as they
// were; otherwise they are recomputed on the base of filterType alone. Never an
// error box. The window feeds only the operator's own edits here; text the dialog
// sets itself (option click, lost focus) is handled by those steps.
void frequencyTextChanged(FrequencyDialogState& state, const ModuleRecord& module, const QString& text,
                          Language language);

// A click on Option1(option): it becomes the selected option and its caption,
// read as a number and formatted "#####.00000", becomes the text. Candidates
// and code stay, so OK writes the code of the option clicked. A caption of
// "Overflow" or "Too low" reads as 0 and gives ".00000".
void frequencyOptionClicked(FrequencyDialogState& state, int option);

// txtEdit losing the focus: the text is reformatted "#####.00000" and the
// captions and candidates refreshed as on a change.
void frequencyFocusLost(FrequencyDialogState& state, const ModuleRecord& module, Language language);

// OK over the channel grid's selected rows (either order). On "TM-C16" (model
// code 2) the span widens to whole cut-off groups. Every shown row's cut-off
// cell (channel grid column 6) takes the dialog's text as it stands (also when
// the captions say "Overflow" / "Too low") and its channel's cutoff the chosen
// code: the code for option 0, code + 2 for option 1 on every base (deliberate,
// even where the code is n rather than 2n, and without the channel grid's cap at
// 65535). Cancel needs no step: nothing changes before OK.
EditResult acceptFrequencyDialog(const FrequencyDialogState& state, ModuleRecord& module, RowSpan rows);

// lblCaption, cmdOK and cmdCancel.
struct FrequencyDialogCaptions {
    QString label;
    QString ok;
    QString cancel;

    bool operator==(const FrequencyDialogCaptions&) const = default;
};

FrequencyDialogCaptions frequencyDialogCaptions(Language language);

}  // namespace velmor
