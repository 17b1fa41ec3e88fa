#pragma once

#include "language.h"

// Texts of the rack report (PDF and HTML) and of velmor-cli rack report. Each
// module's part reads as the setup report does, with its texts.
namespace velmor::texts::rack_report {

inline constexpr Text kTitle{"机架设置报告", "Rack Setup Report"};
// The lines under the title: "%1" the time the rack was saved, the lines, the
// number of modules.
inline constexpr Text kSavedAt{"机架保存时间：%1", "Rack saved on %1"};
inline constexpr Text kLines{"线路：%1", "Lines: %1"};
inline constexpr Text kModuleCount{"模块数：%1", "Modules: %1"};
inline constexpr Text kLineSeparator{"、", ", "};
inline constexpr Text kBalanceMarks{"机架文件不保存自动平衡的通道选择：各通道均显示为选中，与刚读出的模块相同。",
                                    "A rack file does not keep the automatic-balance marks: every channel is shown "
                                    "chosen, as for a module just read."};
// The heading of a module's part: "%1" its model, "%2" its module number,
// "%3" the line, "%4" the address.
inline constexpr Text kModuleHeading{"%1 编号 %2 — 线路 %3 地址 %4", "%1 No. %2 — %3, address %4"};

// The report would replace its own rack file: "%1" the report, "%2" the rack file.
inline constexpr Text kOutIsIn{"报告 %1 就是要报告的机架文件 %2；什么也没有写入。",
                               "The report %1 is the rack file %2 it reports on; nothing was written."};

}  // namespace velmor::texts::rack_report
