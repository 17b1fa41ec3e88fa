#include "csv_reader.h"

namespace velmor::testing {

QList<QStringList> readCsv(const QString& text)
{
    QList<QStringList> records;
    QStringList record;
    QString field;
    bool quoted = false;
    const auto next = [&](qsizetype i) { return i + 1 < text.size() ? text[i + 1] : QChar(); };
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (quoted && c == u'"' && next(i) == u'"') {
            field += c;
            ++i;
        } else if (c == u'"') {
            quoted = !quoted;
        } else if (!quoted && c == u',') {
            record << field;
            field.clear();
        } else if (!quoted && c == u'\r' && next(i) == u'\n') {
            records << (record << field);
            record.clear();
            field.clear();
            ++i;
        } else {
            field += c;
        }
    }
    if (!field.isEmpty() || !record.isEmpty())
        records << (record << field);
    return records;
}

}  // namespace velmor::testing
