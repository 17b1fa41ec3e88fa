#pragma once

#include "language.h"

// Message-box texts and titles. Every operator-visible sentence lives in this
// catalogue (and its siblings for option lists and parameter texts); no other
// file spells one out.
namespace velmor::msg {

inline constexpr Text kTitle{"模块参数设置", "Module Setup"};
// Port-open failures of the request flows carry titles of their own; both
// spellings are deliberate.
inline constexpr Text kOpenFailTitle{"模块参数设置", "Error"};
inline constexpr Text kBalanceOpenFailTitle{"模块参数设置", "Module setup"};

inline constexpr Text kNoRespond{"通讯失败，没有响应。", "No respond."};
inline constexpr Text kReturnDataFail{"返回数据错误。", "Return data fail."};
inline constexpr Text kOpenComPortFail{"打开串口失败。", "Open COM port fail."};
inline constexpr Text kNoComPort{"当前系统中没有串口，无法正常操作。", "No COM port in the computer."};
inline constexpr Text kOnlyOneModule{"确定当前串口中连接的模块只有一个。", "Only one module."};
inline constexpr Text kNoModuleFound{"没有发现模块。", "No module to be found."};
inline constexpr Text kOpenConfigFail{"打开配置文件操作失败!", "Open configure file fail!"};
inline constexpr Text kInputDataError{"输入数据错误", "Input data error."};
// The table holds 33 modules; a search that finds more stops there.
inline constexpr Text kModuleTableFull{"模块表已满：搜索在找到 33 个模块后停止。",
                                       "The module table is full: the search stopped at 33 modules."};

// "Open " + port + " fail." and "Found " + n + " modules.": the pieces around
// the inserted value.
inline constexpr Text kOpenPortPrefix{"打开串口", "Open "};
inline constexpr Text kOpenPortSuffix{"失败。", " fail."};
inline constexpr Text kFoundPrefix{"共发现", "Found "};
inline constexpr Text kFoundSuffix{"个模块。", " modules."};

QString openPortFail(const QString& portName, Language language);
QString foundModules(int count, Language language);

}  // namespace velmor::msg
