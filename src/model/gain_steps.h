#pragma once

#include <QString>

#include <span>

namespace velmor {

// gainType 0 offers no gain and 8 and above are unknown.
inline constexpr int kGainTypeCount = 8;

// The gain steps of a gainType, smallest first; empty outside 1..7.
std::span<const int> gainSteps(int gainType);

// The steps as the lists show them: "1,2,5,10".
QString gainStepsText(int gainType);

}  // namespace velmor
