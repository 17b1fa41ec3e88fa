// velmor-cli report: the setup report of a configuration file's module, as
// the window's File > Export report writes it for the current module.

#include "commands.h"

#include "command_steps.h"
#include "config/config_file.h"
#include "files/whole_file.h"
#include "report/report_file.h"
#include "report/setup_report.h"
#include "shown_text.h"
#include "texts/cli.h"
#include "texts/message.h"
#include "texts/report.h"

#include <QDateTime>
#include <QJsonObject>

namespace velmor::cli {

void declareReport(QCommandLineParser& parser, Language language)
{
    parser.addPositionalArgument(pick(texts::cli::kFileValue, language), pick(texts::cli::kReportFileArgument, language));
    addOptions(parser, {Opt::Out}, language);
}

int runReport(Session& session, const QCommandLineParser& parser)
{
    const Language language = session.language();
    if (parser.positionalArguments().size() != 1)
        return usage(session, texts::cli::kReportTakesOneFile);
    if (!parser.isSet(optionName(Opt::Out)))
        return usage(session, texts::cli::kOutRequired);
    const QString out = parser.value(optionName(Opt::Out));
    const std::optional<ReportFormat> format = reportFormatFor(out);
    if (!format) {
        printError(pick(texts::report::kNeedsSuffix, language).arg(shownText(out)));
        return kExitUsage;
    }
    const QString in = parser.positionalArguments().first();
    // The report would replace the very file it reports on.
    if (isSameFile(in, out)) {
        printError(pick(texts::report::kOutIsIn, language).arg(shownText(out), shownText(in)));
        return kExitUsage;
    }
    // Refused before the configuration file is read, as read --save does.
    if (!isRegularFileOrAbsent(out)) {
        printError(pick(texts::report::kCannotWrite, language)
                       .arg(shownText(out), pick(texts::message::kNotRegularFile, language).arg(shownText(out))));
        return kExitFileFailed;
    }
    // Only a module's record makes a report worth keeping: an empty or
    // foreign file would read as a module of zeros.
    if (const int code = loadCheckedRecord(session, in, false, texts::cli::kNotModuleRecordToReport))
        return code;

    SetupState& state = session.state();
    const ReportSubject subject{session.portName(session.record().portNumber), state.currentMask(),
                                QDateTime::currentDateTime(), reportSourceFile(in, language)};
    const QString failure = writeReportFile(out, *format, setupReportHtml(session.record(), subject, language), language);
    if (!failure.isEmpty()) {
        printError(pick(texts::report::kCannotWrite, language).arg(shownText(out), shownText(failure)));
        return kExitFileFailed;
    }
    // --json: what was written, as the other commands tell what they did.
    if (session.json())
        session.printJson(QJsonObject{{QStringLiteral("file"), in},
                                      {QStringLiteral("report"), out},
                                      {QStringLiteral("format"), *format == ReportFormat::Pdf ? QStringLiteral("pdf")
                                                                                              : QStringLiteral("html")}});
    return kExitDone;
}

}  // namespace velmor::cli
