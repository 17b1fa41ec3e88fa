#pragma once

#include "exchange.h"

#include <QObject>

class QEventLoop;

namespace velmor {

// The panel a request belongs to, which the window locks while it runs.
enum class Panel { ChannelSetup, Adjust, ModuleInfo };

// The operator's commands, from the click to the stored reply: single requests,
// the chains that read or write a whole module, the information write behind
// its confirmation, the beckon and the bridge balance. Both front ends run
// these; what they show comes out through the signals and the dialogs.
class Operations : public QObject {
    Q_OBJECT
public:
    static constexpr int kBalanceSettleMs = 3000;

    Operations(SetupState& state, ComPort& port, OperatorDialogs& dialogs, QObject* parent = nullptr);

    Exchange& exchange() { return exchange_; }
    const Exchange& exchange() const { return exchange_; }
    SetupState& state() { return state_; }
    bool sequenceDone() const { return sequenceDone_; }

    // The front end is going away: the exchange in flight ends as it would,
    // and no request goes out after it (the balance's settling wait ends too).
    // It stays so.
    void abandonAfterExchange();
    bool abandoned() const { return abandoned_; }

    // Single requests on the current module; true when the reply was accepted.
    bool readModuleInfo();
    bool writeModuleInfo();
    bool beckon();
    bool readChannelGroup(int g);
    bool writeChannelGroup(int g);
    bool readAdjustBlock(int g);
    bool writeAdjustBlock(int g);
    bool readCalibrationPair(int k);
    bool writeCalibrationPair(int k);

    // The buttons' sequences; each stops at the first failed step.
    bool cmdFrame1Receive();  // channel-parameter reads
    bool cmdFrame1Send();     // send everything: parameters, adjust blocks, calibration
    bool cmdFrame2Receive();  // adjust-block reads
    bool cmdFrame2Send();     // adjust-block writes
    bool cmdFrame3Receive();  // read everything
    bool cmdFrame3Send();     // module-information write after "Only one module."
    bool cmdBalance();        // balance, settle, read everything

    // How many groups and calibration pairs a module of this many channels has.
    static int groupCount(int channelCount);
    static int pairCount(int channelCount);

signals:
    void commandsEnabled(bool enabled);  // EnableCommands
    // A request is about to go out: the window selects the group's tab, locks
    // the panel and shows the frame (calibration frames are not shown).
    void requestStarted(const velmor::Request& request, velmor::Panel panel, int group);
    // The exchange is over, or never began because the port would not open;
    // the window unlocks the panel.
    void requestEnded(velmor::Panel panel, bool portOpened);
    // The module's record changed as a whole (model, channel count, grids).
    void moduleRefreshed();

private:
    enum class Family { ReadChannels, WriteChannels, ReadAdjust, WriteAdjust, ReadCalibration, WriteCalibration };
    bool single(const Request& request, Panel panel, int group);
    bool step(Family family, int index);
    bool chain(Family family);
    bool stop();
    // Runs a button's sequence with sequenceDone false while it runs.
    template <typename Body>
    bool sequence(Body body);

    SetupState& state_;
    OperatorDialogs& dialogs_;
    Exchange exchange_;
    bool sequenceDone_ = true;
    bool abandoned_ = false;
    QEventLoop* settling_ = nullptr;
};

}  // namespace velmor
