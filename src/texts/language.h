#pragma once

#include <QString>

#include <optional>

namespace velmor {

// languageMode 1 is Chinese; every other value is English.
enum class Language { Chinese, English };

Language languageOf(int languageMode);

// The languageMode that a command line or the settings name: "zh" 1 and "en"
// 2; nothing for any other name.
std::optional<int> languageModeNamed(QStringView name);
// The name of a chosen language, "zh" or "en".
QString languageName(Language language);

// A text the operator sees, in both languages. Source files are UTF-8.
struct Text {
    const char* zh;
    const char* en;
};

QString pick(const Text& text, Language language);

}  // namespace velmor
