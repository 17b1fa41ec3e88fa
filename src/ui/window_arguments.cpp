#include "window_arguments.h"

#include "history/history_target.h"
#include "operator_settings.h"
#include "texts/arguments.h"
#include "texts/desktop.h"
#include "texts/history.h"
#include "texts/locale_language.h"

namespace velmor {
namespace {

const QString kLang = QStringLiteral("--lang");
const QString kHistory = QStringLiteral("--history");

// The value of "NAME=V" or "NAME V" at arguments[i] (moving i past a
// separate value); nothing when arguments[i] is something else.
std::optional<QString> optionValue(const QStringList& arguments, qsizetype& i, const QString& name)
{
    const QString& arg = arguments[i];
    if (arg.startsWith(name + QLatin1Char('=')))
        return arg.mid(name.size() + 1);
    if (arg != name)
        return std::nullopt;
    return ++i < arguments.size() ? arguments[i] : QString();
}

std::optional<QString> langValue(const QStringList& arguments, qsizetype& i) { return optionValue(arguments, i, kLang); }

}  // namespace

int startLanguageMode(const QStringList& arguments)
{
    for (qsizetype i = 0; i < arguments.size(); ++i)
        if (const std::optional<QString> value = langValue(arguments, i))
            if (const std::optional<int> mode = languageModeNamed(*value))
                return *mode;
    return chosenLanguageMode().value_or(systemLanguageMode());
}

QString readWindowArguments(const QStringList& arguments, WindowArguments& into, Language language)
{
    bool optionsEnd = false;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString& arg = arguments[i];
        const bool option = !optionsEnd && arg.startsWith(QLatin1Char('-')) && arg != QLatin1String("-");
        if (option && arg == QLatin1String("--")) {
            optionsEnd = true;
        } else if (!option) {
            if (!into.file.isEmpty())
                return pick(texts::desktop::kOneFileOnly, language).arg(arg);
            into.file = arg;
        } else if (const std::optional<QString> value = langValue(arguments, i)) {
            into.languageMode = languageModeNamed(*value);
            if (!into.languageMode)
                return pick(texts::arguments::kLangValues, language);
        } else if (const std::optional<QString> store = optionValue(arguments, i, kHistory)) {
            if (store->isEmpty() || !historyTargetNamed(*store))
                return pick(texts::history::kNotAStore, language).arg(*store);
            into.history = store;
        } else if (arg == QLatin1String("--no-history")) {
            into.noHistory = true;
        } else {
            return pick(texts::arguments::kUnknownOption, language).arg(arg);
        }
    }
    return {};
}

}  // namespace velmor
