#include "frame_log_model.h"

#include "protocol/frame_text.h"
#include "texts/frame_log.h"
#include "texts/hints.h"

#include <QDateTime>

#include <iterator>

namespace velmor {

FrameLogModel::FrameLogModel(const FrameLog& log, Language language, QObject* parent)
    : QAbstractTableModel(parent), log_(log), language_(language), shown_(static_cast<int>(log.rows().size()))
{
    announcing_.setSingleShot(true);
    announcing_.setInterval(kAnnounceMs);
    connect(&announcing_, &QTimer::timeout, this, &FrameLogModel::announce);
    connect(&log_, &FrameLog::appended, this, [this] {
        if (!announcing_.isActive())
            announcing_.start();
    });
    connect(&log_, &FrameLog::cleared, this, [this] {
        announcing_.stop();
        beginResetModel();
        shown_ = 0;
        endResetModel();
    });
}

void FrameLogModel::announce()
{
    const auto size = static_cast<int>(log_.rows().size());
    if (size <= shown_)
        return;
    beginInsertRows({}, shown_, size - 1);
    shown_ = size;
    endInsertRows();
}

int FrameLogModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : shown_; }

int FrameLogModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : ColumnCount; }

QVariant FrameLogModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= log_.rows().size())
        return {};
    if (role == Qt::TextAlignmentRole)  // a whole frame takes four lines
        return QVariant::fromValue(Qt::AlignLeft | Qt::AlignTop);
    if (role != Qt::DisplayRole)
        return {};
    return text(log_.rows().at(index.row()), index.column());
}

QString FrameLogModel::text(const FrameRow& row, int column) const
{
    switch (column) {
    case Time: return QDateTime::fromMSecsSinceEpoch(row.msecsSinceEpoch).toString(QStringLiteral("HH:mm:ss.zzz"));
    case Line: return row.line;
    case Direction: return pick(row.direction == FrameDirection::Out ? texts::frame_log::kOut : texts::frame_log::kIn, language_);
    case Outcome: return outcomeText(row, language_);
    case Frame: return frameToText(row.frame);
    }
    return {};
}

static_assert(std::size(texts::hints::kFrameLogColumns) == FrameLogModel::ColumnCount);

QVariant FrameLogModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    const bool text = role == Qt::DisplayRole || role == Qt::ToolTipRole;
    if (orientation != Qt::Horizontal || !text || section < 0 || section >= ColumnCount)
        return QAbstractTableModel::headerData(section, orientation, role);
    return pick(role == Qt::DisplayRole ? texts::frame_log::kColumns[section] : texts::hints::kFrameLogColumns[section],
                language_);
}

QString FrameLogModel::outcomeText(const FrameRow& row, Language language)
{
    switch (row.outcome) {
    case FrameOutcome::Sent: return pick(texts::frame_log::kSent, language);
    case FrameOutcome::Accepted: return pick(texts::frame_log::kAccepted, language);
    case FrameOutcome::Refused: {
        const auto reasons = std::size(texts::frame_log::kRefusalReasons);
        const QString reason = row.status >= 1 && static_cast<size_t>(row.status) <= reasons
                                   ? pick(texts::frame_log::kRefusalReasons[row.status - 1], language)
                                   : QString();
        return pick(texts::frame_log::kRefused, language).arg(row.status).arg(reason);
    }
    case FrameOutcome::TimedOut: return pick(texts::frame_log::kTimedOut, language);
    case FrameOutcome::SkippedLate: return pick(texts::frame_log::kSkippedLate, language);
    }
    return {};
}

}  // namespace velmor
