// velmor-cli rack report: the setup report of every module of a rack file in
// one PDF or HTML file. Nothing is sent to any line.

#include "commands.h"

#include "config/rack_file.h"
#include "exit_codes.h"
#include "report/rack_report.h"
#include "report/setup_report.h"
#include "report_out.h"
#include "texts/rack_report.h"

#include <QDateTime>
#include <QFileInfo>

namespace velmor::cli {

int reportRack(Session& session, const QCommandLineParser& parser, const QString& path)
{
    const Language language = session.language();
    ReportOut out;
    if (const int code = takeReportOut(session, parser, path, texts::rack_report::kOutIsIn, out))
        return code;
    QString error;
    const std::optional<Rack> rack = readRackFile(path, language, &error);
    if (!rack) {
        // A damaged rack file is refused whole before anything is written; one
        // that is not there or cannot be read is a file that failed.
        printError(error);
        const QFileInfo file(path);
        return file.isFile() && file.isReadable() ? kExitUsage : kExitFileFailed;
    }
    return writeReportOut(session, out, path,
                          rackReportHtml(*rack, QDateTime::currentDateTime(), reportSourceFile(path, language), language));
}

}  // namespace velmor::cli
