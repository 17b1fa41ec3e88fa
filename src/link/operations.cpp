#include "operations.h"

#include "texts/message.h"

#include <QEventLoop>
#include <QTimer>

namespace velmor {

Operations::Operations(SetupState& state, ComPort& port, OperatorDialogs& dialogs, QObject* parent)
    : QObject(parent), state_(state), port_(port), dialogs_(dialogs), exchange_(state, port, this)
{
}

Operations::LineHold::LineHold(Operations& operations, const PortEntry* port, LineActivity activity)
    : operations_(operations), device_(port ? port->device : QString())
{
    // A port that is not listed does not open either: there is nothing to hold.
    if (!port)
        return;
    Held& line = operations_.held_[device_];
    // Found busy by an outer hold: the requests inside it do not wait again.
    if (line.busy) {
        held_ = false;
        return;
    }
    if (line.depth == 0) {
        auto lock = std::make_unique<LineLock>(device_);
        if (!lock->take(activity)) {
            held_ = false;
            line.busy = true;
            refusedHere_ = true;
            operations_.busyHolder_ = lock->holder();
            return;
        }
        line.lock = std::move(lock);
    }
    ++line.depth;
}

Operations::LineHold::~LineHold()
{
    const auto line = operations_.held_.find(device_);
    if (line == operations_.held_.end())
        return;
    if (refusedHere_ || (held_ && --line->second.depth == 0))
        operations_.held_.erase(line);
}

Operations::LineHold Operations::holdLine(LineActivity activity)
{
    return LineHold(*this, currentPort(), activity);
}

QString Operations::lineBusyText(const QString& portName, const LineHolder& holder, Language language)
{
    return pick(texts::message::kLineBusy, language)
        .arg(portName, holder.program, QString::number(holder.pid),
             pick(texts::message::kLineActivities[static_cast<int>(holder.activity)], language));
}

const PortEntry* Operations::currentPort() const { return findPort(port_.ports(), state_.current().portNumber); }

namespace {

// "group 2", "groups 1-4": the requests first to last (1-based) of one family.
QString run(const Text& one, const Text& several, int first, int last, Language language)
{
    if (first == last)
        return pick(one, language).arg(first);
    return pick(several, language).arg(first).arg(last);
}

}  // namespace

QString writeProgressText(const WriteProgress& p, Language language)
{
    // Each side: its names, and whether it is one request alone ("was").
    struct Side {
        QStringList names;
        int requests = 0;
    } written, notWritten;
    // A family wholly on one side is named by `whole` where it has a name of
    // its own ("the coefficients"), else by its run.
    const auto split = [&](int total, int done, const Text& one, const Text& several, const Text* whole) {
        const auto add = [&](Side& side, int first, int last) {
            const bool all = whole && first == 1 && last == total;
            side.names << (all ? pick(*whole, language) : run(one, several, first, last, language));
            side.requests += all ? total + 1 : last - first + 1;  // "the coefficients" are plural however many
        };
        if (done > 0)
            add(written, 1, done);
        if (done < total)
            add(notWritten, done + 1, total);
    };
    split(p.groups, p.groupsDone, texts::message::kWrittenGroup, texts::message::kWrittenGroups, nullptr);
    split(p.adjusts, p.adjustsDone, texts::message::kWrittenAdjust, texts::message::kWrittenAdjusts, nullptr);
    split(p.pairs, p.pairsDone, texts::message::kWrittenPair, texts::message::kWrittenPairs, &texts::message::kWrittenCoefficients);
    const QString separator = pick(texts::message::kListAnd, language);
    const auto said = [&](const Side& side, const Text& was, const Text& were) {
        return pick(side.requests == 1 ? was : were, language).arg(side.names.join(separator));
    };
    QStringList sentence;
    if (!written.names.isEmpty())
        sentence << said(written, texts::message::kWasWritten, texts::message::kWereWritten);
    if (!notWritten.names.isEmpty())
        sentence << said(notWritten, texts::message::kWasNot, texts::message::kWereNot);
    return sentence.join(pick(texts::message::kProgressJoin, language)) + pick(texts::message::kSentenceEnd, language);
}

int Operations::groupCount(int channelCount)
{
    return 1 + (channelCount > 4) + (channelCount > 8) + (channelCount > 12);
}

int Operations::pairCount(int channelCount)
{
    return 2 * groupCount(channelCount);
}

void Operations::abandonAfterExchange()
{
    abandoned_ = true;
    if (settling_)
        settling_->quit();
}

namespace {

LineActivity activityOf(const Request& request)
{
    switch (request.command) {
    case kCmdBeckon: return LineActivity::Beckoning;
    case kCmdWrite: return LineActivity::Writing;
    case kCmdBalance: return LineActivity::Balancing;
    default: return LineActivity::Reading;
    }
}

}  // namespace

void Operations::tell(const Request& request, Failure failure)
{
    // During a search a silent address is normal.
    if (failure == Failure::None || (failure == Failure::NoReply && state_.searching))
        return;
    tell(Notice::requestFailed(request, failure));
}

void Operations::tell(const Notice& notice)
{
    if (kept_)
        kept_->append(notice);
    else
        say(notice);
}

void Operations::say(const Notice& notice) { sayNotice(notice, dialogs_, languageOf(state_.languageMode)); }

bool Operations::notSent(const Request& request, Failure why)
{
    tell(request, why);
    if (why == Failure::LineBusy)
        emit lineBusy(*currentPort(), busyHolder_);
    exchange_.abandon(why);
    emit commandsEnabled(true);
    emit requestEnded(request, false);
    return false;
}

bool Operations::single(const Request& request)
{
    // A second start while a reply is awaited is refused without a word: the
    // front end locks its commands, so only a stray queued click gets here.
    if (abandoned_ || exchange_.running())
        return false;
    emit commandsEnabled(false);
    emit requestStarted(request);
    const LineHold line = holdLine(activityOf(request));
    if (!line.held())
        return notSent(request, Failure::LineBusy);
    if (!exchange_.start(request, state_.current().portNumber))
        return notSent(request, Failure::PortNotOpened);
    exchange_.wait();
    tell(request, exchange_.failure());
    emit commandsEnabled(true);
    emit requestEnded(request, true);
    return !exchange_.replyFailed();
}

bool Operations::readModuleInfo()
{
    return single(readInfoRequest(state_.current().busAddress));
}

bool Operations::writeModuleInfo()
{
    return single(writeInfoRequest(state_.current()));
}

bool Operations::beckon()
{
    const bool ok = single(beckonRequest());
    if (ok)
        emit moduleRefreshed();
    return ok;
}

bool Operations::readChannelGroup(int g)
{
    return single(readChannelGroupRequest(state_.current(), g));
}

bool Operations::writeChannelGroup(int g)
{
    return single(writeChannelGroupRequest(state_.current(), g));
}

bool Operations::readAdjustBlock(int g)
{
    return single(readAdjustBlockRequest(state_.current(), g));
}

bool Operations::writeAdjustBlock(int g)
{
    return single(writeAdjustBlockRequest(state_.current(), g));
}

bool Operations::readCalibrationPair(int k)
{
    return single(readCalibrationRequest(state_.current(), k));
}

bool Operations::writeCalibrationPair(int k)
{
    return single(writeCalibrationRequest(state_.current(), k));
}

bool Operations::step(Family family, int index)
{
    switch (family) {
    case Family::ReadChannels: return readChannelGroup(index);
    case Family::WriteChannels: return writeChannelGroup(index);
    case Family::ReadAdjust: return readAdjustBlock(index);
    case Family::WriteAdjust: return writeAdjustBlock(index);
    case Family::ReadCalibration: return readCalibrationPair(index);
    case Family::WriteCalibration: return writeCalibrationPair(index);
    }
    return false;
}

bool Operations::chain(Family family)
{
    const bool pairs = family == Family::ReadCalibration || family == Family::WriteCalibration;
    // The channel count is looked up before every step: the first read of a
    // module may just have changed it.
    for (int i = 0; i < (pairs ? pairCount(state_.current().channelCount) : groupCount(state_.current().channelCount)); ++i) {
        if (!step(family, i))
            return stop();
        if (family == Family::WriteChannels)
            ++writing_.groupsDone;
        else if (family == Family::WriteAdjust)
            ++writing_.adjustsDone;
        else if (family == Family::WriteCalibration)
            ++writing_.pairsDone;
    }
    return true;
}

bool Operations::writeChain(std::initializer_list<Family> families)
{
    const int channels = state_.current().channelCount;
    writing_ = {};
    for (Family family : families) {
        if (family == Family::WriteChannels)
            writing_.groups = groupCount(channels);
        else if (family == Family::WriteAdjust)
            writing_.adjusts = groupCount(channels);
        else if (family == Family::WriteCalibration)
            writing_.pairs = pairCount(channels);
    }
    for (Family family : families) {
        if (!chain(family)) {
            if (writing_.groupsDone + writing_.adjustsDone + writing_.pairsDone > 0)
                emit writeStoppedPartway(writing_);
            return false;
        }
    }
    return true;
}

bool Operations::stop()
{
    emit commandsEnabled(true);
    return false;
}

template <typename Body>
bool Operations::sequence(LineActivity activity, Body body)
{
    sequenceDone_ = false;
    // A busy line is told by the chain's first request, which finds it so.
    const LineHold line = holdLine(activity);
    const bool ok = body();
    sequenceDone_ = true;
    return ok;
}

bool Operations::readChannelGroups()
{
    return sequence(LineActivity::Reading, [this] {
        const bool ok = chain(Family::ReadChannels);
        emit moduleRefreshed();
        return ok;
    });
}

bool Operations::writeEverything()
{
    return sequence(LineActivity::Writing, [this] {
        const bool ok = writeChain({Family::WriteChannels, Family::WriteAdjust, Family::WriteCalibration});
        emit moduleRefreshed();
        return ok;
    });
}

bool Operations::readAdjustBlocks()
{
    return sequence(LineActivity::Reading, [this] { return chain(Family::ReadAdjust); });
}

bool Operations::writeAdjustBlocks()
{
    return sequence(LineActivity::Writing, [this] { return writeChain({Family::WriteAdjust}); });
}

bool Operations::readEverything()
{
    return sequence(LineActivity::Reading, [this] {
        if (!readModuleInfo())
            return stop();
        const bool ok = chain(Family::ReadChannels) && chain(Family::ReadAdjust) && chain(Family::ReadCalibration);
        emit moduleRefreshed();
        return ok;
    });
}

bool Operations::confirmAndWriteModuleInfo()
{
    const Language language = languageOf(state_.languageMode);
    // The write goes to every module on the line, so there must be only one.
    if (!dialogs_.confirm(pick(texts::message::kTitle, language), pick(texts::message::kOnlyOneModule, language)))
        return false;
    return writeModuleInfo();
}

bool Operations::balanceAndReadBack()
{
    // The line is held from the balance to the end of the read after it.
    const LineHold line = holdLine(LineActivity::Balancing);
    const bool balanced = sequence(LineActivity::Balancing, [this] {
        const Request request = balanceRequest(state_.current(), state_.currentMask());
        if (!single(request))
            return stop();
        // Give the modules time to finish balancing before reading the results.
        QEventLoop settle;
        QTimer::singleShot(kBalanceSettleMs, Qt::PreciseTimer, &settle, &QEventLoop::quit);
        settling_ = &settle;
        if (!abandoned_)
            settle.exec();
        settling_ = nullptr;
        emit commandsEnabled(true);
        return true;
    });
    return balanced && readEverything();
}

}  // namespace velmor
