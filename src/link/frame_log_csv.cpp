#include "frame_log_csv.h"

#include "files/whole_file.h"
#include "protocol/frame_text.h"

#include <QDateTime>

#include <algorithm>
#include <cstdlib>

namespace velmor {
namespace {

constexpr char kRecordEnd[] = "\r\n";

QString directionToken(FrameDirection direction)
{
    return QLatin1String(direction == FrameDirection::Out ? "out" : "in");
}

QString outcomeToken(FrameOutcome outcome)
{
    switch (outcome) {
    case FrameOutcome::Sent: return QStringLiteral("sent");
    case FrameOutcome::Accepted: return QStringLiteral("accepted");
    case FrameOutcome::Refused: return QStringLiteral("refused");
    case FrameOutcome::TimedOut: return QStringLiteral("timed out");
    case FrameOutcome::SkippedLate: return QStringLiteral("skipped as late");
    }
    return {};
}

QByteArray headerLine() { return QByteArray(kCsvHeader) + kRecordEnd; }

}  // namespace

QString csvField(const QString& text)
{
    static const QString special = QStringLiteral(",\"\r\n");
    const bool quoted = std::any_of(text.begin(), text.end(), [](QChar c) { return special.contains(c); })
                        || text.startsWith(QLatin1Char(' ')) || text.endsWith(QLatin1Char(' '));
    if (!quoted)
        return text;
    QString escaped = text;
    escaped.replace(QLatin1Char('"'), QLatin1String("\"\""));
    return QLatin1Char('"') + escaped + QLatin1Char('"');
}

QString csvTime(qint64 msecsSinceEpoch)
{
    const QDateTime local = QDateTime::fromMSecsSinceEpoch(msecsSinceEpoch);
    // The offset always as +HH:MM, "+00:00" rather than "Z" in UTC, so that
    // every time has the same shape.
    const int offsetMinutes = local.offsetFromUtc() / 60;
    return local.toString(QStringLiteral("yyyy-MM-dd'T'HH:mm:ss.zzz")) + (offsetMinutes < 0 ? u'-' : u'+')
           + QStringLiteral("%1:%2").arg(std::abs(offsetMinutes) / 60, 2, 10, QLatin1Char('0'))
                 .arg(std::abs(offsetMinutes) % 60, 2, 10, QLatin1Char('0'));
}

QString csvRecord(const FrameRow& row)
{
    const QStringList fields{
        csvTime(row.msecsSinceEpoch),
        csvField(row.line),
        directionToken(row.direction),
        outcomeToken(row.outcome),
        row.outcome == FrameOutcome::Refused ? QString::number(row.status) : QString(),
        csvField(frameToText(row.frame)),
    };
    return fields.join(QLatin1Char(',')) + QLatin1String(kRecordEnd);
}

bool CsvLogFile::open(const QString& path, QString* error)
{
    file_.setFileName(path);
    // Unbuffered: a record that a full disk cuts short shows in write()'s count.
    if (!file_.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered)) {
        *error = file_.errorString();
        return false;
    }
    const QByteArray header = headerLine();
    if (file_.size() == 0 && (file_.write(header) != header.size() || !file_.flush())) {
        *error = file_.errorString();
        file_.close();
        return false;
    }
    return true;
}

bool CsvLogFile::append(const FrameRow& row, QString* error)
{
    const QByteArray record = csvRecord(row).toUtf8();
    const qint64 before = file_.size();
    if (file_.write(record) == record.size() && file_.flush())
        return true;
    *error = file_.errorString();
    // No half record is left for a reader to stumble over.
    file_.resize(before);
    return false;
}

bool writeCsv(const QString& path, const QList<FrameRow>& rows, QString* error)
{
    QByteArray bytes = headerLine();
    for (const FrameRow& row : rows)
        bytes += csvRecord(row).toUtf8();
    *error = writeWholeFile(path, bytes);
    return error->isEmpty();
}

}  // namespace velmor
