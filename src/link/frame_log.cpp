#include "frame_log.h"

namespace velmor {

FrameLog::FrameLog(QObject* parent) : QObject(parent) {}

void FrameLog::append(const FrameRow& row)
{
    rows_.append(row);
    emit appended(row);
}

void FrameLog::clear()
{
    rows_.clear();
    emit cleared();
}

}  // namespace velmor
