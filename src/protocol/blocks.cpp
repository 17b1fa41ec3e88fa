#include "blocks.h"

#include "model/models.h"

namespace velmor {
namespace {

using namespace layout;

quint8 low(qint32 value) { return static_cast<quint8>(value & 0xFF); }
quint8 high(qint32 value) { return static_cast<quint8>((value >> 8) & 0xFF); }

// Frame byte of payload index i.
quint8& at(Frame& frame, int i) { return frame[static_cast<size_t>(kAddressOffset + i)]; }

void put16(Frame& frame, int i, qint32 value)
{
    at(frame, i) = low(value);
    at(frame, i + 1) = high(value);
}

qint32 get16(const Payload& p, int i)
{
    return p[static_cast<size_t>(i)] + 256 * p[static_cast<size_t>(i + 1)];
}

quint8 get8(const Payload& p, int i) { return p[static_cast<size_t>(i)]; }

ChannelRecord& channel(ModuleRecord& record, int c) { return record.channels.at(static_cast<size_t>(c)); }
const ChannelRecord& channel(const ModuleRecord& record, int c) { return record.channels.at(static_cast<size_t>(c)); }

bool wideCalibration(const ModuleRecord& record) { return hasWideCalibration(record.modelCode); }

}  // namespace

void putChannelGroup(const ModuleRecord& record, int g, Frame& frame)
{
    for (int j = 0; j < 4; ++j) {
        const ChannelRecord& c = channel(record, 4 * g + j);
        const int b = kData + kChannelBlock * j;
        at(frame, b + kExcitation) = low(c.excitation);
        put16(frame, b + kBalance, c.balanceValue);
        at(frame, b + kCouplingIntegral) = static_cast<quint8>((c.integral & 15) * 16 + (c.coupling & 15));
        at(frame, b + kGain) = low(c.gain);
        put16(frame, b + kCutoff, c.cutoff);
        at(frame, b + kHold) = low(c.holdExponent);
        at(frame, b + kZeroAdjust) = low(c.zeroAdjust);
        put16(frame, b + kGainAdjust, c.gainAdjust);
        at(frame, b + kFlags) = low(c.channelFlags);
    }
}

void takeChannelGroup(const Payload& p, int g, ModuleRecord& record)
{
    for (int j = 0; j < 4; ++j) {
        const int index = 4 * g + j;
        ChannelRecord& c = channel(record, index);
        const int b = kData + kChannelBlock * j;
        c.channelNumber = static_cast<qint16>(index);
        c.excitation = get8(p, b + kExcitation);
        c.balanceValue = get16(p, b + kBalance);
        c.coupling = get8(p, b + kCouplingIntegral) & 15;
        c.integral = get8(p, b + kCouplingIntegral) >> 4;
        c.gain = get8(p, b + kGain);
        c.cutoff = get16(p, b + kCutoff);
        c.holdExponent = get8(p, b + kHold);
        c.zeroAdjust = get8(p, b + kZeroAdjust);
        c.gainAdjust = get16(p, b + kGainAdjust);
        c.channelFlags = get8(p, b + kFlags);
    }
}

void putAdjustBlock(const ModuleRecord& record, int g, Frame& frame)
{
    for (int j = 0; j < 4; ++j) {
        const ChannelRecord& c = channel(record, 4 * g + j);
        const int b = kData + kChannelBlock * j;
        for (int i = 0; i < kAdjustEntries; ++i) {
            at(frame, b + kZeroAdjustTable + i) = low(c.zeroAdjustTable[static_cast<size_t>(i)]);
            put16(frame, b + kGainAdjustTable + 2 * i, c.gainAdjustTable[static_cast<size_t>(i)]);
        }
    }
}

void takeAdjustBlock(const Payload& p, int g, ModuleRecord& record)
{
    for (int j = 0; j < 4; ++j) {
        ChannelRecord& c = channel(record, 4 * g + j);
        const int b = kData + kChannelBlock * j;
        for (int i = 0; i < kAdjustEntries; ++i) {
            c.zeroAdjustTable[static_cast<size_t>(i)] = get8(p, b + kZeroAdjustTable + i);
            c.gainAdjustTable[static_cast<size_t>(i)] = get16(p, b + kGainAdjustTable + 2 * i);
        }
    }
}

void putCalibrationPair(const ModuleRecord& record, int k, Frame& frame)
{
    const bool wide = wideCalibration(record);
    for (int j = 0; j < 2; ++j) {
        const ChannelRecord& c = channel(record, 2 * k + j);
        if (wide) {
            const int b = kData + kWideCalibrationBlock * j;
            for (int i = 0; i < kWideGainCoefEntries; ++i)
                put16(frame, b + 2 * i, c.gainCoef[static_cast<size_t>(i)]);
        } else {
            const int b = kData + kCalibrationBlock * j;
            for (int i = 0; i < kCoefEntries; ++i) {
                put16(frame, b + kGainCoef + 2 * i, c.gainCoef[static_cast<size_t>(i)]);
                put16(frame, b + kZeroCoef + 2 * i, c.zeroCoef[static_cast<size_t>(i)]);
            }
        }
    }
}

void takeCalibrationPair(const Payload& p, int k, ModuleRecord& record)
{
    const bool wide = wideCalibration(record);
    for (int j = 0; j < 2; ++j) {
        ChannelRecord& c = channel(record, 2 * k + j);
        if (wide) {
            const int b = kData + kWideCalibrationBlock * j;
            for (int i = 0; i < kWideGainCoefEntries; ++i)
                c.gainCoef[static_cast<size_t>(i)] = get16(p, b + 2 * i);
        } else {
            const int b = kData + kCalibrationBlock * j;
            for (int i = 0; i < kCoefEntries; ++i) {
                c.gainCoef[static_cast<size_t>(i)] = get16(p, b + kGainCoef + 2 * i);
                c.zeroCoef[static_cast<size_t>(i)] = get16(p, b + kZeroCoef + 2 * i);
            }
        }
    }
}

void putInfoBlock(const ModuleRecord& record, Frame& frame)
{
    at(frame, kInfoAddress) = low(record.busAddress);
    put16(frame, kInfoNumber, record.moduleNumber);
    for (int i = 0; i < kCapabilityCount; ++i)
        at(frame, kInfoCodes + i) = record.*kCapabilityFields[i];
    for (int i = 0; i < kInfoTailSent; ++i)
        at(frame, kInfoTail + i) = record.infoTail[static_cast<size_t>(i)];
}

void takeInfoBlock(const Payload& p, ModuleRecord& record)
{
    recognizeModel(record, get8(p, kInfoCodes));
    record.moduleNumber = get16(p, kInfoNumber);
    for (int i = 0; i < kCapabilityCount; ++i)
        record.*kCapabilityFields[i] = get8(p, kInfoCodes + i);
    for (int i = 0; i < kInfoTailRead; ++i)
        record.infoTail[static_cast<size_t>(i)] = get8(p, kInfoTail + i);
}

void takeShortInfoBlock(const Payload& p, ModuleRecord& record)
{
    record.moduleNumber = get16(p, kShortInfoNumber);
    for (int i = 0; i < kCapabilityCount; ++i)
        record.*kCapabilityFields[i] = get8(p, kShortInfoCodes + i);
    for (int i = 0; i < kInfoTailRead; ++i)
        record.infoTail[static_cast<size_t>(i)] = get8(p, kShortInfoTail + i);
}

}  // namespace velmor
