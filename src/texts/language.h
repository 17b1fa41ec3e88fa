#pragma once

#include <QString>

namespace velmor {

// languageMode 1 is Chinese; every other value is English.
enum class Language { Chinese, English };

Language languageOf(int languageMode);

// A text the operator sees, in both languages. Source files are UTF-8.
struct Text {
    const char* zh;
    const char* en;
};

QString pick(const Text& text, Language language);

}  // namespace velmor
