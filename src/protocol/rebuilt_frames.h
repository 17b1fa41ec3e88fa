#pragma once

#include "block.h"
#include "model/module_table.h"

#include <QByteArray>

namespace velmor {

// A code of 64 or more is a reply code (the request's code plus 0x30): its
// rebuilt frame belongs under "returned", anything lower under "sent".
inline constexpr int kFirstReplyCode = 64;

// The write frame of `block` built again from what the record now holds,
// with `code` in the command byte, for display. The beckon's code 16 puts 255
// there instead: deliberate, kept.
QByteArray rebuiltFrame(const ModuleRecord& record, Block block, quint8 code);

}  // namespace velmor
