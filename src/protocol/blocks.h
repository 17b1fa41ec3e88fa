#pragma once

#include "frame.h"
#include "model/module_table.h"

namespace velmor {

// A reply's bytes from the address on: p[i] is frame byte 3+i, so p[0] is the
// address, p[1] the command, p[2] the group selector and p[3] the first data
// byte. The parsers copy N+1 bytes (checksum included) into a zeroed payload.
inline constexpr int kPayloadBytes = 52;
using Payload = std::array<quint8, kPayloadBytes>;

namespace layout {
inline constexpr int kData = 3;               // payload index of the first data byte

// Channel-parameter group: four 12-byte blocks, channel j at kData + 12j.
inline constexpr int kChannelBlock = 12;
inline constexpr int kExcitation = 0;
inline constexpr int kBalance = 1;            // 2 bytes
inline constexpr int kCouplingIntegral = 3;   // integral high nibble, coupling low nibble
inline constexpr int kGain = 4;
inline constexpr int kCutoff = 5;             // 2 bytes
inline constexpr int kHold = 7;
inline constexpr int kZeroAdjust = 8;         // one byte by design
inline constexpr int kGainAdjust = 9;         // 2 bytes
inline constexpr int kFlags = 11;

// Adjust block: four 12-byte blocks; entries 0..3 of each table.
inline constexpr int kZeroAdjustTable = 0;    // 1 byte per entry
inline constexpr int kGainAdjustTable = 4;    // 2 bytes per entry

// Calibration pair of every other model: 16 bytes per channel.
inline constexpr int kCalibrationBlock = 16;
inline constexpr int kGainCoef = 0;           // 2 bytes per entry
inline constexpr int kZeroCoef = 8;           // 2 bytes per entry
// Calibration pair of "TM-B8" (hasWideCalibration): 22 bytes per channel, gain coefficients only.
inline constexpr int kWideCalibrationBlock = 22;

// Module information in the write request and the full-read reply.
inline constexpr int kInfoAddress = kData;    // the address the module is to take
inline constexpr int kInfoNumber = kData + 1; // 2 bytes
inline constexpr int kInfoCodes = kData + 3;  // 11 capability codes
inline constexpr int kInfoTail = kData + 14;
inline constexpr int kInfoTailSent = 34;      // the write request has room for 34 tail bytes
inline constexpr int kInfoTailRead = 35;      // a reply fills 35; the last is its checksum
// Module information in a channel-parameter reply of group 0: one byte earlier.
inline constexpr int kShortInfoNumber = kData;
inline constexpr int kShortInfoCodes = kData + 2;
inline constexpr int kShortInfoTail = kData + 13;
}  // namespace layout

// Writers fill frame bytes 6..53 of a 55-byte frame from a record. Readers fill a
// record from a payload. Group g is 0..3, pair k is 0..7.
void putChannelGroup(const ModuleRecord& record, int g, Frame& frame);
void takeChannelGroup(const Payload& p, int g, ModuleRecord& record);

void putAdjustBlock(const ModuleRecord& record, int g, Frame& frame);
void takeAdjustBlock(const Payload& p, int g, ModuleRecord& record);

// The layout follows the record's modelCode.
void putCalibrationPair(const ModuleRecord& record, int k, Frame& frame);
void takeCalibrationPair(const Payload& p, int k, ModuleRecord& record);

// Module information as the write request carries it (address to take in byte
// 6, infoTail bytes 0..33).
void putInfoBlock(const ModuleRecord& record, Frame& frame);
// Module information of a full-read reply: recognises the model from its code,
// then copies the eleven codes and infoTail bytes 0..34.
void takeInfoBlock(const Payload& p, ModuleRecord& record);
// Module information of a channel-parameter reply of group 0.
void takeShortInfoBlock(const Payload& p, ModuleRecord& record);

}  // namespace velmor
