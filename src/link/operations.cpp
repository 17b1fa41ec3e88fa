#include "operations.h"

#include "model/messages.h"

#include <QEventLoop>
#include <QTimer>

namespace velmor {

Operations::Operations(SetupState& state, ComPort& port, OperatorDialogs& dialogs, QObject* parent)
    : QObject(parent), state_(state), dialogs_(dialogs), exchange_(state, port, dialogs, this)
{
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

bool Operations::single(const Request& request, Panel panel, int group)
{
    // A second start while a reply is awaited is refused without a word: the
    // front end locks its commands, so only a stray queued click gets here.
    if (abandoned_ || exchange_.running())
        return false;
    emit commandsEnabled(false);
    emit requestStarted(request, panel, group);
    if (!exchange_.start(request, state_.current().portNumber)) {
        const Language language = languageOf(state_.languageMode);
        const Text& title = request.command == kCmdBalance ? msg::kBalanceOpenFailTitle : msg::kOpenFailTitle;
        dialogs_.showMessage(pick(title, language), pick(msg::kOpenComPortFail, language));
        exchange_.abandon();
        emit commandsEnabled(true);
        emit requestEnded(panel, false);
        return false;
    }
    exchange_.wait();
    emit commandsEnabled(true);
    emit requestEnded(panel, true);
    return !exchange_.replyFailed();
}

bool Operations::readModuleInfo()
{
    return single(readInfoRequest(state_.current().busAddress), Panel::ModuleInfo, 0);
}

bool Operations::writeModuleInfo()
{
    return single(writeInfoRequest(state_.current()), Panel::ModuleInfo, 0);
}

bool Operations::beckon()
{
    const bool ok = single(beckonRequest(), Panel::ModuleInfo, 0);
    if (ok)
        emit moduleRefreshed();
    return ok;
}

bool Operations::readChannelGroup(int g)
{
    return single(readChannelGroupRequest(state_.current(), g), Panel::ChannelSetup, g);
}

bool Operations::writeChannelGroup(int g)
{
    return single(writeChannelGroupRequest(state_.current(), g), Panel::ChannelSetup, g);
}

bool Operations::readAdjustBlock(int g)
{
    return single(readAdjustBlockRequest(state_.current(), g), Panel::Adjust, g);
}

bool Operations::writeAdjustBlock(int g)
{
    return single(writeAdjustBlockRequest(state_.current(), g), Panel::Adjust, g);
}

bool Operations::readCalibrationPair(int k)
{
    return single(readCalibrationRequest(state_.current(), k), Panel::Adjust, k);
}

bool Operations::writeCalibrationPair(int k)
{
    return single(writeCalibrationRequest(state_.current(), k), Panel::Adjust, k);
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
    }
    return true;
}

bool Operations::stop()
{
    emit commandsEnabled(true);
    return false;
}

template <typename Body>
bool Operations::sequence(Body body)
{
    sequenceDone_ = false;
    const bool ok = body();
    sequenceDone_ = true;
    return ok;
}

bool Operations::cmdFrame1Receive()
{
    return sequence([this] {
        const bool ok = chain(Family::ReadChannels);
        emit moduleRefreshed();
        return ok;
    });
}

bool Operations::cmdFrame1Send()
{
    return sequence([this] {
        const bool ok = chain(Family::WriteChannels) && chain(Family::WriteAdjust) && chain(Family::WriteCalibration);
        emit moduleRefreshed();
        return ok;
    });
}

bool Operations::cmdFrame2Receive()
{
    return sequence([this] { return chain(Family::ReadAdjust); });
}

bool Operations::cmdFrame2Send()
{
    return sequence([this] { return chain(Family::WriteAdjust); });
}

bool Operations::cmdFrame3Receive()
{
    return sequence([this] {
        if (!readModuleInfo())
            return stop();
        const bool ok = chain(Family::ReadChannels) && chain(Family::ReadAdjust) && chain(Family::ReadCalibration);
        emit moduleRefreshed();
        return ok;
    });
}

bool Operations::cmdFrame3Send()
{
    const Language language = languageOf(state_.languageMode);
    // The write goes to every module on the line, so there must be only one.
    if (!dialogs_.confirm(pick(msg::kTitle, language), pick(msg::kOnlyOneModule, language)))
        return false;
    return writeModuleInfo();
}

bool Operations::cmdBalance()
{
    const bool balanced = sequence([this] {
        const Request request = balanceRequest(state_.current(), state_.channelMask.at(static_cast<size_t>(state_.currentModule)));
        if (!single(request, Panel::ChannelSetup, 0))
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
    return balanced && cmdFrame3Receive();
}

}  // namespace velmor
