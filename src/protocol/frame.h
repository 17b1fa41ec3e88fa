#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <array>

namespace velmor {

// Envelope shared by both directions:
//   AA AA N address command data... checksum
// N counts the bytes from the address up to, not including, the checksum; the
// checksum is the sum of those N bytes modulo 256.
inline constexpr quint8 kFrameStart = 0xAA;
inline constexpr int kLengthOffset = 2;
inline constexpr int kAddressOffset = 3;
inline constexpr int kCommandOffset = 4;
inline constexpr int kGroupOffset = 5;
inline constexpr int kDataOffset = 6;

inline constexpr int kFullFrameLength = 55;    // N = 51
inline constexpr int kFullN = 51;
inline constexpr int kShortRequestLength = 7;  // N = 3
inline constexpr int kAckLength = 10;          // balance request and its reply, N = 6
inline constexpr int kAckN = 6;

inline constexpr quint8 kBroadcastAddress = 255;
inline constexpr quint8 kReplyOffset = 0x30;   // a reply echoes the command plus 0x30

enum Command : quint8 {
    kCmdBeckon = 16,
    kCmdRead = 17,
    kCmdWrite = 18,
    kCmdBalance = 20,
};

// Group selector (frame byte 5), one numbering for the whole protocol.
inline constexpr int kGroupInfo = 0;
inline constexpr int kGroupChannelsFirst = 1;     // 1..4: channel parameters of 4 channels
inline constexpr int kGroupAdjustFirst = 5;       // 5..8: adjust blocks of the same channels
inline constexpr int kGroupCalibrationFirst = 9;  // 9..16: calibration of a channel pair
inline constexpr int kChannelGroups = 4;
inline constexpr int kChannelsPerGroup = 4;
inline constexpr int kCalibrationPairs = 8;

using Frame = std::array<quint8, kFullFrameLength>;

// Sum of frame bytes 3 .. 3+n-1, modulo 256.
quint8 checksumOf(const quint8* frame, int n);

// Writes the two start bytes, N, address, command and group selector of a frame
// of N = n, and the checksum at byte n+3 over what stands in bytes 3..n+2.
void sealFrame(Frame& frame, int n, quint8 address, quint8 command, quint8 group);

QByteArray toBytes(const Frame& frame, int length);

}  // namespace velmor
