#pragma once

#include "link/frame_log.h"
#include "texts/language.h"

#include <QAbstractTableModel>
#include <QTimer>

namespace velmor {

// The frame log as a table in the window's language, one row per log row.
// New rows are announced together at most every kAnnounceMs: a view that
// shows them redraws a few times a second, not for every frame.
class FrameLogModel : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { Time, Line, Direction, Outcome, Frame, ColumnCount };
    static constexpr int kAnnounceMs = 500;

    FrameLogModel(const FrameLog& log, Language language, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

    // "Refused (status 3: checksum mismatch)", "Timed out", ...
    static QString outcomeText(const FrameRow& row, Language language);

private:
    QString text(const FrameRow& row, int column) const;
    void announce();

    const FrameLog& log_;
    Language language_;
    // The rows the views know of; the log may hold more, not yet announced.
    int shown_ = 0;
    QTimer announcing_;
};

}  // namespace velmor
