#pragma once

#include "texts/language.h"

class QWidget;

namespace velmor {

// Gives every command button and list under `root` its one-line tool tip
// from the catalogue, by the control's name.
void giveHints(QWidget& root, Language language);

}  // namespace velmor
