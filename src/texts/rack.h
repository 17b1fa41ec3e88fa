#pragma once

#include "language.h"

// Rack files: why one is refused. "%1", "%2" are filled in by QString::arg.
namespace velmor::texts::rack {

inline constexpr Text kNotJson{"%1 不是机架文件：不是 JSON 文档（%2）。", "%1 is not a rack file: it is not a JSON document (%2)."};
inline constexpr Text kNotRack{"%1 不是机架文件。", "%1 is not a rack file."};
inline constexpr Text kUnknownVersion{"%1 的格式版本 %2 不可识别（本程序识别版本 %3）。",
                                      "%1 has format version %2, which this program does not know (it knows %3)."};
inline constexpr Text kBadField{"%1 中“%2”不正确。", "%1: the field \"%2\" is missing or wrong."};
inline constexpr Text kBadModule{"%1 中第 %2 个模块的“%3”不正确。", "%1: module %2 has a missing or wrong \"%3\"."};
inline constexpr Text kBadImage{"%1 中第 %2 个模块的设置已损坏（SHA-256 不符）。",
                                "%1: the setup of module %2 is damaged (its SHA-256 does not match)."};
inline constexpr Text kTwice{"%1 中 %2 地址 %3 出现了两次。", "%1 names %2 at address %3 twice."};
inline constexpr Text kCannotRead{"无法读取 %1（%2）。", "%1 cannot be read (%2)."};

// velmor-cli rack.
inline constexpr Text kRackSynopsis{"save|check FILE [--port P]...", "save|check FILE [--port P]..."};
inline constexpr Text kRackSummary{"把所有线路上的全部模块保存为机架文件，或与机架文件核对（全部相同退出码 0，否则 1）。",
                                   "Save every module on every line as a rack file, or check the lines against one (exit 0 all same, 1 otherwise)."};
inline constexpr Text kRackUsage{"用法：velmor-cli rack save|check FILE [--port P]...", "Usage: velmor-cli rack save|check FILE [--port P]..."};
inline constexpr Text kNotWhollyRead{"%1 地址 %2 的模块没有完整读取，没有存入机架文件。",
                                     "The module on %1 at address %2 was not read wholly and is not in the rack file."};
inline constexpr Text kCannotWrite{"无法写入 %1（%2）。", "%1 cannot be written (%2)."};
// A module's state in a check, as the table shows it.
inline constexpr Text kSame{"相同", "same"};
inline constexpr Text kDifferent{"不同", "different"};
inline constexpr Text kMissing{"无应答", "missing"};
inline constexpr Text kForeign{"不是同一模块", "foreign"};
inline constexpr Text kExtra{"多出", "extra"};

}  // namespace velmor::texts::rack
