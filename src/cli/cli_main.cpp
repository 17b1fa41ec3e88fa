#include "cli_main.h"

#include "cli_options.h"
#include "commands.h"
#include "console_dialogs.h"
#include "console_output.h"
#include "exit_codes.h"
#include "texts/arguments.h"
#include "texts/cli.h"
#include "texts/history.h"
#include "texts/locale_language.h"
#include "texts/qt_translations.h"

#include <optional>
#include <utility>

namespace velmor::cli {
namespace {

QString generalHelp(Language language)
{
    QString text = pick(texts::cli::kUsage, language);
    for (const Command& command : commands())
        text += QStringLiteral("  %1%2\n").arg(QString::fromLatin1(command.name).leftJustified(12), pick(*command.summary, language));
    return text;
}

const Command* findCommand(const QString& name)
{
    for (const Command& command : commands())
        if (name == QLatin1String(command.name))
            return &command;
    return nullptr;
}

constexpr QLatin1String kLang("--lang");
constexpr QLatin1String kLog("--log");
constexpr QLatin1String kHistory("--history");
// The options that go before the command, without their dashes.
const QStringList kGlobalOptions{QStringLiteral("json"), QStringLiteral("trace"), QStringLiteral("log"),
                                 QStringLiteral("lang"), QStringLiteral("history"), QStringLiteral("no-history")};

// The value of "NAME=V" or "NAME V" at arguments[i] (moving i past a separate
// value); nothing when arguments[i] is another option.
std::optional<QString> optionValue(const QStringList& arguments, qsizetype& i, QLatin1String name)
{
    const QString& arg = arguments[i];
    if (arg.startsWith(name + QLatin1Char('=')))
        return arg.section(QLatin1Char('='), 1);
    if (arg != name)
        return std::nullopt;
    return ++i < arguments.size() ? arguments[i] : QString();
}

// Moves i past the value of a global option that takes one.
void stepOverValue(const QStringList& arguments, qsizetype& i)
{
    for (QLatin1String name : {kLang, kLog, kHistory})
        if (optionValue(arguments, i, name))
            return;
}

// Where the command stands: past the global options and their values.
qsizetype commandPosition(const QStringList& arguments)
{
    qsizetype i = 1;
    for (; i < arguments.size() && arguments[i].startsWith(QLatin1Char('-')); ++i)
        stepOverValue(arguments, i);
    return i;
}

// The command's exit code, or 4 when standard output could not be written.
int outputChecked(int code, Language language)
{
    const QString failure = outputFailure();
    if (failure.isEmpty())
        return code;
    printError(pick(texts::cli::kCannotWriteOutput, language).arg(failure));
    return kExitFileFailed;
}

}  // namespace

bool needsFonts(const QStringList& arguments)
{
    const qsizetype i = commandPosition(arguments);
    if (i >= arguments.size())
        return false;
    // A "report" anywhere after "rack" is enough: a GUI application where
    // none was needed costs nothing, a missing one loses the PDF's fonts.
    return arguments[i] == QLatin1String("report")
        || (arguments[i] == QLatin1String("rack") && arguments.indexOf(QLatin1String("report"), i + 1) > i);
}

int runCli(const QStringList& arguments)
{
    GlobalOptions options;
    options.languageMode = systemLanguageMode();
    // --lang is settled first, so that every message, even one about an
    // option before it, comes in the language asked for.
    for (qsizetype i = 1; i < arguments.size() && arguments[i].startsWith(QLatin1Char('-')); ++i) {
        qsizetype at = i;
        if (const std::optional<QString> value = optionValue(arguments, at, kLang)) {
            if (const std::optional<int> mode = languageModeNamed(*value))
                options.languageMode = *mode;
        }
        stepOverValue(arguments, i);
    }
    const Language language = languageOf(options.languageMode);
    const QtTranslations qtWords(language);

    qsizetype i = 1;
    bool langGiven = false;
    bool noHistory = false;
    std::optional<QString> history;
    for (; i < arguments.size() && arguments[i].startsWith(QLatin1Char('-')); ++i) {
        const QString& arg = arguments[i];
        if (arg == QLatin1String("--json")) {
            options.json = true;
        } else if (arg == QLatin1String("--trace")) {
            options.trace = true;
        } else if (const std::optional<QString> value = optionValue(arguments, i, kLang)) {
            if (!languageModeNamed(*value)) {
                printError(pick(texts::arguments::kLangValues, language));
                return kExitUsage;
            }
            if (std::exchange(langGiven, true)) {
                printError(pick(texts::cli::kGivenTwice, language).arg(QStringLiteral("lang")));
                return kExitUsage;
            }
        } else if (const std::optional<QString> file = optionValue(arguments, i, kLog)) {
            if (file->isEmpty()) {
                printError(pick(texts::cli::kLogValue, language));
                return kExitUsage;
            }
            if (!options.logPath.isEmpty()) {
                printError(pick(texts::cli::kGivenTwice, language).arg(QStringLiteral("log")));
                return kExitUsage;
            }
            options.logPath = *file;
        } else if (const std::optional<QString> store = optionValue(arguments, i, kHistory)) {
            if (std::exchange(history, store)) {
                printError(pick(texts::cli::kGivenTwice, language).arg(QStringLiteral("history")));
                return kExitUsage;
            }
        } else if (arg == QLatin1String("--no-history")) {
            noHistory = true;
        } else if (arg == QLatin1String("--version")) {
            printOut(texts::arguments::versionLine().toUtf8());
            return outputChecked(kExitDone, language);
        } else if (arg == QLatin1String("--help") || arg == QLatin1String("-h")) {
            printOut(generalHelp(language).toUtf8());
            return outputChecked(kExitDone, language);
        } else {
            printError(pick(texts::arguments::kUnknownOption, language).arg(arg) + QLatin1Char('\n') + generalHelp(language));
            return kExitUsage;
        }
    }
    QString notAStore;
    const std::optional<HistoryTarget> target = chosenHistoryTarget(noHistory, history.value_or(QString()), QString(), &notAStore);
    if (!target || (history && history->isEmpty())) {
        printError(pick(texts::history::kNotAStore, language).arg(history && history->isEmpty() ? QStringLiteral("\"\"") : notAStore));
        return kExitUsage;
    }
    options.history = *target;
    const Command* command = i < arguments.size() ? findCommand(arguments[i]) : nullptr;
    if (!command) {
        printError((i < arguments.size() ? pick(texts::cli::kUnknownCommand, language).arg(arguments[i]) + QLatin1Char('\n')
                                         : QString())
                   + generalHelp(language));
        return kExitUsage;
    }

    QCommandLineParser parser;
    parser.setApplicationDescription(pick(*command->summary, language));
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")}, pick(texts::cli::kHelpOption, language));
    parser.addOption(help);
    command->declare(parser, language);
    const QStringList rest = QStringList{QStringLiteral("velmor-cli ") + QLatin1String(command->name)} + arguments.mid(i + 1);
    if (!parser.parse(rest)) {
        printError(parser.errorText());
        for (const QString& unknown : parser.unknownOptionNames()) {
            if (kGlobalOptions.contains(unknown)) {
                printError(pick(texts::cli::kGlobalAfterCommand, language).arg(QStringLiteral("--") + unknown));
                break;
            }
        }
        return kExitUsage;
    }
    if (const QString twice = optionGivenTwice(parser); !twice.isEmpty()) {
        printError(pick(texts::cli::kGivenTwice, language).arg(twice));
        return kExitUsage;
    }
    if (parser.isSet(help)) {
        // The parser names the program by its path; name the command instead.
        QString text = parser.helpText();
        text.replace(0, text.indexOf(QLatin1Char('\n')),
                     pick(texts::cli::kCommandUsage, language).arg(rest.first(), pick(*command->synopsis, language)));
        printOut(text.toUtf8());
        return outputChecked(kExitDone, language);
    }
    Session session(options);
    // Before anything goes out: a log that cannot be written stops the run.
    if (!options.logPath.isEmpty() && !session.logFramesTo(options.logPath))
        return kExitFileFailed;
    int code = command->run(session, parser);
    // The exchanges were done as asked; that their frames are not all in the
    // log is said by the exit code too.
    if (code == kExitDone && session.logFailed())
        code = kExitFileFailed;
    return outputChecked(code, language);
}

}  // namespace velmor::cli
