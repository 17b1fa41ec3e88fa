#pragma once

#include "fixed_text.h"

#include <QtGlobal>

#include <array>
#include <cstdint>

namespace velmor {

inline constexpr int kModuleSlots = 33;       // records in the table, index 0 to 32
inline constexpr int kChannelSlots = 17;      // channel records per module; slot 16 is spare
inline constexpr int kWiredChannels = 16;     // channels 1 to 16 that replies fill
inline constexpr int kTableEntries = 17;      // entries of each adjust and coefficient array
inline constexpr int kAdjustEntries = 4;      // of them, the adjust entries that travel and show
inline constexpr int kSpareWords = 33;
inline constexpr int kTrailingBytes = 32;
inline constexpr int kInfoTailBytes = 36;

using Table17 = std::array<qint32, kTableEntries>;

// One channel of a module. Value-initialised it is all zeros, which is what the
// spare slot 16 holds for the whole run.
struct ChannelRecord {
    qint16 channelNumber = 0;
    qint16 excitation = 0;
    qint32 balanceValue = 0;   // 0..65535, two bytes on the wire
    qint16 coupling = 0;       // low nibble of its wire byte
    qint16 gain = 0;
    qint32 cutoff = 0;         // 0..65535
    quint16 holdExponent = 0;
    qint16 integral = 0;       // high nibble of the coupling byte
    qint32 zeroAdjust = 0;     // 0..255, one byte on the wire
    qint32 gainAdjust = 0;     // 0..65535
    Table17 zeroAdjustTable{};
    Table17 gainAdjustTable{};
    Table17 zeroCoef{};        // tenths
    Table17 gainCoef{};        // hundredths
    std::array<qint32, kSpareWords> spareBlock{};
    qint32 bridgeType = 0;
    qint32 referenceInt = 0;
    float sensitivity = 0.0f;
    float gaugeCoef = 0.0f;
    float fullRange = 0.0f;
    bool isStrain = false;
    FixedText unitText{};
    qint16 channelFlags = 0;
    std::array<quint8, kTrailingBytes> trailingBlock{};

    bool operator==(const ChannelRecord&) const = default;
};

struct ModuleRecord {
    FixedText modelName{};
    qint16 portNumber = 0;
    qint16 busAddress = 0;
    qint16 channelCount = 0;
    qint32 moduleNumber = 0;   // 0..65535
    // The eleven capability codes, always the module's own statement.
    quint8 modelCode = 0;
    quint8 version = 0;
    quint8 excitationType = 0;
    quint8 balanceType = 0;
    quint8 acCouplingType = 0;
    quint8 gainType = 0;
    quint8 filterType = 0;
    quint8 holdType = 0;
    quint8 zeroType = 0;
    quint8 adjustType = 0;
    quint8 integralType = 0;
    std::array<quint8, kInfoTailBytes> infoTail{};
    std::array<ChannelRecord, kChannelSlots> channels{};

    bool operator==(const ModuleRecord&) const = default;
};

using ModuleTable = std::array<ModuleRecord, kModuleSlots>;

// The eleven capability codes in the order the module sends them.
inline constexpr int kCapabilityCount = 11;
inline constexpr quint8 ModuleRecord::*kCapabilityFields[kCapabilityCount] = {
    &ModuleRecord::modelCode,  &ModuleRecord::version,     &ModuleRecord::excitationType,
    &ModuleRecord::balanceType, &ModuleRecord::acCouplingType, &ModuleRecord::gainType,
    &ModuleRecord::filterType, &ModuleRecord::holdType,    &ModuleRecord::zeroType,
    &ModuleRecord::adjustType, &ModuleRecord::integralType,
};

// Channel slot c (0..15) as it stands before any module has been read: the
// parameter start values and the reference defaults.
ChannelRecord defaultChannel(int channelIndex);

// A module record as it stands at start: model "TM-C16", 16 channels, the default
// capability codes and default channels 0..15; slot 16 stays all zeros.
ModuleRecord defaultModule();

// Everything the program knows for the whole run, in one object rather than
// loose globals. The serial port keeps its own handle (see serial/).
struct SetupState {
    ModuleTable table{};
    int currentModule = 0;
    int moduleCount = 0;
    bool searching = false;
    std::array<qint32, kModuleSlots> channelMask{};
    int parseStatus = 0;
    quint8 pendingCommand = 0;
    int languageMode = 1;

    // Writes the start-up defaults into every record and selects all channels of
    // every module.
    void reset();

    ModuleRecord& current() { return table.at(static_cast<size_t>(currentModule)); }
    const ModuleRecord& current() const { return table.at(static_cast<size_t>(currentModule)); }
    // The current module's channels for the next balance (bit c for channel c).
    qint32& currentMask() { return channelMask.at(static_cast<size_t>(currentModule)); }
    qint32 currentMask() const { return channelMask.at(static_cast<size_t>(currentModule)); }
};

}  // namespace velmor
