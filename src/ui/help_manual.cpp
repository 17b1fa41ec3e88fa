#include "help_manual.h"

#include "config/config_location.h"
#include "texts/about.h"
#include "texts/message.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>

namespace velmor {

QString manualPath(Language language, const QString& programFolder)
{
    const QString name = language == Language::Chinese ? QStringLiteral("velmor-zh.html") : QStringLiteral("velmor-en.html");
    // Installed, the pages lie in the documentation folder; in the build tree,
    // beside the program.
    const QString docFolder = installedDocFolder(programFolder);
    if (!docFolder.isEmpty())
        return docFolder + QLatin1Char('/') + name;
    return programFolder + QStringLiteral("/manual/") + name;
}

QString manualPath(Language language)
{
    return manualPath(language, QCoreApplication::applicationDirPath());
}

bool openManual(Language language)
{
    const QString path = manualPath(language);
    if (!QFileInfo::exists(path))
        return false;
    // The desktop's browser reports its own failures.
    QDesktopServices::openUrl(QUrl::fromLocalFile(path));
    return true;
}

void MnuHelp_Content_Click(Language language, OperatorDialogs& dialogs)
{
    if (!openManual(language))
        dialogs.showMessage(pick(texts::message::kTitle, language), pick(texts::about::kManualMissing, language) + manualPath(language));
}

}  // namespace velmor
