#pragma once

#include "link/port_lines.h"
#include "model/module_table.h"
#include "texts/language.h"

#include <QString>

namespace velmor {

// The current module as the status bar names it: its tab's number, its
// model, its line and its address ("1 TM-C16 on SIM1 at 1").
QString moduleOnLine(const SetupState& state, const PortLines& lines, Language language);

// The current module's line by its name, or its number when it is not listed.
QString lineName(const SetupState& state, const PortLines& lines);

// What an operation did and what it took: "Read everything of 1 TM-C16 on
// SIM1 at 1: 17 frames, 2.31 s".
QString flowSummary(const QString& done, int framesSent, qint64 milliseconds, Language language);

}  // namespace velmor
