#pragma once

#include "language.h"

// Why a field of a channel cannot take a value: what the channel grid's rules
// say of an assignment (edit/field_assignment.h). English reasons end in their
// own full stop, Chinese ones do not.
namespace velmor::texts::assignment {

inline constexpr Text kNoSuchField{"没有字段 %1。字段有：%2", "There is no field %1. The fields are: %2."};
inline constexpr Text kFieldNoCapability{"%1 没有 %2 的设置（能力代码为 0）", "The %1 has no %2 setting (its capability code is 0)."};
inline constexpr Text kFieldReadOnly{"%1 的参考值只显示，不能修改", "The reference values of a %1 are shown, not edited."};
inline constexpr Text kFieldNoColumn{"%1 的通道表格没有 %2 列", "The channel grid of a %1 has no %2 column."};
inline constexpr Text kFieldUnknownCapability{"%1 的 %2 能力代码未知，没有可选项",
                                              "The %1's capability code for %2 is unknown; it offers no items."};
inline constexpr Text kUnitFollowsType{"单位随 type 而定，不能单独设置", "The unit follows the type and is not set on its own."};
inline constexpr Text kNoSuchItem{"%1 不是 %2 的选项。可选：%3", "%1 is not an item of %2. The items are: %3."};
inline constexpr Text kNotNegative{"%1 取 0 或更大的数", "%1 takes a number of 0 or more."};
inline constexpr Text kWholeNumberUpTo{"%1 取 0 到 %2 的整数", "%1 takes a whole number from 0 to %2."};
inline constexpr Text kCutoffLimits{"%1：%2 的截止频率取 %3 到 %4 Hz", "%1: the cut-off of a %2 takes %3 to %4 Hz."};

}  // namespace velmor::texts::assignment
