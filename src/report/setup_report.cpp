#include "setup_report.h"

#include "edit/grid_cells.h"
#include "model/capabilities.h"
#include "model/reference.h"
#include "protocol/frame.h"
#include "protocol/frame_text.h"
#include "protocol/rebuilt_frames.h"
#include "texts/grid.h"
#include "texts/report.h"
#include "texts/window.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <iterator>

namespace velmor {
namespace {

// One style sheet for the browser and for QTextDocument: only what both read
// (QTextDocument ignores page-break-inside; report_pdf.cpp keeps tables whole
// by itself). The fonts named first are the ones a Debian desktop has; the CJK
// ones follow for the Chinese report.
constexpr char kStyle[] = R"(
body { font-family: "DejaVu Sans", "WenQuanYi Micro Hei", "Noto Sans CJK SC", sans-serif; font-size: 8pt; }
h1 { font-size: 14pt; margin-top: 0; margin-bottom: 2pt; }
h2 { font-size: 10pt; margin-top: 9pt; margin-bottom: 3pt; page-break-after: avoid; }
p.made { margin-top: 0; margin-bottom: 2pt; }
table { border-collapse: collapse; page-break-inside: avoid; }
th, td { border: 1px solid #808080; padding: 1px 3px; }
th { background-color: #e6e6e6; font-weight: bold; text-align: left; }
td.grey { background-color: #d9d9d9; }
td.label { background-color: #f2f2f2; }
table.channels { font-family: "DejaVu Sans Condensed", "DejaVu Sans", "WenQuanYi Micro Hei", sans-serif; font-size: 7pt; }
table.channels th, table.channels td { padding: 1px 2px; }
td.frame { font-family: "DejaVu Sans Mono", "Liberation Mono", monospace; white-space: pre; }
.section { page-break-inside: avoid; }
h1.module { font-size: 12pt; margin-top: 12pt; }
.newpage { page-break-before: always; }
)";

// Label and value pairs side by side, two pairs to a row, so that the
// information takes half the height of a list.
constexpr int kPairsPerRow = 2;

QString escaped(const QString& text) { return text.toHtmlEscaped(); }

QString heading(const QString& text) { return QStringLiteral("<h2>") + escaped(text) + QStringLiteral("</h2>\n"); }

// The attributes are for QTextDocument, which reads them more faithfully
// than the CSS borders. `style` names a class of the style sheet.
QString tableStart(const QString& style = QString())
{
    return QStringLiteral("<table%1 width=\"100%\" border=\"1\" cellspacing=\"0\" cellpadding=\"2\">\n")
        .arg(style.isEmpty() ? QString() : QStringLiteral(" class=\"%1\"").arg(style));
}

QString headRow(const QStringList& headings)
{
    QString html = QStringLiteral("<thead><tr>");
    for (const QString& h : headings)
        html += QStringLiteral("<th>") + escaped(h) + QStringLiteral("</th>");
    return html + QStringLiteral("</tr></thead>\n");
}

QString gridTable(const GridCells& cells, const QString& style = QString())
{
    QString html = tableStart(style) + headRow(cells.headings) + QStringLiteral("<tbody>\n");
    for (const QStringList& row : cells.rows) {
        html += QStringLiteral("<tr>");
        for (qsizetype column = 0; column < row.size(); ++column) {
            const bool grey = cells.greyColumns.contains(static_cast<int>(column));
            html += (grey ? QStringLiteral("<td class=\"grey\" bgcolor=\"#d9d9d9\">") : QStringLiteral("<td>"))
                  + escaped(row[column]) + QStringLiteral("</td>");
        }
        html += QStringLiteral("</tr>\n");
    }
    return html + QStringLiteral("</tbody></table>\n");
}

QString section(const QString& title, const QString& table)
{
    return QStringLiteral("<div class=\"section\">\n") + heading(title) + table + QStringLiteral("</div>\n");
}

QString infoTable(const ModuleRecord& record, const ReportSubject& subject, Language language)
{
    const QList<InfoCell> pairs = moduleInfoCells(record, subject.line, language);
    QString html = tableStart() + QStringLiteral("<tbody>\n");
    for (qsizetype i = 0; i < pairs.size(); i += kPairsPerRow) {
        html += QStringLiteral("<tr>");
        for (qsizetype j = i; j < i + kPairsPerRow; ++j) {
            const bool filled = j < pairs.size();
            html += QStringLiteral("<td class=\"label\" bgcolor=\"#f2f2f2\">") + (filled ? escaped(pairs[j].label) : QString())
                  + QStringLiteral("</td><td>") + (filled ? escaped(pairs[j].value) : QString()) + QStringLiteral("</td>");
        }
        html += QStringLiteral("</tr>\n");
    }
    return html + QStringLiteral("</tbody></table>\n");
}

QString frameTable(const ModuleRecord& record, Language language)
{
    QString html = tableStart()
                 + headRow({pick(texts::report::kFrameOf, language), pick(texts::report::kFrameBytes, language)})
                 + QStringLiteral("<tbody>\n");
    for (const ReportFrame& frame : reportFrames(record, language)) {
        // The text exactly as the window's frame label holds it, a line of
        // sixteen bytes at a time.
        QStringList lines = frameToText(frame.frame).split(QStringLiteral("\r\n"));
        for (QString& line : lines)
            line = escaped(line.trimmed());
        html += QStringLiteral("<tr><td>") + escaped(frame.caption) + QStringLiteral("</td><td class=\"frame\">")
              + lines.join(QStringLiteral("<br/>")) + QStringLiteral("</td></tr>\n");
    }
    return html + QStringLiteral("</tbody></table>\n");
}

// The channel groups of four that the module's channels fill (at least one,
// as the read and write sequences count them).
int channelGroups(const ModuleRecord& record)
{
    const int channels = std::clamp<int>(record.channelCount, 0, kWiredChannels);
    return std::max(1, (channels + kChannelsPerGroup - 1) / kChannelsPerGroup);
}

QString groupCaption(const Text& text, int group, Language language)
{
    return pick(text, language).arg(group * kChannelsPerGroup + 1).arg((group + 1) * kChannelsPerGroup);
}

}  // namespace

QList<ReportFrame> reportFrames(const ModuleRecord& record, Language language)
{
    QList<ReportFrame> frames{{pick(texts::report::kInfoFrame, language), rebuiltFrame(record, {Block::Kind::Information}, kCmdWrite)}};
    for (int g = 0; g < channelGroups(record); ++g)
        frames.append({groupCaption(texts::report::kChannelFrame, g, language),
                       rebuiltFrame(record, {Block::Kind::ChannelGroup, g}, kCmdWrite)});
    for (int g = 0; g < channelGroups(record); ++g)
        frames.append({groupCaption(texts::report::kAdjustFrame, g, language),
                       rebuiltFrame(record, {Block::Kind::AdjustBlock, g}, kCmdWrite)});
    return frames;
}

QString reportSourceFile(const QString& path, Language language)
{
    return pick(texts::report::kSourceFile, language).arg(QDir::toNativeSeparators(QFileInfo(path).absoluteFilePath()));
}

QString reportSourceLine(const QString& line, int address, Language language)
{
    return pick(texts::report::kSourceLine, language).arg(line).arg(address);
}

QString reportTimeText(const QDateTime& time) { return time.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")); }

QStringList reportMadeLines(const QDateTime& madeAt, const QString& source, Language language)
{
    return {pick(texts::report::kMadeAt, language).arg(reportTimeText(madeAt)),
            pick(texts::report::kMadeBy, language).arg(QStringLiteral(VELMOR_VERSION), source)};
}

QString reportDocumentHtml(const QString& title, const QStringList& lines, const QString& body, Language language)
{
    QString html = QStringLiteral("<!DOCTYPE html>\n<html lang=\"%1\">\n<head>\n<meta charset=\"utf-8\"/>\n<title>")
                       .arg(language == Language::Chinese ? QStringLiteral("zh-CN") : QStringLiteral("en"))
                 + escaped(title) + QStringLiteral("</title>\n<style>") + QString::fromLatin1(kStyle)
                 + QStringLiteral("</style>\n</head>\n<body>\n");
    html += QStringLiteral("<h1>") + escaped(title) + QStringLiteral("</h1>\n");
    QStringList escapedLines;
    for (const QString& line : lines)
        escapedLines << escaped(line);
    html += QStringLiteral("<p class=\"made\">") + escapedLines.join(QStringLiteral("<br/>")) + QStringLiteral("</p>\n");
    return html + body + QStringLiteral("</body>\n</html>\n");
}

QString moduleSectionsHtml(const ModuleRecord& record, const ReportSubject& subject, Language language)
{
    QString html = section(pick(texts::window::kFrame3, language), infoTable(record, subject, language));
    html += section(channelFrameTitle(record.modelCode, language),
                    // Up to seventeen columns: a smaller, narrower type.
                    gridTable(channelGridCells(record, language, subject.balanceMask), QStringLiteral("channels")));
    html += section(pick(texts::window::kFrame2, language), gridTable(adjustGridCells(record, language)));
    html += section(pick(texts::report::kCoefficients, language), gridTable(calibrationGridCells(record, language)));
    return html + section(pick(texts::report::kFrames, language), frameTable(record, language));
}

QString setupReportHtml(const ModuleRecord& record, const ReportSubject& subject, Language language)
{
    const QString model = trimmedText(record.modelName);
    const QString title = pick(texts::report::kTitle, language) + (model.isEmpty() ? QString() : QStringLiteral(" \u2014 ") + model);
    return reportDocumentHtml(title, reportMadeLines(subject.madeAt, subject.source, language),
                              moduleSectionsHtml(record, subject, language), language);
}

}  // namespace velmor
