#pragma once

#include "language.h"

// Captions of the two cut-off choices when the typed frequency is out of reach.
namespace velmor::texts::frequency {

inline constexpr Text kOverflow{"超过最大值", "Overflow"};
inline constexpr Text kTooLow{"低于最小值", "Too low"};

}  // namespace velmor::texts::frequency
