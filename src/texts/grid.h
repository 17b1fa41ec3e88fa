#pragma once

#include "language.h"

// Labels of the module-information panel and headings of the channel, adjust
// and coefficient grids.
namespace velmor::texts::grid {

inline constexpr Text kPortLabel{"串口地址", "COM Port"};
inline constexpr Text kModuleLabel{"模块卡号", "Module Index"};

// The module-information labels in panel order.
inline constexpr Text kModelLabel{"产品类型", "Type"};
inline constexpr Text kNumberLabel{"产品序号", "serial num."};
inline constexpr Text kVersionLabel{"版本", "Ver."};
inline constexpr Text kBalanceLabel{"桥平衡", "Balance"};
inline constexpr Text kExcitationLabel{"激励类型", "Excitation"};
inline constexpr Text kCouplingLabel{"AC耦合", "Coupling"};
inline constexpr Text kFilterLabel{"低通滤波", "Filter"};
inline constexpr Text kHoldLabel{"同步采保", "SSH"};
inline constexpr Text kZeroAdjustLabel{"零点调整", "Zero Adjust"};
inline constexpr Text kGainAdjustLabel{"增益调整", "Gain Adjust"};
inline constexpr Text kGainLabel{"放大倍数", "Gain"};
inline constexpr Text kIntegralLabel{"积分", "Integral"};
// Accessible name of the read-only text beside a list, after the list's label.
inline constexpr Text kChosenTextSuffix{"（所选文字）", " (chosen text)"};
// A cell that shows a typed value the record did not take: "%1" is what the
// record keeps, which Send sends.
inline constexpr Text kShownNotStored{"仅显示，未保存：记录中仍为 %1，发送的是它。",
                                      "Shown, not stored: the record keeps %1, which is what Send sends."};

// Channel grid, columns 1 to 10 (column 0 reads "CH" and the channel number).
inline constexpr Text kChannelPrefix{"CH", "CH"};
inline constexpr Text kChannelHeadings[] = {
    {"激励", "Excitation"},  {"桥平衡", "Balance"},  {"自动平衡", "Auto"},
    {"AC耦合", "Coupling"},  {"放大倍数", "Gain"},   {"截止频率", "Cut off"},
    {"同步采保", "SSH"},     {"零点调整", "Zero Adjust"}, {"增益调整", "Gain Adjust"},
    {"积分", "Integral"},
};

// Column 3 of the channel grid: whether the channel takes part in the
// automatic balance (its bit of the module's mask). Marks rather than words,
// so that the column stays as narrow as its heading.
inline constexpr Text kAutoBalanceChosen{"●", "●"};
inline constexpr Text kAutoBalanceLeftOut{"○", "○"};

// Tabs of the channel groups, rebuilt when a module's model is known; the same
// Chinese captions in both languages, on purpose.
inline constexpr Text kChannelGroupTabs[] = {
    {"1-4通道", "1-4通道"}, {"5-8通道", "5-8通道"}, {"9-12通道", "9-12通道"}, {"13-16通道", "13-16通道"},
};

// Adjust and coefficient grids: the heading is followed directly by 1, 2, ...
// (the adjust columns read as the module-information labels kZeroAdjustLabel
// and kGainAdjustLabel).
inline constexpr Text kGainCoefHeading{"增益系数", "Gain Coef"};
inline constexpr Text kZeroCoefHeading{"零点偏移", "Zero Coef"};

}  // namespace velmor::texts::grid
