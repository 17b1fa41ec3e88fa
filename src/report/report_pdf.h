#pragma once

#include "texts/language.h"

#include <QByteArray>
#include <QList>
#include <QString>

namespace velmor {

// A report laid out on A4 pages and written as PDF.
struct PdfReport {
    QByteArray bytes;
    int pages = 0;
    // For each table of the report, in document order, the pages (0-based)
    // of its first and its last row.
    QList<std::pair<int, int>> tablePages;
    // For each table, the page its heading (the block just before it) ends
    // on; -1 for a table with nothing before it.
    QList<int> headingPages;
    // The width of the widest table, and the width painted on each page (the
    // text's width and a millimetre of the right margin, where the outer
    // border of a full-width table lies), in the same units. A table wider
    // than what is painted would be cut off.
    qreal widestTable = 0;
    qreal paintedWidth = 0;
};

// Lays the report's HTML out on portrait A4 pages and writes it with Qt's own
// PDF writer, the page number at the foot of each page. A table that would
// straddle two pages starts on a new page, heading and all, when it fits on
// one; so does a table whose heading would be left alone at a page's foot. Words are wrapped whole, never split. Needs a QGuiApplication (fonts).
PdfReport renderReportPdf(const QString& html, Language language);

}  // namespace velmor
