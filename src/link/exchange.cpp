#include "exchange.h"

#include "protocol/replies.h"

#include <QEventLoop>

namespace velmor {

QString failureName(Failure failure)
{
    switch (failure) {
    case Failure::None: return QStringLiteral("done");
    case Failure::PortNotOpened: return QStringLiteral("port not opened");
    case Failure::LineBusy: return QStringLiteral("line busy");
    case Failure::NoReply: return QStringLiteral("no reply");
    case Failure::BadReply: return QStringLiteral("reply refused");
    }
    return QString();
}

Exchange::Exchange(SetupState& state, ComPort& port, QObject* parent)
    : QObject(parent), state_(state), port_(port)
{
    tmrNewData.setInterval(kNewDataInterval);
    tmrOver.setInterval(kOverAtStart);
    tmrOver.setSingleShot(true);
    tmrOver.setTimerType(Qt::PreciseTimer);  // the time-outs are exact, never early
    connect(&tmrNewData, &QTimer::timeout, this, &Exchange::tmrNewData_Timer);
    connect(&tmrOver, &QTimer::timeout, this, &Exchange::tmrOver_Timer);
    // The reply is taken as soon as it is complete; the 200 ms tick stays as a
    // fallback.
    connect(&port_, &ComPort::dataArrived, this, &Exchange::tmrNewData_Timer);
    // A port that goes away ends the exchange at once, as a silent module would.
    connect(&port_, &ComPort::lost, this, &Exchange::tmrOver_Timer);
}

bool Exchange::start(const Request& request, int portNumber)
{
    if (running_)
        return false;
    pending_ = request;
    state_.pendingCommand = request.command;
    replyOk_ = false;
    replyFailed_ = false;
    failure_ = Failure::None;
    if (!port_.OpenComPort(portNumber))
        return false;
    port_.WriteComPort(request.frame());
    const PortEntry* entry = findPort(port_.ports(), portNumber);
    line_ = entry ? entry->name : QString::number(portNumber);
    logFrame(FrameDirection::Out, request.frame(), FrameOutcome::Sent);
    running_ = true;
    tmrNewData.start();
    tmrOver.start();
    return true;
}

void Exchange::wait()
{
    if (replyOk_ || replyFailed_)
        return;
    QEventLoop loop;
    connect(this, &Exchange::ended, &loop, &QEventLoop::quit);
    loop.exec();
}

void Exchange::abandon(Failure why)
{
    finish(true, true, why);
}

void Exchange::tmrNewData_Timer()
{
    if (!running_)
        return;
    const QByteArray waiting = port_.peekWaiting();
    const qsizetype stale = staleReplyBytes(waiting, pending_, timedOut_);
    if (!replyComplete(QByteArrayView(waiting).sliced(stale), pending_.replyLength()))
        return;
    tmrNewData.stop();
    tmrOver.stop();
    running_ = false;
    const QByteArray received = port_.ReadComPort(0);
    const QByteArray frame = frameWithin(QByteArrayView(received).sliced(stale)).toByteArray();
    port_.CloseComPort();
    if (stale > 0)
        logFrame(FrameDirection::In, received.first(stale), FrameOutcome::SkippedLate);

    const bool accepted = parseReply(pending_.kind, frame, pending_.command, state_.current(), state_.parseStatus);
    logFrame(FrameDirection::In, received.sliced(stale), accepted ? FrameOutcome::Accepted : FrameOutcome::Refused,
             accepted ? 0 : state_.parseStatus);
    if (accepted) {
        emit replyStored(pending_, frame);
        finish(true, false, Failure::None);
        return;
    }
    finish(false, true, Failure::BadReply);
}

void Exchange::tmrOver_Timer()
{
    if (!running_)
        return;
    tmrNewData.stop();
    tmrOver.stop();
    running_ = false;
    const QByteArray partial = port_.peekWaiting();  // for the log only
    port_.CloseComPort();
    const qsizetype stale = staleReplyBytes(partial, pending_, timedOut_);
    if (stale > 0)
        logFrame(FrameDirection::In, partial.first(stale), FrameOutcome::SkippedLate);
    logFrame(FrameDirection::In, partial.sliced(stale), FrameOutcome::TimedOut);
    timedOut_.append(pending_);
    if (timedOut_.size() > kRememberedTimeOuts)
        timedOut_.removeFirst();
    finish(true, true, Failure::NoReply);
}

void Exchange::logFrame(FrameDirection direction, const QByteArray& bytes, FrameOutcome outcome, int status)
{
    emit frameLogged({frameLogClock(), line_, direction, bytes, outcome, status});
}

void Exchange::finish(bool ok, bool failed, Failure failure)
{
    failure_ = failure;
    replyOk_ = ok;
    replyFailed_ = failed;
    emit ended();
}

}  // namespace velmor
