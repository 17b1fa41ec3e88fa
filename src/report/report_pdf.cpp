#include "report_pdf.h"

#include "texts/report.h"

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFrame>

#include <algorithm>
#include <cmath>

namespace velmor {
namespace {

constexpr int kDpi = 300;
constexpr qreal kMarginMm = 10.0;
// What is painted reaches this far into the right margin: a table of the
// text's full width draws its outer border just beyond it.
constexpr qreal kBorderRoomMm = 1.0;
// Room below the text for the page number.
constexpr qreal kFootMm = 7.0;
constexpr int kFootPointSize = 7;
constexpr char kFootFamily[] = "DejaVu Sans";

// A table and the heading block just before it, which goes to a new page
// with it.
struct TableSpan {
    QTextFrame* table;
    QTextBlock heading;
};

QList<TableSpan> tablesOf(QTextDocument& document)
{
    QList<TableSpan> spans;
    QTextBlock before;
    for (QTextFrame::iterator it = document.rootFrame()->begin(); !it.atEnd(); ++it) {
        if (QTextFrame* frame = it.currentFrame())
            spans.append({frame, before});
        else
            before = it.currentBlock();
    }
    return spans;
}

int pageOf(qreal y, qreal pageHeight) { return static_cast<int>(std::floor(y / pageHeight)); }

// The pages of the first and the last line of what `box` holds.
std::pair<int, int> pagesOf(const QRectF& box, qreal pageHeight)
{
    // Half a pixel off the bottom: a table that ends exactly on a page's
    // last line does not reach the next page.
    return {pageOf(box.top(), pageHeight), pageOf(std::max(box.top(), box.bottom() - 0.5), pageHeight)};
}

std::pair<int, int> pagesOf(QTextDocument& document, QTextFrame* table)
{
    return pagesOf(document.documentLayout()->frameBoundingRect(table), document.pageSize().height());
}

// The page a heading's text ends on: one whose line went over to the next
// page is on that page.
int pageOfHeading(QTextDocument& document, const QTextBlock& heading)
{
    if (!heading.isValid())
        return -1;
    return pagesOf(document.documentLayout()->blockBoundingRect(heading), document.pageSize().height()).second;
}

// One pass: the first table that is not on one page with its heading (it
// straddles a page boundary, or its heading was left at the foot of the page
// before it when its first rows did not fit there), yet fits on a page with
// its heading, gets a page break before its heading. False when there is
// none left.
bool breakBeforeOneStraddlingTable(QTextDocument& document)
{
    QAbstractTextDocumentLayout* layout = document.documentLayout();
    const qreal pageHeight = document.pageSize().height();
    for (const TableSpan& span : tablesOf(document)) {
        if (!span.heading.isValid())
            continue;
        const auto [first, last] = pagesOf(document, span.table);
        if (first == last && pageOfHeading(document, span.heading) == first)
            continue;
        QTextBlockFormat format = span.heading.blockFormat();
        if (format.pageBreakPolicy() & QTextFormat::PageBreak_AlwaysBefore)
            continue;
        const QRectF table = layout->frameBoundingRect(span.table);
        const QRectF heading = layout->blockBoundingRect(span.heading);
        if (table.bottom() - heading.top() > pageHeight)
            continue;  // longer than a page: it breaks wherever it must
        format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
        QTextCursor(span.heading).setBlockFormat(format);
        return true;
    }
    return false;
}

}  // namespace

PdfReport renderReportPdf(const QString& html, Language language)
{
    PdfReport report;
    QBuffer buffer(&report.bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setCreator(QStringLiteral("Velmor"));
    writer.setResolution(kDpi);
    writer.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait,
                                     QMarginsF(kMarginMm, kMarginMm, kMarginMm, kMarginMm), QPageLayout::Millimeter));
    const QRect paper = writer.pageLayout().paintRectPixels(kDpi);
    const qreal foot = kFootMm / 25.4 * kDpi;
    const qreal painted = paper.width() + kBorderRoomMm / 25.4 * kDpi;

    QTextDocument document;
    // Fonts measured at the writer's resolution, so that what is laid out is
    // what is printed.
    document.documentLayout()->setPaintDevice(&writer);
    document.setDocumentMargin(0);
    // A narrow column wraps between words only: "Coupling" or "37.64115"
    // split in two would misread.
    QTextOption wrapping = document.defaultTextOption();
    wrapping.setWrapMode(QTextOption::WordWrap);
    document.setDefaultTextOption(wrapping);
    document.setHtml(html);
    writer.setTitle(document.metaInformation(QTextDocument::DocumentTitle));
    document.setPageSize(QSizeF(paper.width(), paper.height() - foot));
    // Each pass moves one table to its own page; the ones after it move too,
    // so they are looked at again.
    while (breakBeforeOneStraddlingTable(document)) {
    }

    report.pages = document.pageCount();
    report.paintedWidth = painted;
    for (const TableSpan& span : tablesOf(document)) {
        report.tablePages.append(pagesOf(document, span.table));
        report.headingPages.append(pageOfHeading(document, span.heading));
        report.widestTable = std::max(report.widestTable, document.documentLayout()->frameBoundingRect(span.table).width());
    }

    const qreal pageHeight = document.pageSize().height();
    QPainter painter(&writer);
    QFont footFont(QString::fromLatin1(kFootFamily));
    footFont.setPointSize(kFootPointSize);
    for (int page = 0; page < report.pages; ++page) {
        if (page > 0)
            writer.newPage();
        painter.save();
        painter.translate(0, -page * pageHeight);
        document.drawContents(&painter, QRectF(0, page * pageHeight, painted, pageHeight));
        painter.restore();
        painter.setFont(footFont);
        painter.drawText(QRectF(0, pageHeight, paper.width(), foot), Qt::AlignRight | Qt::AlignBottom,
                         pick(texts::report::kPage, language).arg(page + 1).arg(report.pages));
    }
    painter.end();
    return report;
}

}  // namespace velmor
