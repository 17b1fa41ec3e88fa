#include "cli_main.h"

#include "commands.h"
#include "model/locale_language.h"

#include <QLocale>

#include <cstdio>

namespace velmor::cli {
namespace {

const char kUsage[] =
    "Usage: velmor-cli [--json] [--trace] [--lang zh|en] COMMAND [options]\n"
    "\n"
    "Sets up signal-conditioning modules on a serial line from the shell.\n"
    "\n"
    "Global options:\n"
    "  --json        Print one JSON document on standard output.\n"
    "  --trace       Print every frame sent (\"> \") and received (\"< \") on standard error.\n"
    "  --lang zh|en  Language of messages and texts (default: from the system locale).\n"
    "  -h, --help    Show this help; 'velmor-cli COMMAND --help' describes a command.\n"
    "\n"
    "Exit codes: 0 done, 1 an exchange failed, 2 usage error or refusal,\n"
    "3 the port would not open, 4 a file could not be read or written.\n"
    "\n"
    "Commands:\n";

QString generalHelp()
{
    QString text = QString::fromLatin1(kUsage);
    for (const Command& command : commands())
        text += QStringLiteral("  %1%2\n").arg(QString::fromLatin1(command.name).leftJustified(12), QString::fromLatin1(command.summary));
    return text;
}

int systemLanguageMode()
{
    return languageModeForLocaleId(localeIdForName(QLocale::system().name()));
}

const Command* findCommand(const QString& name)
{
    for (const Command& command : commands())
        if (name == QLatin1String(command.name))
            return &command;
    return nullptr;
}

}  // namespace

int runCli(const QStringList& arguments)
{
    GlobalOptions options;
    options.languageMode = systemLanguageMode();
    qsizetype i = 1;
    for (; i < arguments.size() && arguments[i].startsWith(QLatin1Char('-')); ++i) {
        const QString& arg = arguments[i];
        if (arg == QLatin1String("--json")) {
            options.json = true;
        } else if (arg == QLatin1String("--trace")) {
            options.trace = true;
        } else if (arg == QLatin1String("--lang") || arg.startsWith(QLatin1String("--lang="))) {
            const QString value = arg.contains(QLatin1Char('=')) ? arg.section(QLatin1Char('='), 1)
                                                                   : (++i < arguments.size() ? arguments[i] : QString());
            if (value != QLatin1String("zh") && value != QLatin1String("en")) {
                printError(QStringLiteral("--lang takes zh or en."));
                return kExitUsage;
            }
            options.languageMode = value == QLatin1String("zh") ? 1 : 2;
        } else if (arg == QLatin1String("--help") || arg == QLatin1String("-h")) {
            std::fputs(generalHelp().toUtf8().constData(), stdout);
            return kExitDone;
        } else {
            printError(QStringLiteral("Unknown option %1.\n").arg(arg) + generalHelp());
            return kExitUsage;
        }
    }
    const Command* command = i < arguments.size() ? findCommand(arguments[i]) : nullptr;
    if (!command) {
        printError((i < arguments.size() ? QStringLiteral("Unknown command %1.\n").arg(arguments[i]) : QString()) + generalHelp());
        return kExitUsage;
    }

    QCommandLineParser parser;
    parser.setApplicationDescription(QString::fromLatin1(command->summary));
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Show this help."));
    parser.addOption(help);
    command->declare(parser);
    const QStringList rest = QStringList{QStringLiteral("velmor-cli ") + QLatin1String(command->name)} + arguments.mid(i + 1);
    if (!parser.parse(rest)) {
        printError(parser.errorText());
        return kExitUsage;
    }
    if (parser.isSet(help)) {
        // The parser names the program by its path; name the command instead.
        QString text = parser.helpText();
        text.replace(0, text.indexOf(QLatin1Char('\n')),
                     QStringLiteral("Usage: %1 %2").arg(rest.first(), QString::fromLatin1(command->synopsis)));
        std::fputs(text.toUtf8().constData(), stdout);
        return kExitDone;
    }
    Session session(options);
    return command->run(session, parser);
}

}  // namespace velmor::cli
