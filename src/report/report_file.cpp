#include "report_file.h"

#include "report_pdf.h"

#include "files/whole_file.h"

#include <QFileInfo>

namespace velmor {

std::optional<ReportFormat> reportFormatFor(const QString& path)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    if (suffix == QLatin1String("pdf"))
        return ReportFormat::Pdf;
    if (suffix == QLatin1String("html") || suffix == QLatin1String("htm"))
        return ReportFormat::Html;
    return std::nullopt;
}

QString writeReportFile(const QString& path, ReportFormat format, const QString& html, Language language)
{
    // Laid out before the file is opened: a failed open then costs nothing
    // more, and a failed layout leaves no half file.
    return writeWholeFile(path, format == ReportFormat::Pdf ? renderReportPdf(html, language).bytes : html.toUtf8());
}

}  // namespace velmor
