#include "history_recorder.h"

#include "texts/history.h"

#include <utility>

namespace velmor {

QString recordNoticeText(const RecordNotice& notice, Language language)
{
    using namespace texts::history;
    switch (notice.kind) {
    case RecordNotice::Kind::None: break;
    case RecordNotice::Kind::OutageBegan: return pick(kOutage, language).arg(notice.why, notice.where);
    case RecordNotice::Kind::NotKept: return pick(kNotKept, language).arg(notice.why, notice.where);
    case RecordNotice::Kind::MovedAside: return pick(kMovedAside, language).arg(notice.where);
    }
    return QString();
}

HistoryRecorder::HistoryRecorder(const HistoryTarget& target, const QString& queuePath)
    : target_(target)
    , queue_(queuePath)
{
}

HistoryStore* HistoryRecorder::store(QString* error)
{
    if (isOff())
        return nullptr;
    if (!store_.isOpen() && !store_.open(target_, error, &movedAside_))
        return nullptr;
    return &store_;
}

bool HistoryRecorder::catchUp(HistoryStore& store, QString* error)
{
    const QList<HistoryEntry> waiting = queue_.entries();
    qsizetype written = 0;
    for (HistoryEntry entry : waiting) {
        if (!store.add(entry, error))
            break;
        ++written;
    }
    if (written > 0)
        if (const QString failure = queue_.drop(written); !failure.isEmpty() && error)
            *error = failure;
    return written == waiting.size();
}

RecordNotice HistoryRecorder::record(const HistoryEntry& entry)
{
    if (isOff())
        return {};
    QString error;
    if (HistoryStore* store = this->store(&error)) {
        HistoryEntry written = entry;
        if (catchUp(*store, &error) && store->add(written, &error)) {
            if (const QString aside = std::exchange(movedAside_, QString()); !aside.isEmpty())
                return {RecordNotice::Kind::MovedAside, QString(), aside};
            return {};
        }
        // A server that went away comes back through a new connection.
        store->close();
    }
    // An outage is told when its first entry waits, not with each one after.
    const bool alreadyWaiting = !queue_.isEmpty();
    if (!queue_.append(entry))
        return {RecordNotice::Kind::NotKept, error, queue_.path()};
    if (alreadyWaiting)
        return {};
    return {RecordNotice::Kind::OutageBegan, error, queue_.path()};
}

}  // namespace velmor
