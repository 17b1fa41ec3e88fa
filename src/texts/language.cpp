#include "language.h"

namespace velmor {

Language languageOf(int languageMode)
{
    return languageMode == 1 ? Language::Chinese : Language::English;
}

std::optional<int> languageModeNamed(QStringView name)
{
    if (name == u"zh")
        return 1;
    if (name == u"en")
        return 2;
    return std::nullopt;
}

QString languageName(Language language)
{
    return language == Language::Chinese ? QStringLiteral("zh") : QStringLiteral("en");
}

QString pick(const Text& text, Language language)
{
    return QString::fromUtf8(language == Language::Chinese ? text.zh : text.en);
}

}  // namespace velmor
