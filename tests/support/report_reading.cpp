#include "report_reading.h"

#include <QRegularExpression>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFrame>
#include <QTextTable>

namespace velmor::testing {
namespace {

QString cellText(const QTextTableCell& cell)
{
    QTextCursor cursor = cell.firstCursorPosition();
    cursor.setPosition(cell.lastCursorPosition().position(), QTextCursor::KeepAnchor);
    QString text = cursor.selectedText();
    text.replace(QChar::LineSeparator, QLatin1Char('\n')).replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
    return text;
}

}  // namespace

QList<ReportTable> tablesIn(const QString& html)
{
    QTextDocument document;
    document.setHtml(html);
    QList<ReportTable> tables;
    for (QTextFrame::iterator it = document.rootFrame()->begin(); !it.atEnd(); ++it) {
        auto* table = qobject_cast<QTextTable*>(it.currentFrame());
        if (!table)
            continue;
        ReportTable rows;
        for (int r = 0; r < table->rows(); ++r) {
            QStringList row;
            for (int c = 0; c < table->columns(); ++c)
                row << cellText(table->cellAt(r, c));
            rows << row;
        }
        tables << rows;
    }
    return tables;
}

QString plainTextIn(const QString& html)
{
    QTextDocument document;
    document.setHtml(html);
    return document.toPlainText();
}

int pageObjectsIn(const QByteArray& pdf)
{
    static const QRegularExpression page(QStringLiteral("/Type\\s*/Page(?![A-Za-z])"));
    int count = 0;
    for (auto it = page.globalMatch(QString::fromLatin1(pdf)); it.hasNext(); it.next())
        ++count;
    return count;
}

}  // namespace velmor::testing
