#include "frame_log.h"

#include "concurrent_search.h"
#include "exchange.h"

namespace velmor {

FrameLog::FrameLog(QObject* parent) : QObject(parent) {}

void FrameLog::follow(const Exchange& exchange)
{
    connect(&exchange, &Exchange::frameLogged, this, &FrameLog::append);
}

void FrameLog::follow(const ConcurrentSearch& search)
{
    connect(&search, &ConcurrentSearch::frameLogged, this, &FrameLog::append);
}

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
