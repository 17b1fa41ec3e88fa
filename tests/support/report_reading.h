#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

namespace velmor::testing {

// A table of a report: its rows of cell texts, the heading row first.
using ReportTable = QList<QStringList>;

// The tables of a report's HTML in document order, as QTextDocument (and so
// the PDF) lays them out; a line break within a cell reads as '\n'.
QList<ReportTable> tablesIn(const QString& html);

// The text of a report's HTML as QTextDocument reads it, a paragraph or a
// heading to a line.
QString plainTextIn(const QString& html);

// The page objects of a PDF: "/Type /Page", but not the tree's "/Type /Pages".
int pageObjectsIn(const QByteArray& pdf);

}  // namespace velmor::testing
