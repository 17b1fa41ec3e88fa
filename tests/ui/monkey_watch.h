#pragma once

#include "link/frame_row.h"
#include "model/module_table.h"
#include "monkey_liveness.h"

#include <QElapsedTimer>
#include <QHash>
#include <QMetaObject>
#include <QString>

#include <functional>

namespace velmor {
class frmMain;
}

namespace velmor::testing {

// Follows the window's exchanges through its frame log, where a request is
// an Out row and its end an In row of the same line (accepted, refused or
// timed out, after a "skipped as late" row when a late reply came first),
// and checks that
//  - a request never goes out on a line with an exchange in flight, nor on
//    any line while another has one, except during a search of all lines at
//    once, when every line has an exchange of its own;
//  - an exchange that ends refused, or without a reply, leaves the module's
//    record as it was when its request went out (looked at once the
//    exchange is wholly over, see checkRecord). A search's exchanges are
//    left to the search tests: the one-by-one search asks into the records
//    it fills as it goes, the search of all lines at once into copies that
//    the window takes over only at its end;
//  - an exchange ends within the longest time-out plus a second.
// It counts how the exchanges ended. Every row is a sign of life.
class ExchangeWatch {
public:
    ExchangeWatch(Liveness& liveness, std::function<QString()> duringEvent);

    // That window's log from now on; the one followed before is let go.
    void follow(frmMain& window);
    // The window is going away: nothing may be in flight.
    void letGo();

    // The last exchange that ended refused or unanswered is wholly over:
    // its module's record must be as it was when its request went out. Due
    // when the next request goes out, or when the operator's event that ran
    // it has returned.
    void checkRecord();

    // The first check that failed, empty while all hold.
    QString failure() const { return failure_; }

    int exchanges() const { return exchanges_; }
    int accepted() const { return accepted_; }
    int refused() const { return refused_; }
    int timedOut() const { return timedOut_; }
    int skippedLate() const { return skippedLate_; }
    qint64 slowestExchangeMs() const { return slowestMs_; }

private:
    void rowAdded(const FrameRow& row);
    void requestSent(const FrameRow& row);
    void exchangeEnded(const FrameRow& row);
    void fail(const QString& why);

    Liveness& liveness_;
    std::function<QString()> duringEvent_;
    frmMain* window_ = nullptr;
    QMetaObject::Connection connection_;

    struct InFlight {
        FrameRow request;
        QElapsedTimer sent;
        bool checked = false;  // not a search's: its record is looked at
        int module = 0;        // the table index the request was for
        ModuleRecord before;   // that record when the request went out
    };
    QHash<QString, InFlight> inFlight_;  // by line
    InFlight unanswered_;                // the last exchange refused or timed out
    FrameRow unansweredEnd_;             // and its end
    bool recordDue_ = false;

    int exchanges_ = 0;
    int accepted_ = 0;
    int refused_ = 0;
    int timedOut_ = 0;
    int skippedLate_ = 0;
    qint64 slowestMs_ = 0;
    QString failure_;
};

}  // namespace velmor::testing
