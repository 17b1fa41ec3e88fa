#include "qt_translations.h"

#include <QCoreApplication>
#include <QLibraryInfo>

namespace velmor {

QtTranslations::QtTranslations(Language language)
{
    if (language != Language::Chinese)
        return;
    const QString folder = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
    if (base_.load(QStringLiteral("qtbase_zh_CN"), folder))
        QCoreApplication::installTranslator(&base_);
    if (serial_.load(QStringLiteral("qtserialport_zh_CN"), folder))
        QCoreApplication::installTranslator(&serial_);
}

}  // namespace velmor
