#pragma once

#include "frame_row.h"

#include <QList>
#include <QObject>

namespace velmor {

// Every frame that the followed exchanges sent and received, one row each,
// in the order the rows arrive here. The rules of a row:
//  - a request written to the line is one Out row, "sent";
//  - what was read for its reply is one In row: accepted, or refused with the
//    reply check's status, the bytes from the first one read (noise ahead of
//    the frame included) to the last;
//  - a wait that runs out is one In row, "timed out", holding whatever part of
//    a reply had arrived (often nothing);
//  - bytes that answer an earlier, timed-out request are one In row of their
//    own, "skipped as late", just before the row of the bytes after them;
//  - a request whose port would not open was never sent and has no row.
// So each exchange gives an Out row and an In row, plus a skipped one when a
// late reply came in between; every byte read is in exactly one In row. A
// row's time is taken where it happened, so an exchange in another thread
// gives correct times even though its rows arrive queued. The times of one
// line's rows never decrease; two rows may share a millisecond.
class FrameLog : public QObject {
    Q_OBJECT
public:
    explicit FrameLog(QObject* parent = nullptr);

    const QList<FrameRow>& rows() const { return rows_; }
    // Its owner connects the producers' frameLogged here (queued from an
    // exchange in another thread, so the rows come in the order they arrive).
    void append(const FrameRow& row);
    void clear();

signals:
    void appended(const velmor::FrameRow& row);
    void cleared();

private:
    QList<FrameRow> rows_;
};

}  // namespace velmor
