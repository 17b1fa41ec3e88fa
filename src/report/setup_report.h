#pragma once

#include "model/module_table.h"
#include "texts/language.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

namespace velmor {

// What the report says of a module besides its record: where it hangs and
// which of its channels the automatic balance takes, as the window holds them.
struct ReportSubject {
    QString line;              // the port's name as the port list shows it
    qint32 balanceMask = -1;   // bit n for channel n, as the channel grid's column 3 reads it
    QDateTime madeAt;
    QString source;            // reportSourceFile() or reportSourceLine()
};

// Where a report's record came from: a configuration file, or a module on a line.
QString reportSourceFile(const QString& path, Language language);
QString reportSourceLine(const QString& line, int address, Language language);

// The setup report of one module as one self-contained HTML document (its
// style sheet inline, nothing fetched): the module information with the
// capability texts, the channel grid, the adjust grid and the coefficient grid
// with exactly the cell texts the window shows, and the write frames
// (command 18) that the window rebuilds from the record. The PDF is this very
// text laid out by QTextDocument (report_pdf.h), so the two cannot differ.
QString setupReportHtml(const ModuleRecord& record, const ReportSubject& subject, Language language);

// The body of a module's report: the information, the channel, adjust and
// coefficient grids and the write frames, each a heading and a table. The
// setup report is this body alone; a rack report holds one per module.
QString moduleSectionsHtml(const ModuleRecord& record, const ReportSubject& subject, Language language);

// A whole report around `body`: the head with the inline style sheet, then
// `title` as the first heading and the `lines` below it.
QString reportDocumentHtml(const QString& title, const QStringList& lines, const QString& body, Language language);
// A time as the reports write it, to the second.
QString reportTimeText(const QDateTime& time);
// The lines under a report's title saying when it was made, by which version
// of the program, and from what.
QStringList reportMadeLines(const QDateTime& madeAt, const QString& source, Language language);

// The write frames of the report, in its order: the module information, then
// the channel groups, then the adjust blocks of the module's channels.
struct ReportFrame {
    QString caption;
    QByteArray frame;
};
QList<ReportFrame> reportFrames(const ModuleRecord& record, Language language);

}  // namespace velmor
