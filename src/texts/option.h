#pragma once

#include "language.h"

// Items of the module-information lists, one per capability code. The gain
// steps are numbers and the model names are the models' own; both are kept
// with the model, not here.
namespace velmor::texts::option {

inline constexpr Text kNo{"无", "No"};
inline constexpr Text kYes{"有", "Yes"};
inline constexpr Text kUnknown{"未知", "Unknown"};

inline constexpr Text kExcitationCurrent{"4mA恒流源", "4mA"};
inline constexpr Text kExcitationVoltages{"10V,5.0V,2.5V,1.25V", "10V,5.0V,2.5V,1.25V"};
// "断开" in the English list too: the same spelling as the channel setting.
inline constexpr Text kExcitationAll{"4mA,100uA,10V,5.0V,2.5V,1.25V,断开",
                                     "4mA,100uA,10V,5.0V,2.5V,1.25V,断开"};

inline constexpr Text kFilterContinuous{"连续截止频率", "Continue"};
inline constexpr Text kFilterSteps{"直通,10Hz,1KHz", "Bypass,10Hz,1KHz"};
inline constexpr Text kFilter50k{"50k连续", "50k"};
inline constexpr Text kFilter30k{"30k连续", "30k"};

inline constexpr Text kAdjust10Bit{"10位", "10 bit"};
inline constexpr Text kAdjust12Bit{"12位", "12 bit"};
inline constexpr Text kAdjust8Bit{"8位", "8 bit"};

}  // namespace velmor::texts::option
