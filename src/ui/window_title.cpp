#include "window_title.h"

#include "model/fixed_text.h"
#include "texts/desktop.h"
#include "texts/window.h"

#include <QFileInfo>

namespace velmor {

QString moduleTitle(const ModuleRecord& module, Language language)
{
    return pick(texts::desktop::kTitleModule, language).arg(trimmedText(module.modelName)).arg(module.busAddress);
}

QString windowTitle(const ModuleRecord* module, const QString& file, Language language)
{
    QStringList parts;
    if (module)
        parts << moduleTitle(*module, language);
    if (!file.isEmpty())
        parts << QFileInfo(file).fileName();
    parts << pick(texts::window::kWindowTitle, language);
    return parts.join(pick(texts::desktop::kTitleSeparator, language));
}

}  // namespace velmor
