#include "history_keeper.h"

namespace velmor {

// Lives in the keeper's thread: the recorder and its database connection are
// made and used there only.
class HistoryKeeper::Writer : public QObject {
public:
    Writer(const HistoryTarget& target, Language language) : target_(target), language_(language) {}

    void write(const HistoryEntry& entry, HistoryKeeper* keeper)
    {
        if (!recorder_)
            recorder_ = std::make_unique<HistoryRecorder>(target_, HistoryQueue::defaultPath());
        if (const QString text = recordNoticeText(recorder_->record(entry), language_); !text.isEmpty())
            emit keeper->told(text);
    }

    // The connection goes with the thread that made it.
    void close() { recorder_.reset(); }

private:
    HistoryTarget target_;
    Language language_;
    std::unique_ptr<HistoryRecorder> recorder_;
};

HistoryKeeper::HistoryKeeper(const HistoryTarget& target, Language language)
    : writer_(new Writer(target, language))
{
    thread_.setObjectName(QStringLiteral("history"));
    writer_->moveToThread(&thread_);
    connect(&thread_, &QThread::finished, writer_, &QObject::deleteLater);
    thread_.start();
}

HistoryKeeper::~HistoryKeeper()
{
    QMetaObject::invokeMethod(writer_, [writer = writer_] { writer->close(); }, Qt::BlockingQueuedConnection);
    thread_.quit();
    thread_.wait();
}

void HistoryKeeper::keep(const HistoryEntry& entry)
{
    QMetaObject::invokeMethod(writer_, [writer = writer_, entry, this] { writer->write(entry, this); }, Qt::QueuedConnection);
}

void HistoryKeeper::settle()
{
    QMetaObject::invokeMethod(writer_, [] {}, Qt::BlockingQueuedConnection);
}

}  // namespace velmor
