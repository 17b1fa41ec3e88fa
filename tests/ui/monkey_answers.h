#pragma once

#include "window_rig.h"

#include <QRandomGenerator>

namespace velmor::testing {

// Files for File > Open to find in the window's folder: a configuration
// file of a module, and one of nonsense.
void prepareFolder(WindowRig& rig, QRandomGenerator& random);

// Random answers to whatever the next event makes the window ask: OK or
// Cancel to a question; a prompt's text (numbers good and bad, nonsense,
// Chinese, a network address that nothing serves, or Cancel); a file name,
// always inside the window's own temporary folder, or Cancel.
void scriptAnswers(WindowRig& rig, QRandomGenerator& random);

}  // namespace velmor::testing
