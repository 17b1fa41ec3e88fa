#pragma once

// The numbers that a value entered for a module is held to.
namespace velmor {

// A zero adjust travels as one byte.
inline constexpr int kZeroAdjustHighest = 255;
// A typed gain adjust stops at 1023 whatever the converter's resolution.
inline constexpr int kGainAdjustHighest = 1023;

// The bridge-balance value: firmware above version 40 has wider converters
// (4095), but for "TM-C8" (255); older firmware takes 1023.
inline constexpr int kNarrowFirmwareHighest = 40;
inline constexpr int kBalanceHighestOld = 1023;
inline constexpr int kBalanceHighestNew = 4095;
inline constexpr int kBalanceHighestNewTmC8 = 255;

// The module-information boxes.
inline constexpr int kModuleNumberHighest = 65535;
inline constexpr int kVersionHighest = 255;

}  // namespace velmor
