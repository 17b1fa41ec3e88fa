// velmor: the main window.

#include "texts/arguments.h"
#include "history/history_target.h"
#include "texts/desktop.h"
#include "texts/history.h"
#include "texts/qt_translations.h"
#include "ui/frm_main.h"
#include "ui/operator_settings.h"
#include "ui/window_arguments.h"

#include <QApplication>

#include <cstdio>

namespace {

void print(std::FILE* stream, const QString& text)
{
    std::fputs(text.toLocal8Bit().constData(), stream);
    std::fflush(stream);
}

void nameTheProgram()
{
    QCoreApplication::setApplicationName(QStringLiteral("velmor"));
    QCoreApplication::setApplicationVersion(QStringLiteral(VELMOR_VERSION));
}

// --version and --help, which a shell without a display may ask as well.
bool asksForWordsOnly(int argc, char* argv[])
{
    for (int i = 1; i < argc && qstrcmp(argv[i], "--") != 0; ++i)
        if (qstrcmp(argv[i], "--version") == 0 || qstrcmp(argv[i], "--help") == 0 || qstrcmp(argv[i], "-h") == 0)
            return true;
    return false;
}

// The version wins over the help, and neither looks at the other arguments.
int answerWithoutWindow(int argc, char* argv[])
{
    using namespace velmor;
    QCoreApplication app(argc, argv);
    nameTheProgram();
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    const Language language = languageOf(startLanguageMode(arguments));
    const bool version = arguments.mid(0, arguments.indexOf(QStringLiteral("--"))).contains(QStringLiteral("--version"));
    print(stdout, version ? texts::arguments::versionLine() : pick(texts::desktop::kUsage, language));
    return 0;
}

}  // namespace

int main(int argc, char* argv[])
{
    using namespace velmor;
    if (asksForWordsOnly(argc, argv))
        return answerWithoutWindow(argc, argv);
    QApplication app(argc, argv);
    nameTheProgram();
    // The desktop entry's id: the window's app id under Wayland, its class under X11.
    QGuiApplication::setDesktopFileName(QStringLiteral("io.github.velmor.Velmor"));

    // Qt's own options (-platform, -style ...) are gone from the list by now.
    const QStringList arguments = QApplication::arguments().mid(1);
    // The language is settled once, before any window or message exists.
    const int languageMode = startLanguageMode(arguments);
    const Language language = languageOf(languageMode);
    WindowArguments given;
    if (const QString error = readWindowArguments(arguments, given, language); !error.isEmpty()) {
        print(stderr, error + QLatin1Char('\n') + pick(texts::desktop::kUsage, language));
        return 2;
    }

    QString notAStore;
    const std::optional<HistoryTarget> history =
        chosenHistoryTarget(given.noHistory, given.history.value_or(QString()), historyStore(), &notAStore);
    if (!history) {
        print(stderr, pick(texts::history::kNotAStore, language).arg(notAStore) + QLatin1Char('\n'));
        return 2;
    }

    const QtTranslations qtWords(language);
    frmMain window(languageMode);
    window.useHistory(*history);
    window.show();
    window.Form_Load();
    window.placeOnScreen();
    if (!given.file.isEmpty())
        window.openConfigFile(given.file);
    return app.exec();
}
