#pragma once

#include <QByteArrayView>

namespace velmor {

// What makes a file's bytes not the stored image of a module record.
enum class RecordFault {
    None,
    Size,          // not kStoredBytes long
    ModelCode,     // above the last code the model list knows (9)
    ModelName,     // blank, or not printable single-byte text
    ChannelCount,  // not 4, 8 or 16
};

struct RecordCheck {
    RecordFault fault = RecordFault::None;
    int value = 0;  // the offending size, code or count
};

// Checks the bytes of a configuration file before they are sent to a module:
// any bytes load, but only a module's record may be written to one.
RecordCheck checkStoredRecord(QByteArrayView stored);

}  // namespace velmor
