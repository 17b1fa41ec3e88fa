#pragma once

#include "texts/language.h"

#include <QString>

#include <optional>

namespace velmor {

enum class ReportFormat { Pdf, Html };

// The format a file name asks for by its suffix (.pdf, .html or .htm, in any
// case); nothing for any other name.
std::optional<ReportFormat> reportFormatFor(const QString& path);

// Writes the report's HTML to `path`, as it stands or laid out as PDF,
// atomically: on failure an old file there stays whole. Empty on success,
// else the system's reason.
QString writeReportFile(const QString& path, ReportFormat format, const QString& html, Language language);

}  // namespace velmor
