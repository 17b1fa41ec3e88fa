#include "monkey_watch.h"

#include "link/operations.h"
#include "protocol/frame_text.h"
#include "support/record_checks.h"
#include "ui/frame_log_pane.h"
#include "ui/frm_main.h"

namespace velmor::testing {
namespace {

quint8 commandOf(const QByteArray& frame)
{
    return frame.size() > kCommandOffset ? static_cast<quint8>(frame.at(kCommandOffset)) : 0;
}

QString described(const FrameRow& row)
{
    return QStringLiteral("%1 on %2").arg(frameToText(row.frame).simplified(), row.line);
}

}  // namespace

ExchangeWatch::ExchangeWatch(Liveness& liveness, std::function<QString()> duringEvent)
    : liveness_(liveness), duringEvent_(std::move(duringEvent))
{
}

void ExchangeWatch::follow(frmMain& window)
{
    letGo();
    auto* pane = window.findChild<FrameLogPane*>();
    if (!pane)
        qFatal("the window has no frame log");
    window_ = &window;
    connection_ = QObject::connect(&pane->log(), &FrameLog::appended, pane,
                                   [this](const FrameRow& row) { rowAdded(row); });
}

void ExchangeWatch::letGo()
{
    if (window_)
        checkRecord();
    for (const InFlight& exchange : std::as_const(inFlight_))
        fail(QStringLiteral("a window went away with the exchange of %1 in flight").arg(described(exchange.request)));
    QObject::disconnect(connection_);
    window_ = nullptr;
    inFlight_.clear();
}

void ExchangeWatch::rowAdded(const FrameRow& row)
{
    if (row.direction == FrameDirection::Out)
        requestSent(row);
    else if (row.outcome == FrameOutcome::SkippedLate)
        ++skippedLate_;
    else
        exchangeEnded(row);
}

void ExchangeWatch::requestSent(const FrameRow& row)
{
    checkRecord();
    liveness_.beat(duringEvent_());
    const bool searching = window_->state().searching;
    if (const auto same = inFlight_.constFind(row.line); same != inFlight_.cend())
        fail(QStringLiteral("%1 went out while %2 was in flight").arg(described(row), described(same->request)));
    else if (!inFlight_.isEmpty() && !searching)
        fail(QStringLiteral("%1 went out while %2 was in flight").arg(described(row), described(inFlight_.cbegin()->request)));
    ++exchanges_;
    InFlight& exchange = inFlight_[row.line];
    exchange.request = row;
    exchange.sent.start();
    exchange.checked = !searching;
    exchange.module = window_->state().currentModule;
    exchange.before = window_->state().current();
}

void ExchangeWatch::exchangeEnded(const FrameRow& row)
{
    const auto found = inFlight_.constFind(row.line);
    if (found == inFlight_.cend()) {
        liveness_.beat(duringEvent_());
        fail(QStringLiteral("an exchange ended (%1) with no request in flight").arg(described(row)));
        return;
    }
    const InFlight exchange = *found;
    inFlight_.erase(found);
    const bool balanced = row.outcome == FrameOutcome::Accepted && commandOf(exchange.request.frame) == kCmdBalance;
    // After an accepted balance the program lets the modules settle first.
    liveness_.beat(duringEvent_(), balanced ? Operations::kBalanceSettleMs + Liveness::kSpareMs
                                            : Liveness::kAfterAnythingMs);
    const qint64 took = exchange.sent.elapsed();
    slowestMs_ = std::max(slowestMs_, took);
    if (took > Liveness::kAfterAnythingMs)
        fail(QStringLiteral("the exchange of %1 took %2 ms").arg(described(exchange.request)).arg(took));

    switch (row.outcome) {
    case FrameOutcome::Accepted:
        ++accepted_;
        return;
    case FrameOutcome::Refused:
        ++refused_;
        break;
    case FrameOutcome::TimedOut:
        ++timedOut_;
        break;
    case FrameOutcome::Sent:
    case FrameOutcome::SkippedLate:
        return;
    }
    if (!exchange.checked)
        return;
    // The row comes before the exchange has finished ending (its message,
    // its end): the record is looked at once all of that is over.
    unanswered_ = exchange;
    unansweredEnd_ = row;
    recordDue_ = true;
}

void ExchangeWatch::checkRecord()
{
    if (!recordDue_)
        return;
    recordDue_ = false;
    const ModuleRecord& now = window_->state().table.at(static_cast<size_t>(unanswered_.module));
    if (now == unanswered_.before)
        return;
    QString difference = wholeReadDifference(now, unanswered_.before);
    if (difference.isEmpty())
        difference = QStringLiteral("a field outside the wire's");
    fail(QStringLiteral("the record of module %1 changed (%2) in an exchange that ended %3: %4, reply %5")
             .arg(unanswered_.module + 1)
             .arg(difference,
                  unansweredEnd_.outcome == FrameOutcome::Refused ? QStringLiteral("refused") : QStringLiteral("timed out"),
                  described(unanswered_.request), frameToText(unansweredEnd_.frame).simplified()));
}

void ExchangeWatch::fail(const QString& why)
{
    if (failure_.isEmpty())
        failure_ = QStringLiteral("%1, during %2").arg(why, duringEvent_());
}

}  // namespace velmor::testing
