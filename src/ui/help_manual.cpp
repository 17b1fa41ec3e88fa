#include "help_manual.h"

#include "model/about_texts.h"
#include "model/messages.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>

namespace velmor {

QString manualPath(Language language, const QString& programFolder)
{
    const QString name = language == Language::Chinese ? QStringLiteral("velmor-zh.html") : QStringLiteral("velmor-en.html");
    return programFolder + QStringLiteral("/manual/") + name;
}

void MnuHelp_Content_Click(Language language, OperatorDialogs& dialogs)
{
    const QString path = manualPath(language, QCoreApplication::applicationDirPath());
    if (!QFileInfo::exists(path)) {
        dialogs.showMessage(pick(msg::kTitle, language), pick(about::kManualMissing, language) + path);
        return;
    }
    // The desktop's browser reports its own failures.
    QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

}  // namespace velmor
