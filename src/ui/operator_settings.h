#pragma once

#include "texts/language.h"

#include <QSettings>

#include <optional>

namespace velmor {

// The settings the window keeps for the operator between runs, in the user's
// settings: the network lines added, the language chosen, the window's size
// and place, the recent files.
class OperatorSettings : public QSettings {
public:
    OperatorSettings();
};

// The languageMode chosen under View > Language; nothing when the window
// follows the system's locale.
std::optional<int> chosenLanguageMode();
void chooseLanguage(std::optional<Language> language);

// The configuration files last opened or saved, the latest first, at most
// kRecentFiles.
inline constexpr int kRecentFiles = 8;
QStringList recentFiles();
void rememberFile(const QString& path);
void forgetFile(const QString& path);

// The history store the settings name ("history/store": off, a file or a
// postgresql:// URL); empty when they name none.
QString historyStore();

}  // namespace velmor
