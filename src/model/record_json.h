#pragma once

#include "module_table.h"

#include <QJsonObject>
#include <QString>

namespace velmor {

// A module record as JSON, for people and scripts: the module fields, the
// 36 infoTail bytes and the 17 channel records. Texts lose their trailing
// blanks. spareBlock and trailingBlock carry no meaning and are left out.
QJsonObject recordToJson(const ModuleRecord& record);

// Fills the record from JSON written by recordToJson. A missing key keeps the
// record's value, and so does a text equal to the record's after trimming (its
// padding, blanks or NULs, stays); a value of the wrong type or out of the field's range, or an
// array longer than the record's, fails with a message naming the key (and the
// record may then be partly filled).
bool recordFromJson(const QJsonObject& json, ModuleRecord& record, QString* error);

}  // namespace velmor
