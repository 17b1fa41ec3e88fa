#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace velmor::testing {

// The records of a CSV text as RFC 4180 has them: fields between commas,
// quoted fields with doubled quotes and line breaks inside, each record ended
// by CR LF. A bare LF outside quotes stays in its field, so a writer that
// ends records otherwise shows up as merged records.
QList<QStringList> readCsv(const QString& text);

}  // namespace velmor::testing
