#pragma once

#include "language.h"

// The about box.
namespace velmor::texts::about {

inline constexpr Text kCaption{"关于模块参数设置程序", "About Velmor"};
inline constexpr Text kTitle{"模块参数设置程序", "Velmor  Pelinor Co."};  // two blanks, as it always read
inline constexpr Text kVersionPrefix{"版本 ", "Ver. "};
inline constexpr Text kOk{"确定", "OK"};
inline constexpr Text kSystemInfo{"系统信息(&S)...", "&System Info..."};
inline constexpr Text kSystemInfoUnavailable{"系统信息暂时不可用", "System Information Is Unavailable At This Time"};

// Help > Content when the manual is not where it belongs.
inline constexpr Text kManualMissing{"找不到帮助文件：", "The help file is missing: "};

}  // namespace velmor::texts::about
