// velmor: the main window.

#include "texts/locale_language.h"
#include "texts/qt_translations.h"
#include "ui/frm_main.h"

#include <QApplication>

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("velmor"));
    // The language is settled once, before any window exists.
    const int languageMode = velmor::systemLanguageMode();
    const velmor::QtTranslations qtWords(velmor::languageOf(languageMode));
    velmor::frmMain window(languageMode);
    window.show();
    window.Form_Load();
    return app.exec();
}
