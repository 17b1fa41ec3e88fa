#pragma once

#include <QStringView>

namespace velmor {

// languageMode for a Windows locale id: 2052 gives 1 (Chinese), 1033 gives 2
// and 1028 gives 0 (both English), every other id 1 (Chinese). That Taiwan
// gets English and unlisted locales get Chinese is deliberate.
int languageModeForLocaleId(int localeId);

// The Windows locale id of a Qt or POSIX locale name ("zh_CN", "en_US.UTF-8",
// "de-DE"); 1033 for "C" and "POSIX", 0 for names not in the table.
int localeIdForName(QStringView localeName);

// languageMode of the system's locale, settled once at start.
int systemLanguageMode();

}  // namespace velmor
