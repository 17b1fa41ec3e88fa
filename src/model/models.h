#pragma once

#include "module_table.h"

#include <QString>

namespace velmor {

struct ModelInfo {
    const char16_t* name;
    int channels;
};

// The nine models; a model's code is its position here.
inline constexpr int kModelCount = 9;
inline constexpr ModelInfo kModels[kModelCount] = {
    {u"TM-A4", 4},  {u"TM-A8", 8},  {u"TM-C16", 16}, {u"TM-B8", 8},   {u"TM-B16", 16},
    {u"TM-A8B", 8}, {u"TM-C8", 8},  {u"TM-A8D", 8},  {u"TM-C16D", 16},
};

// Writes the model's name and channel count into the record. A code outside
// 0..8 leaves both as they were.
void recognizeModel(ModuleRecord& record, int modelCode);

}  // namespace velmor
