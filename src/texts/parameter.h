#pragma once

#include "language.h"

// Channel-parameter texts of the channel grid. Texts that read as in the
// module-information lists ("未知", "无", "4mA恒流源") are texts::option's.
namespace velmor::texts::parameter {

inline constexpr Text kNoSetup{"无程序设置", "No Setup"};
// A module without bridge balance reads "Unknown" in English: deliberate, kept.
inline constexpr Text kBalanceNoSetup{"无程序设置", "Unknown"};

// Excitation, by excitationType.
inline constexpr Text kExcitationOpen{"断开", "Open"};
inline constexpr Text kExcitation10V{"10.0V", "10.0V"};
inline constexpr Text kExcitation5V{"5.0V", "5.0V"};
inline constexpr Text kExcitation2V5{"2.5V", "2.5V"};
inline constexpr Text kExcitation1V25{"1.25V", "1.25V"};
inline constexpr Text kExcitation4mA{"4mA", "4mA"};
inline constexpr Text kExcitation100uA{"100uA", "100uA"};
// Under excitationType 3 the open setting reads "断开" in English as well, on purpose.
inline constexpr Text kExcitationOpenAll{"断开", "断开"};

inline constexpr Text kDcCoupling{"DC耦合", "DC Coupling"};
inline constexpr Text kAcCoupling{"AC耦合", "AC Coupling"};

inline constexpr Text kCutoffBypass{"直通", "Bypass"};
inline constexpr Text kCutoff10Hz{"10Hz", "10Hz"};
inline constexpr Text kCutoff1KHz{"1KHz", "1KHz"};

inline constexpr Text kIntegralOne{"一次积分", "One Integral"};
inline constexpr Text kIntegralTwo{"二次积分", "Two Integral"};

}  // namespace velmor::texts::parameter
