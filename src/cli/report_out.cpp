#include "report_out.h"

#include "command_steps.h"
#include "console_dialogs.h"
#include "exit_codes.h"
#include "files/whole_file.h"
#include "shown_text.h"
#include "texts/cli.h"
#include "texts/message.h"
#include "texts/report.h"

#include <QJsonObject>

namespace velmor::cli {

int takeReportOut(const Session& session, const QCommandLineParser& parser, const QString& in, const Text& outIsIn,
                  ReportOut& out)
{
    const Language language = session.language();
    if (!parser.isSet(optionName(Opt::Out)))
        return usage(session, texts::cli::kOutRequired);
    out.path = parser.value(optionName(Opt::Out));
    const std::optional<ReportFormat> format = reportFormatFor(out.path);
    if (!format) {
        printError(pick(texts::report::kNeedsSuffix, language).arg(shownText(out.path)));
        return kExitUsage;
    }
    out.format = *format;
    // The report would replace the very file it reports on.
    if (isSameFile(in, out.path)) {
        printError(pick(outIsIn, language).arg(shownText(out.path), shownText(in)));
        return kExitUsage;
    }
    // Refused before the input is read, as read --save does.
    if (!isRegularFileOrAbsent(out.path)) {
        printError(pick(texts::report::kCannotWrite, language)
                       .arg(shownText(out.path), pick(texts::message::kNotRegularFile, language).arg(shownText(out.path))));
        return kExitFileFailed;
    }
    return kExitDone;
}

int writeReportOut(Session& session, const ReportOut& out, const QString& in, const QString& html)
{
    const Language language = session.language();
    const QString failure = writeReportFile(out.path, out.format, html, language);
    if (!failure.isEmpty()) {
        printError(pick(texts::report::kCannotWrite, language).arg(shownText(out.path), shownText(failure)));
        return kExitFileFailed;
    }
    // --json: what was written, as the other commands tell what they did.
    if (session.json())
        session.printJson(QJsonObject{{QStringLiteral("file"), in},
                                      {QStringLiteral("report"), out.path},
                                      {QStringLiteral("format"), out.format == ReportFormat::Pdf ? QStringLiteral("pdf")
                                                                                                 : QStringLiteral("html")}});
    return kExitDone;
}

}  // namespace velmor::cli
