// velmor-cli report: the setup report of a configuration file's module, as
// the window's File > Export report writes it for the current module.

#include "commands.h"

#include "command_steps.h"
#include "config/config_file.h"
#include "report/setup_report.h"
#include "report_out.h"
#include "texts/cli.h"
#include "texts/report.h"

#include <QDateTime>

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
    const QString in = parser.positionalArguments().first();
    ReportOut out;
    if (const int code = takeReportOut(session, parser, in, texts::report::kOutIsIn, out))
        return code;
    // Only a module's record makes a report worth keeping: an empty or
    // foreign file would read as a module of zeros.
    if (const int code = loadCheckedRecord(session, in, false, texts::cli::kNotModuleRecordToReport))
        return code;

    SetupState& state = session.state();
    const ReportSubject subject{session.portName(session.record().portNumber), state.currentMask(),
                                QDateTime::currentDateTime(), reportSourceFile(in, language)};
    return writeReportOut(session, out, in, setupReportHtml(session.record(), subject, language));
}

}  // namespace velmor::cli
