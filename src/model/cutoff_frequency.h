#pragma once

#include "module_table.h"
#include "texts/language.h"

#include <QString>

#include <array>

namespace velmor {

// A cut-off is set through an integer divider n, so only base / n is reachable.
enum class CutoffBase { Base50000, Base150000 };

// The base when the frequency dialog opens: "TM-C8" (model code 6) joins
// filterType 4 on 150000.
CutoffBase cutoffBaseAtStart(const ModuleRecord& module);

// The base while the frequency is typed: by filterType alone.
CutoffBase cutoffBaseOnEdit(const ModuleRecord& module);

// The two reachable frequencies around a typed one (index 0 at or above it,
// index 1 below it, each rounded to five decimals) and the divider code that
// goes with index 0.
struct CutoffChoice {
    std::array<double, 2> candidates{};
    int code = 0;
};

// Recomputes the choice for frequency f. A frequency of 0 (or less) keeps the
// candidates and sets the code to 0.
void updateCutoffChoice(CutoffChoice& choice, double frequency, CutoffBase base);

// The code written for the chosen option: option 1 adds 2 for every base.
int chosenCutoffCode(const CutoffChoice& choice, int option);

struct CutoffLimits {
    double lowest;
    double highest;
};

CutoffLimits cutoffLimits(const ModuleRecord& module);

enum class FrequencyFit { Within, Overflow, TooLow };

FrequencyFit frequencyFit(double frequency, CutoffLimits limits);

// The caption of option 0 or 1: "Overflow" / "Too low" out of the limits,
// otherwise the candidate formatted "#####.00000".
QString optionCaption(const CutoffChoice& choice, int option, FrequencyFit fit, Language language);

}  // namespace velmor
