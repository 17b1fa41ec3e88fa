#include "operator_settings.h"

namespace velmor {
namespace {

const QString kLanguage = QStringLiteral("language");

}  // namespace

OperatorSettings::OperatorSettings() : QSettings(QStringLiteral("velmor"), QStringLiteral("velmor")) {}

std::optional<int> chosenLanguageMode()
{
    return languageModeNamed(OperatorSettings().value(kLanguage).toString());
}

void chooseLanguage(std::optional<Language> language)
{
    OperatorSettings settings;
    if (language)
        settings.setValue(kLanguage, languageName(*language));
    else
        settings.remove(kLanguage);
}

}  // namespace velmor
