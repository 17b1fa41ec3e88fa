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

}  // namespace velmor::texts::rack
