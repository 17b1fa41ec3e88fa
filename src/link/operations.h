#pragma once

#include "exchange.h"
#include "notice.h"
#include "operator_dialogs.h"
#include "serial/line_lock.h"
#include "texts/language.h"

#include <QObject>

#include <map>
#include <memory>

class QEventLoop;

namespace velmor {

// How far a write chain got: of each family, how many requests it had to
// send and how many the module acknowledged, in order.
struct WriteProgress {
    int groups = 0, groupsDone = 0;
    int adjusts = 0, adjustsDone = 0;
    int pairs = 0, pairsDone = 0;
};
// "groups 1-4 and adjust blocks 1-3 were written; adjust block 4 and the
// coefficients were not".
QString writeProgressText(const WriteProgress& progress, Language language);

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
    const ComPort& port() const { return port_; }
    OperatorDialogs& dialogs() { return dialogs_; }
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
    bool readChannelGroups();          // the channel parameters
    bool writeEverything();            // parameters, adjust blocks, calibration
    bool readAdjustBlocks();
    bool writeAdjustBlocks();
    bool readEverything();             // information, parameters, adjust, calibration
    bool confirmAndWriteModuleInfo();  // the information write after "Only one module."
    bool balanceAndReadBack();         // balance, settle, read everything

    // A request that failed, told: "Open COM port fail.", "No respond."
    // (not during a search, where a silent address is normal) or "Return
    // data fail.".
    void tell(const Request& request, Failure failure);
    // A notice said now, or kept while notices are kept.
    void tell(const Notice& notice);
    // The operator's message of a notice, in one place.
    void say(const Notice& notice);
    // From now on notices go into `kept` instead of being said (a search
    // line in a thread of its own hands them back); null says them again.
    void keepNotices(QList<Notice>* kept) { kept_ = kept; }

    // How many groups and calibration pairs a module of this many channels has.
    static int groupCount(int channelCount);
    static int pairCount(int channelCount);

    // A line held for a flow against every other Velmor program (LineLock),
    // as long as this object lives. Holds of one line nest: only the
    // outermost takes the line and lets it go. A line that stays busy through
    // the wait is not held; held() is false and busyHolder() names who has it.
    class LineHold {
    public:
        LineHold(Operations& operations, const PortEntry* port, LineActivity activity);
        ~LineHold();
        LineHold(const LineHold&) = delete;
        LineHold& operator=(const LineHold&) = delete;
        bool held() const { return held_; }

    private:
        Operations& operations_;
        QString device_;
        bool held_ = true;
        bool refusedHere_ = false;  // this hold found the line busy
    };
    // The current module's line, held for a flow of that kind.
    LineHold holdLine(LineActivity activity);
    // Who held the line that a hold found busy last.
    const LineHolder& busyHolder() const { return busyHolder_; }
    // The port of the current module, or null when none is listed under its number.
    const PortEntry* currentPort() const;
    // "SIM1 is in use by velmor-cli (pid 4242) writing a module; nothing was sent."
    static QString lineBusyText(const QString& portName, const LineHolder& holder, Language language);

signals:
    void commandsEnabled(bool enabled);  // EnableCommands
    // A request is about to go out; its block says what it is about (the
    // window selects the block's tab, locks its panel and shows the frame).
    void requestStarted(const velmor::Request& request);
    // The exchange is over, or never began because the port would not open.
    void requestEnded(const velmor::Request& request, bool portOpened);
    // The module's record changed as a whole (model, channel count, grids).
    void moduleRefreshed();
    // A write chain stopped after some of its requests went out: the module
    // holds part of what was sent.
    void writeStoppedPartway(const velmor::WriteProgress& progress);
    // A request was not sent: another program held `port` all the while it
    // was waited for. Its message ("Open COM port fail.") has been shown.
    void lineBusy(const velmor::PortEntry& port, const velmor::LineHolder& holder);

private:
    enum class Family { ReadChannels, WriteChannels, ReadAdjust, WriteAdjust, ReadCalibration, WriteCalibration };
    bool single(const Request& request);
    bool step(Family family, int index);
    bool chain(Family family);
    // A write chain of these families, its progress told when it stops partway.
    bool writeChain(std::initializer_list<Family> families);
    bool stop();
    // Runs a button's sequence with sequenceDone false while it runs, its
    // line held throughout.
    template <typename Body>
    bool sequence(LineActivity activity, Body body);
    // A request that never went out (the port would not open, or the line
    // stayed busy): told, the exchange marked so, the panel back.
    bool notSent(const Request& request, Failure why);

    SetupState& state_;
    ComPort& port_;
    OperatorDialogs& dialogs_;
    Exchange exchange_;
    // Lines held by this object's flows, by device, with how deep the holds nest.
    struct Held {
        std::unique_ptr<LineLock> lock;
        int depth = 0;
        bool busy = false;  // an outer hold found it busy
    };
    std::map<QString, Held> held_;
    LineHolder busyHolder_;
    QList<Notice>* kept_ = nullptr;
    WriteProgress writing_;
    bool sequenceDone_ = true;
    bool abandoned_ = false;
    QEventLoop* settling_ = nullptr;
};

}  // namespace velmor
