#pragma once

#include "frame_row.h"

#include <QFile>
#include <QList>
#include <QString>

namespace velmor {

// The frame log as CSV (RFC 4180): UTF-8, records ending in CR LF, a fixed
// header and one record per row:
//
//   time,line,direction,outcome,status,frame
//
//   time       local time in ISO 8601 with milliseconds and the offset from
//              UTC: 2024-05-01T14:03:07.123+08:00 (+00:00 in UTC, never Z)
//   line       the port's name as listed: SIM1, ttyUSB0, COM3
//   direction  out | in
//   outcome    sent | accepted | refused | timed out | skipped as late
//   status     the reply check's status (1 to 5) of a refused row, else empty
//   frame      as the window's frame labels show it: two capital hex digits
//              and two blanks a byte, a 55-byte frame broken by CR LF after
//              every 16 bytes
//
// The header and the tokens are English whatever the language, so that runs
// in either language append to one file that a program reads alike. A field
// is quoted, its quotes doubled, when it holds a comma, a quote, CR or LF, or
// starts or ends with a blank (as every frame does).
inline constexpr char kCsvHeader[] = "time,line,direction,outcome,status,frame";

QString csvField(const QString& text);
QString csvTime(qint64 msecsSinceEpoch);
// One record, its CR LF included.
QString csvRecord(const FrameRow& row);

// A log file that grows across runs: rows are appended as they come, each
// written through at once, and what the file held stays as it was.
class CsvLogFile {
public:
    // Opens `path` for appending, creating it, and writes the header when the
    // file is new or empty. False with the system's reason otherwise.
    bool open(const QString& path, QString* error);
    // False, with the system's reason, when the record was not written whole.
    bool append(const FrameRow& row, QString* error);

private:
    QFile file_;
};

// The rows as a new file with its header, replacing `path` whole or not at
// all. False with the system's reason.
bool writeCsv(const QString& path, const QList<FrameRow>& rows, QString* error);

}  // namespace velmor
