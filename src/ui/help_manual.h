#pragma once

#include "link/operator_dialogs.h"
#include "model/language.h"

#include <QString>

namespace velmor {

// The operator's manual in the language, installed beside the program:
// manual/velmor-zh.html or manual/velmor-en.html in the program's folder.
QString manualPath(Language language, const QString& programFolder);

// Help > Content: the manual in the desktop's browser, or a message that
// names the missing file.
void MnuHelp_Content_Click(Language language, OperatorDialogs& dialogs);

}  // namespace velmor
