#pragma once

#include "language.h"

// The grey reference columns of the channel grid and the titles of its frame.
namespace velmor::texts::reference {

inline constexpr Text kHeaderBridge{"桥型", "Bridge"};
inline constexpr Text kHeaderCoef{"应变系数", "Coef."};
inline constexpr Text kHeaderSensitivity{"灵敏度mv/V", "S. (mv/V)"};
inline constexpr Text kHeaderRange{"最大量程", "Range"};
inline constexpr Text kHeaderUnit{"单位", "Unit"};
inline constexpr Text kHeaderType{"类型", "Type"};

inline constexpr Text kBridgeFull{"全桥", "Full"};
inline constexpr Text kBridgeHalf{"半桥", "1/2"};
inline constexpr Text kBridgeQuarter{"1/4桥", "1/4"};

// Units do not change with the language.
inline constexpr Text kUnitStrain{"με", "με"};
inline constexpr Text kUnitPressure{"V", "V"};

inline constexpr Text kTypeStrain{"应变", "Strain"};
inline constexpr Text kTypePressure{"压力", "Pressure"};

inline constexpr Text kFrameTitle{"参数设置", "Channel Setup"};
// With reference columns; the lower-case "setup" in English is deliberate.
inline constexpr Text kFrameTitleWithReference{
    "参数设置 - 灰色区域的数据为参考值，提供量程等参数与放大倍数的关系，不保存在模块中。",
    "Channel setup"};

}  // namespace velmor::texts::reference
