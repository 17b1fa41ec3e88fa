#include "rack_report.h"

#include "config/config_image.h"
#include "setup_report.h"
#include "texts/rack_report.h"

namespace velmor {
namespace {

// A rack file keeps no automatic-balance marks, so each module shows the
// marks of a module just read: every channel chosen.
constexpr qint32 kMarksOfAModuleJustRead = -1;

QString moduleHeading(const RackModule& module, bool first, Language language)
{
    // The first module follows the rack's few lines on the first page; every
    // other one starts on a page of its own.
    return QStringLiteral("<h1 class=\"%1\">").arg(first ? QStringLiteral("module") : QStringLiteral("module newpage"))
         + pick(texts::rack_report::kModuleHeading, language)
               .arg(module.model)
               .arg(module.moduleNumber)
               .arg(module.line)
               .arg(module.address)
               .toHtmlEscaped()
         + QStringLiteral("</h1>\n");
}

}  // namespace

QString rackReportHtml(const Rack& rack, const QDateTime& madeAt, const QString& source, Language language)
{
    QStringList lines{
        pick(texts::rack_report::kSavedAt, language).arg(reportTimeText(rack.time.toLocalTime())),
        pick(texts::rack_report::kLines, language).arg(rack.lines.join(pick(texts::rack_report::kLineSeparator, language))),
        pick(texts::rack_report::kModuleCount, language).arg(rack.modules.size()),
    };
    lines += reportMadeLines(madeAt, source, language);
    lines << pick(texts::rack_report::kBalanceMarks, language);
    QString body;
    for (const RackModule& module : rack.modules) {
        const ModuleRecord record = recordFromImage(module.image);
        const ReportSubject subject{module.line, kMarksOfAModuleJustRead, madeAt, source};
        body += moduleHeading(module, body.isEmpty(), language) + moduleSectionsHtml(record, subject, language);
    }
    return reportDocumentHtml(pick(texts::rack_report::kTitle, language), lines, body, language);
}

}  // namespace velmor
