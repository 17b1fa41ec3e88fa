#include "cutoff_frequency.h"

#include "models.h"

#include "number_text.h"
#include "texts/frequency.h"

#include <cmath>
#include <limits>

namespace velmor {

namespace {

struct BaseRow {
    double base;
    double lowestValue;       // typed exactly, it takes the largest divider
    double lowestDividend;    // used in that one division
    int codePerDivider;
};

constexpr BaseRow kBases[] = {
    {50000.0, 1.52593, 50000.0, 2},
    // 149999.9 instead of 150000 at the lowest value is deliberate; keep it.
    {150000.0, 2.28889, 149999.9, 1},
};

struct LimitRow {
    int filterType;
    CutoffLimits limits;
};

constexpr LimitRow kLimits[] = {
    {3, {1.52593, 50000.0}},
    {4, {2.28889, 30000.0}},
};
constexpr CutoffLimits kOtherLimits{1.52593, 10000.0};
constexpr double kTmC8Lowest = 1.83111;

// Candidates go through their five-decimal text, as the captions show them.
double roundedToCaption(double value)
{
    return leadingNumber(formatNumber(value, kCutoffPicture));
}

// Far below every accepted frequency the divider outgrows an int; saturate.
int dividerCode(double divider, int codePerDivider)
{
    const double code = divider * codePerDivider;
    return code < double(std::numeric_limits<int>::max()) ? static_cast<int>(code)
                                                          : std::numeric_limits<int>::max();
}

}  // namespace

CutoffBase cutoffBaseAtStart(const ModuleRecord& module)
{
    return module.modelCode == kTmC8 ? CutoffBase::Base150000 : cutoffBaseOnEdit(module);
}

CutoffBase cutoffBaseOnEdit(const ModuleRecord& module)
{
    return module.filterType == 4 ? CutoffBase::Base150000 : CutoffBase::Base50000;
}

void updateCutoffChoice(CutoffChoice& choice, double frequency, CutoffBase base)
{
    if (!(frequency > 0.0)) {
        choice.code = 0;
        return;
    }
    const BaseRow& row = kBases[static_cast<size_t>(base)];
    if (frequency == row.lowestValue) {
        const double divider = std::round(row.base / frequency);
        const double candidate = roundedToCaption(row.lowestDividend / divider);
        choice.candidates = {candidate, candidate};
        choice.code = dividerCode(divider, row.codePerDivider);
        return;
    }
    const double divider = std::floor(row.base / frequency);
    choice.candidates = {roundedToCaption(row.base / divider), roundedToCaption(row.base / (divider + 1.0))};
    choice.code = dividerCode(divider, row.codePerDivider);
}

int chosenCutoffCode(const CutoffChoice& choice, int option)
{
    return option == 0 ? choice.code : choice.code + 2;
}

CutoffLimits cutoffLimits(const ModuleRecord& module)
{
    CutoffLimits limits = kOtherLimits;
    for (const LimitRow& row : kLimits) {
        if (row.filterType == module.filterType)
            limits = row.limits;
    }
    if (module.modelCode == kTmC8)
        limits.lowest = kTmC8Lowest;
    return limits;
}

FrequencyFit frequencyFit(double frequency, CutoffLimits limits)
{
    if (frequency > limits.highest)
        return FrequencyFit::Overflow;
    if (frequency < limits.lowest)
        return FrequencyFit::TooLow;
    return FrequencyFit::Within;
}

QString optionCaption(const CutoffChoice& choice, int option, FrequencyFit fit, Language language)
{
    switch (fit) {
    case FrequencyFit::Overflow:
        return pick(texts::frequency::kOverflow, language);
    case FrequencyFit::TooLow:
        return pick(texts::frequency::kTooLow, language);
    case FrequencyFit::Within:
        break;
    }
    return formatNumber(choice.candidates.at(static_cast<size_t>(option)), kCutoffPicture);
}

}  // namespace velmor
