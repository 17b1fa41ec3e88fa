#pragma once

#include "config/rack_file.h"
#include "texts/language.h"

#include <QDateTime>
#include <QString>

namespace velmor {

// The report of a whole rack as one self-contained HTML document: the rack's
// time, lines and number of modules under the title, then each module in the
// rack's order, headed by its model, module number, line and address, with
// exactly the sections of its own setup report. Each module after the first
// starts a page of its own in the PDF. `source` is reportSourceFile() of the
// rack file.
QString rackReportHtml(const Rack& rack, const QDateTime& madeAt, const QString& source, Language language);

}  // namespace velmor
