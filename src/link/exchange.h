#pragma once

#include "frame_row.h"
#include "model/module_table.h"
#include "protocol/requests.h"
#include "serial/com_port.h"

#include <QList>
#include <QObject>
#include <QTimer>

namespace velmor {

// How the last exchange ended. LineBusy: another program held the line all
// the while it was waited for, so the port was never opened.
enum class Failure { None, PortNotOpened, LineBusy, NoReply, BadReply };
// "no reply", "reply refused", ...: how an exchange failed, in the words a
// history entry keeps (the same in every language).
QString failureName(Failure failure);

// The exchange in flight: one request written, its reply awaited, checked and
// stored into the current module's record. How it ended is a value (failure());
// the flow that started it tells the operator.
class Exchange : public QObject {
    Q_OBJECT
public:
    static constexpr int kNewDataInterval = 200;
    static constexpr int kOverAtStart = 1000;
    static constexpr int kOverDuringSearch = 250;
    static constexpr int kOverAfterSearch = 2000;
    // A whole port's worth of silent addresses.
    static constexpr int kRememberedTimeOuts = 17;

    Exchange(SetupState& state, ComPort& port, QObject* parent = nullptr);

    // Opens port n, writes the request and starts both timers. False when the
    // port would not open, or while another exchange is in flight (running()):
    // then nothing was written and the exchange in flight goes on untouched.
    bool start(const Request& request, int portNumber);
    bool running() const { return running_; }
    // Returns once the exchange has ended, one way or another. The wait blocks
    // in the event loop, so it costs no CPU.
    void wait();
    // Marks the exchange as ended and failed without a reply: the port did
    // not open, or the line was busy.
    void abandon(Failure why = Failure::PortNotOpened);

    bool replyOk() const { return replyOk_; }
    Failure failure() const { return failure_; }
    bool replyFailed() const { return replyFailed_; }

    void setOverInterval(int ms) { tmrOver.setInterval(ms); }
    int overInterval() const { return tmrOver.interval(); }

signals:
    // A row of the frame log, as FrameLog describes them.
    void frameLogged(const velmor::FrameRow& row);
    // A reply was accepted and stored; the front end refreshes what shows it.
    void replyStored(const velmor::Request& request, const QByteArray& frame);
    void ended();

private:
    void tmrNewData_Timer();
    void tmrOver_Timer();
    void finish(bool ok, bool failed, Failure failure);
    void logFrame(FrameDirection direction, const QByteArray& bytes, FrameOutcome outcome, int status = 0);

    SetupState& state_;
    ComPort& port_;
    Request pending_;
    QString line_;  // the name of the port the request went out on
    // Requests that timed out lately: a reply to one of them that turns up
    // during a later exchange is skipped.
    QList<Request> timedOut_;
    bool replyOk_ = false;
    bool replyFailed_ = false;
    Failure failure_ = Failure::None;
    bool running_ = false;
    QTimer tmrNewData;
    QTimer tmrOver;
};

}  // namespace velmor
