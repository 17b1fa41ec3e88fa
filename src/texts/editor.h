#pragma once

#include "language.h"

// Texts of the channel grid's editors: the captions of the shared list editor,
// the frequency entry's label and the number prompt. The list items that read
// as the cells do are the pages texts::parameter, texts::option and
// texts::reference.
namespace velmor::texts::editor {

// Captions of the list editor cmbGain, by column; the trailing blanks belong to them.
inline constexpr Text kExcitationCaption{"激励设置：", "Excitation:"};
inline constexpr Text kCouplingCaption{"AC耦合设置：", "AC Coupling:"};
inline constexpr Text kGainCaption{"增益设置：", "Gain: "};
inline constexpr Text kCutoffCaption{"截止频率设置：", "Cut off F: "};
inline constexpr Text kHoldCaption{"同步分频设置：", "fre. division:"};
inline constexpr Text kIntegralCaption{"积分设置：", "Integral: "};
inline constexpr Text kBridgeCaption{"通道桥型设置：", "Bridge Type:"};
inline constexpr Text kObjectTypeCaption{"通道测量对象类型：", "Object type: "};

// The label beside the two cut-off choices when a frequency is typed.
inline constexpr Text kFrequencyCaption{"频率选择：", "Frequence:"};

// The integral list reads "One integral" / "two integral" while the cells read
// "One Integral" / "Two Integral": both spellings are deliberate.
inline constexpr Text kIntegralItemOne{"一次积分", "One integral"};
inline constexpr Text kIntegralItemTwo{"二次积分", "two integral"};

// One prompt for whole numbers and decimals alike, and for setting one value
// into several rows of the adjust grid...
inline constexpr Text kPromptTitle{"输入参数", "Input"};
inline constexpr Text kPromptText{"在下面文本框中输入整数值：", "Input number: "};
// ...while the coefficient grid's differs in capital and trailing blank: deliberate.
inline constexpr Text kCalibrationPromptText{"在下面文本框中输入整数值：", "Input Number:"};

// The frequency dialog's buttons; its label is kFrequencyCaption.
inline constexpr Text kOkButton{"确定", "Ok"};
inline constexpr Text kCancelButton{"取消", "Cancel"};

}  // namespace velmor::texts::editor
