#pragma once

#include "module_table.h"


namespace velmor {

struct ModelInfo {
    const char16_t* name;
    int channels;
};

// The model codes, as a module's information states them: a code is the
// model's position in kModels.
enum ModelCode : int { kTmA4, kTmA8, kTmC16, kTmB8, kTmB16, kTmA8B, kTmC8, kTmA8D, kTmC16D };

// The nine models.
inline constexpr int kModelCount = 9;
inline constexpr ModelInfo kModels[kModelCount] = {
    {u"TM-A4", 4},  {u"TM-A8", 8},  {u"TM-C16", 16}, {u"TM-B8", 8},   {u"TM-B16", 16},
    {u"TM-A8B", 8}, {u"TM-C8", 8},  {u"TM-A8D", 8},  {u"TM-C16D", 16},
};

// Writes the model's name and channel count into the record. A code outside
// 0..8 leaves both as they were.
void recognizeModel(ModuleRecord& record, int modelCode);

// "TM-B8" carries eleven gain coefficients per channel and no zero
// coefficients; every other model four of each (entries 0..3).
inline constexpr int kCoefEntries = 4;
inline constexpr int kWideGainCoefEntries = 11;
constexpr bool hasWideCalibration(int modelCode) { return modelCode == kTmB8; }

// The entry of a channel's adjust tables that its adjust values live in:
// "TM-A4" keeps one per gain step, the other models entry 0.
constexpr int adjustEntryOf(int modelCode, int gain) { return modelCode == kTmA4 ? gain : 0; }

}  // namespace velmor
