#include "operator_settings.h"

#include <QFileInfo>

namespace velmor {
namespace {

const QString kLanguage = QStringLiteral("language");
const QString kRecent = QStringLiteral("recentFiles");

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

QStringList recentFiles() { return OperatorSettings().value(kRecent).toStringList(); }

void rememberFile(const QString& path)
{
    const QString absolute = QFileInfo(path).absoluteFilePath();
    QStringList files = recentFiles();
    files.removeAll(absolute);
    files.prepend(absolute);
    OperatorSettings().setValue(kRecent, files.mid(0, kRecentFiles));
}

void forgetFile(const QString& path)
{
    QStringList files = recentFiles();
    files.removeAll(path);
    OperatorSettings().setValue(kRecent, files);
}

QString historyStore() { return OperatorSettings().value(QStringLiteral("history/store")).toString(); }

}  // namespace velmor
