#pragma once

#include "link/operator_dialogs.h"
#include "texts/language.h"

#include <QString>

namespace velmor {

// The operator's manual in the language, velmor-zh.html (Chinese) or
// velmor-en.html: in the documentation folder of an installed program
// (../share/doc/velmor from programFolder, see installedDocFolder), else
// beside the program in manual/, where the build puts it.
QString manualPath(Language language, const QString& programFolder);
// The same in this program's own folder.
QString manualPath(Language language);

// Opens the manual in the desktop's browser. False, with nothing shown, when
// the file is not there; what to tell the operator is the caller's choice.
bool openManual(Language language);

// Help > Content: the manual, or a message that names the missing file.
void MnuHelp_Content_Click(Language language, OperatorDialogs& dialogs);

}  // namespace velmor
