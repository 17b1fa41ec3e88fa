#pragma once

#include "model/module_table.h"
#include "texts/language.h"

#include <QString>

namespace velmor::cli {

// A module record laid out for a reader: the module information with its
// capability texts, one row per channel with the parameter texts the channel
// grid shows, then the adjust values and the coefficients.
QString recordText(const ModuleRecord& record, const QString& portName, Language language);

}  // namespace velmor::cli
