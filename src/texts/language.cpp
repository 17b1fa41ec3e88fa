#include "language.h"

namespace velmor {

Language languageOf(int languageMode)
{
    return languageMode == 1 ? Language::Chinese : Language::English;
}

QString pick(const Text& text, Language language)
{
    return QString::fromUtf8(language == Language::Chinese ? text.zh : text.en);
}

}  // namespace velmor
