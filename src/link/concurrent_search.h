#pragma once

#include "frame_row.h"
#include "line_threads.h"
#include "operations.h"
#include "serial/port_list.h"

#include <QList>
#include <QObject>

#include <atomic>

namespace velmor {

// "Search all lines at once": every line searched and its modules read in a
// thread of its own, each with its own exchange and the search's time-outs.
// The module table, the messages and the report come out as the one-by-one
// search gives them: lines in their order, then addresses.
class ConcurrentSearch : public QObject {
    Q_OBJECT
public:
    // `operations` is the front end's: its state receives the modules found,
    // and abandoning it (the window closing) ends every line's search after
    // its exchange in flight.
    ConcurrentSearch(Operations& operations, OperatorDialogs& dialogs, QObject* parent = nullptr);

    int searchAllAtOnce(const QList<PortEntry>& ports, int selectedPort);
    const QList<int>& unreadModules() const { return unread_; }

    // A rack's search: the front end's table still takes the modules as far
    // as it holds, but the search is not bounded by it. Nothing says the table
    // is full, and the report counts every module of every line.
    void keepEveryModule() { everyModule_ = true; }
    // Every module the last search found, line by line in address order, and
    // whether it was read wholly.
    struct Found {
        PortEntry port;
        ModuleRecord record;
        bool wholly = true;
    };
    const QList<Found>& everyModule() const { return found_; }
    // Every line asks no address after the one in flight, as ModuleSearch::stopAsking.
    void stopAsking() { stopAsking_ = true; }

signals:
    void progressMaximum(int maximum);
    // The addresses asked so far, over all lines.
    void progress(int value);
    // An address being asked on one of the lines, as ModuleSearch::asking.
    void asking(const velmor::PortEntry& port, int address);
    void modulesFound(int count);
    void operationsEnabled(bool enabled);
    // A line would not open; its message has just been shown. `failure` and
    // `reason` say why, as that line's port gave them.
    void portNotOpened(const velmor::PortEntry& port, velmor::OpenFailure failure, const QString& reason);
    // Another program held a line all the while it was waited for; its
    // message has just been shown.
    void lineBusy(const velmor::PortEntry& port, const velmor::LineHolder& holder);
    // A row of any line's exchange, passed on in this object's thread as the
    // lines log them: one line's rows in their order, the lines' interleaved.
    void frameLogged(const velmor::FrameRow& row);

private:
    struct Line;
    void runLines(QList<Line>& lines, QList<LineWork>& work);
    void merge(const QList<Line>& lines, const QList<LineWork>& work);

    Operations& operations_;
    OperatorDialogs& dialogs_;
    QList<int> unread_;
    QList<Found> found_;
    bool everyModule_ = false;
    std::atomic<bool> stopAsking_ = false;
};

}  // namespace velmor
