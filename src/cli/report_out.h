#pragma once

#include "report/report_file.h"
#include "session.h"

#include <QCommandLineParser>

namespace velmor::cli {

// Where a report goes (--out) and in which form, as its suffix chooses.
struct ReportOut {
    QString path;
    ReportFormat format = ReportFormat::Pdf;
};

// --out checked before the report's input `in` is read: given, ending in
// .pdf, .html or .htm, and not `in` itself by any path (`outIsIn` names both),
// else exit 2; a regular file or nothing yet, else exit 4.
int takeReportOut(const Session& session, const QCommandLineParser& parser, const QString& in, const Text& outIsIn,
                  ReportOut& out);

// The report written whole to `out` (else the system's reason, exit 4) and,
// with --json, what was written.
int writeReportOut(Session& session, const ReportOut& out, const QString& in, const QString& html);

}  // namespace velmor::cli
