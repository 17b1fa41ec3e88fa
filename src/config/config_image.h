#pragma once

#include "image_layout.h"

#include <QByteArray>

namespace velmor {

// The kImageBytes-long image of a module record, padding bytes 0.
QByteArray configImage(const ModuleRecord& record);

// The inverse of configImage. A shorter image overwrites only the fields it
// reaches (a field it cuts through takes its missing bytes from the record);
// bytes beyond kImageBytes are ignored. Any bytes are accepted.
void applyImage(const QByteArray& image, ModuleRecord& record);
// A module's setup from a stored image, laid over the start-up defaults.
ModuleRecord recordFromImage(const QByteArray& image);

}  // namespace velmor
