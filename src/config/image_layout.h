#pragma once

#include "model/module_table.h"

#include <algorithm>

// Where each field of a module record sits in its configuration image. Numbers
// are little-endian, texts one byte per character; every field is naturally
// aligned, and the only gaps are the module part's two padding places.
namespace velmor {

inline constexpr int kImageBytes      = 8716;
// Deliberately 37 bytes short of the image: the spare slot's last bytes are never stored.
inline constexpr int kStoredBytes     = 8679;

namespace moduleImage {
// field at offset            // width in bytes
inline constexpr int kModelName       = 0;     // 20 single-byte characters
inline constexpr int kPortNumber      = 20;    // 2
inline constexpr int kBusAddress      = 22;    // 2
inline constexpr int kChannelCount    = 24;    // 2, then 2 of padding
inline constexpr int kModuleNumber    = 28;    // 4
inline constexpr int kCapabilities    = 32;    // 11, one per code in kCapabilityFields order
inline constexpr int kInfoTail        = 43;    // 36, then 1 of padding
inline constexpr int kChannels        = 80;    // 17 channel records
inline constexpr int kChannelBytes    = 508;   // channel c starts at kChannels + kChannelBytes * c
}  // namespace moduleImage

namespace channelImage {
// field at offset            // width in bytes
inline constexpr int kChannelNumber   = 0;     // 2
inline constexpr int kExcitation      = 2;     // 2
inline constexpr int kBalanceValue    = 4;     // 4
inline constexpr int kCoupling        = 8;     // 2
inline constexpr int kGain            = 10;    // 2
inline constexpr int kCutoff          = 12;    // 4
inline constexpr int kHoldExponent    = 16;    // 2
inline constexpr int kIntegral        = 18;    // 2
inline constexpr int kZeroAdjust      = 20;    // 4
inline constexpr int kGainAdjust      = 24;    // 4
inline constexpr int kZeroAdjustTable = 28;    // 17 x 4
inline constexpr int kGainAdjustTable = 96;    // 17 x 4
inline constexpr int kZeroCoef        = 164;   // 17 x 4
inline constexpr int kGainCoef        = 232;   // 17 x 4
inline constexpr int kSpareBlock      = 300;   // 33 x 4
inline constexpr int kBridgeType      = 432;   // 4
inline constexpr int kReferenceInt    = 436;   // 4
inline constexpr int kSensitivity     = 440;   // 4, IEEE-754 single
inline constexpr int kGaugeCoef       = 444;   // 4, IEEE-754 single
inline constexpr int kFullRange       = 448;   // 4, IEEE-754 single
inline constexpr int kIsStrain        = 452;   // 2, 0 or 0xFFFF
inline constexpr int kUnitText        = 454;   // 20 single-byte characters
inline constexpr int kChannelFlags    = 474;   // 2
inline constexpr int kTrailingBlock   = 476;   // 32
}  // namespace channelImage

static_assert(moduleImage::kChannels + moduleImage::kChannelBytes * kChannelSlots == kImageBytes);

// Start of channel slot c in the image.
constexpr int channelImageStart(int c) { return moduleImage::kChannels + moduleImage::kChannelBytes * c; }

// A file shorter than kStoredBytes replaces only the start of a record: the
// first channel (1-based) that is not wholly read from a file of `size`
// bytes, 17 when every stored byte was read. The module part is read wholly
// from kChannels bytes on.
constexpr int firstChannelNotWhollyRead(qsizetype size)
{
    for (int c = 0; c < kWiredChannels; ++c)
        if (size < std::min<qsizetype>(channelImageStart(c + 1), kStoredBytes))
            return c + 1;
    return kWiredChannels + 1;
}

}  // namespace velmor
