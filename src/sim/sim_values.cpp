#include "sim_values.h"

#include "model/gain_steps.h"
#include "model/models.h"
#include "protocol/blocks.h"

#include <QRandomGenerator>

#include <algorithm>
#include <initializer_list>

namespace velmor::sim {
namespace {

struct Capabilities {
    quint8 codes[kCapabilityCount];  // in wire order, modelCode first
};

// One row per model code; version (second column) gets a per-module offset.
constexpr Capabilities kCapabilities[kModelCount] = {
    //  model ver exc bal ac gain filt hold zero adj integ
    {{0, 10, 1, 0, 1, 1, 2, 0, 0, 0, 0}},  // TM-A4
    {{1, 10, 1, 0, 1, 2, 2, 1, 0, 1, 0}},  // TM-A8
    {{2, 10, 1, 0, 1, 2, 1, 1, 0, 0, 0}},  // TM-C16
    {{3, 10, 2, 1, 1, 4, 4, 1, 1, 2, 0}},  // TM-B8
    {{4, 10, 2, 1, 0, 3, 3, 1, 1, 1, 0}},  // TM-B16
    {{5, 10, 3, 1, 1, 6, 1, 0, 1, 3, 1}},  // TM-A8B
    {{6, 10, 1, 0, 1, 5, 1, 1, 0, 0, 1}},  // TM-C8
    {{7, 10, 3, 1, 1, 7, 2, 0, 1, 2, 0}},  // TM-A8D
    {{8, 10, 2, 1, 1, 7, 4, 1, 1, 1, 1}},  // TM-C16D
};

constexpr int kVersionIndex = 1;

// Inclusive value ranges of the generated channel values.
struct Range {
    int low;
    int high;
};
constexpr Range kBalance{0, 65535};
constexpr Range kCoupling{0, 1};
constexpr Range kIntegral{0, 2};
constexpr Range kHold{0, 7};
constexpr Range kZeroAdjust{0, 255};
constexpr Range kFlags{0, 255};
constexpr Range kGainCoef{9000, 11000};  // hundredths around 100
constexpr Range kZeroCoef{0, 2000};      // tenths
constexpr Range kModuleNumber{1, 65535};
constexpr Range kVersionOffset{0, 20};
constexpr Range kByte{0, 255};

// The middle of the balance range and how far a balance may land from it.
constexpr qint32 kBalanceCentre = 32768;
constexpr quint32 kBalanceSpread = 512;

QRandomGenerator seeded(std::initializer_list<quint32> words)
{
    return QRandomGenerator(std::data(words), static_cast<qsizetype>(words.size()));
}

class Values {
public:
    Values(int address, int modelCode, quint32 seed)
        : random_(seeded({static_cast<quint32>(address), static_cast<quint32>(modelCode), seed}))
    {
    }

    int in(Range r) { return r.low + static_cast<int>(random_.bounded(static_cast<quint32>(r.high - r.low + 1))); }

    template <size_t N>
    void fill(std::array<qint32, N>& table, int entries, Range r)
    {
        for (int i = 0; i < entries; ++i)
            table[static_cast<size_t>(i)] = in(r);
    }

private:
    QRandomGenerator random_;
};

// The settings a module of these capabilities really offers, so that its
// channels read as texts rather than "Unknown".
Range excitationCodes(int excitationType)
{
    switch (excitationType) {
    case 1: return {0, 1};
    case 2: return {0, 3};
    case 3: return {0, 6};
    default: return {0, 0};
    }
}

Range gainPositions(int gainType)
{
    return {0, std::max(1, static_cast<int>(gainSteps(gainType).size())) - 1};
}

Range cutoffCodes(int filterType)
{
    switch (filterType) {
    case 2: return {0, 2};
    case 3: return {2, 20000};  // the 50 k scale starts at 2
    default: return {10, 20000};
    }
}

Range gainAdjustValues(int adjustType)
{
    switch (adjustType) {
    case 2: return {0, 4095};
    case 3: return {0, 255};
    default: return {0, 1023};
    }
}

void fillChannel(ChannelRecord& c, const ModuleRecord& m, bool wideCalibration, Values& v)
{
    c.excitation = static_cast<qint16>(v.in(excitationCodes(m.excitationType)));
    c.balanceValue = v.in(kBalance);
    c.coupling = static_cast<qint16>(v.in(kCoupling));
    if (m.excitationType == 1 && c.excitation == 1)
        c.coupling = 1;  // the 4 mA source always runs AC coupled
    c.integral = static_cast<qint16>(v.in(kIntegral));
    c.gain = static_cast<qint16>(v.in(gainPositions(m.gainType)));
    c.cutoff = v.in(cutoffCodes(m.filterType));
    c.holdExponent = static_cast<quint16>(v.in(kHold));
    c.zeroAdjust = v.in(kZeroAdjust);
    c.gainAdjust = v.in(gainAdjustValues(m.adjustType));
    c.channelFlags = static_cast<qint16>(v.in(kFlags));
    v.fill(c.zeroAdjustTable, kAdjustEntries, kZeroAdjust);
    v.fill(c.gainAdjustTable, kAdjustEntries, gainAdjustValues(m.adjustType));
    if (wideCalibration) {
        v.fill(c.gainCoef, kWideGainCoefEntries, kGainCoef);
    } else {
        v.fill(c.gainCoef, kCoefEntries, kGainCoef);
        v.fill(c.zeroCoef, kCoefEntries, kZeroCoef);
    }
}

}  // namespace

ModuleRecord simulatedModule(int address, int modelCode, quint32 seed)
{
    Values v(address, modelCode, seed);
    ModuleRecord m = defaultModule();
    recognizeModel(m, modelCode);
    m.busAddress = static_cast<qint16>(address);
    m.moduleNumber = v.in(kModuleNumber);
    const Capabilities& caps = kCapabilities[modelCode];
    for (int i = 0; i < kCapabilityCount; ++i)
        m.*kCapabilityFields[i] = caps.codes[i];
    m.version = static_cast<quint8>(caps.codes[kVersionIndex] + v.in(kVersionOffset));
    for (int i = 0; i < layout::kInfoTailSent; ++i)
        m.infoTail[static_cast<size_t>(i)] = static_cast<quint8>(v.in(kByte));
    const bool wide = hasWideCalibration(modelCode);
    for (int c = 0; c < m.channelCount; ++c)
        fillChannel(m.channels[static_cast<size_t>(c)], m, wide, v);
    return m;
}

qint32 balancedValue(quint32 seed, int address, int channel, qint32 before)
{
    QRandomGenerator random = seeded({seed, static_cast<quint32>(address), static_cast<quint32>(channel),
                                      static_cast<quint32>(before)});
    return kBalanceCentre - static_cast<qint32>(kBalanceSpread) + static_cast<qint32>(random.bounded(2 * kBalanceSpread));
}

}  // namespace velmor::sim
