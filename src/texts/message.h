#pragma once

#include "language.h"

// Message-box texts and titles. Every operator-visible sentence lives in this
// catalogue (and its siblings for option lists and parameter texts); no other
// file spells one out.
namespace velmor::texts::message {

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

// The line after a failure message: "PATH: the system's reason" (a file, a
// port), or "PATH is not a regular file." when there is no reason (a FIFO,
// a device).
inline constexpr Text kReason{"%1：%2", "%1: %2"};
inline constexpr Text kNotRegularFile{"%1 不是普通文件。", "%1 is not a regular file."};
QString fileFailure(const QString& path, const QString& reason, Language language);

// Open of a file shorter than a module's record, said beside what Open does:
// "%1" the file, "%2" its size, "%3" 8679, "%4" the first channel kept.
inline constexpr Text kShortFile{"%1 只有 %2 字节（应为 %3 字节）：第 %4-16 通道保留了原来的值",
                                 "%1 holds %2 of %3 bytes: channels %4-16 kept their values"};
inline constexpr Text kShortFileNoInfo{"%1 只有 %2 字节（应为 %3 字节）：部分模块信息和全部通道保留了原来的值",
                                       "%1 holds %2 of %3 bytes: part of the module information and every channel "
                                       "kept their values"};
QString shortFile(const QString& path, qsizetype size, qsizetype whole, int firstKept, bool infoWhole, Language language);

// A line another Velmor program holds: "%1" the line, "%2" the program,
// "%3" its process, "%4" what it does.
inline constexpr Text kLineBusy{"%1 正被 %2（进程 %3）使用，它%4；什么也没有发送。",
                                "%1 is in use by %2 (pid %3) %4; nothing was sent."};
inline constexpr Text kLineActivities[] = {
    {"正在搜索", "searching"},           {"正在读取模块", "reading a module"},
    {"正在写入模块", "writing a module"}, {"正在进行桥路平衡", "balancing bridges"},
    {"正在召唤模块", "beckoning"},
};

// A write chain that stopped partway, said beside "No respond." or "Return
// data fail.": "groups 1-4 were written; the coefficients were not." The
// "was" forms are for one request alone.
inline constexpr Text kWereWritten{"%1已写入", "%1 were written"};
inline constexpr Text kWasWritten{"%1已写入", "%1 was written"};
inline constexpr Text kWereNot{"%1没有写入", "%1 were not"};
inline constexpr Text kWasNot{"%1没有写入", "%1 was not"};
inline constexpr Text kProgressJoin{"；", "; "};
inline constexpr Text kSentenceEnd{"。", "."};
inline constexpr Text kListAnd{"和", " and "};
inline constexpr Text kWrittenGroup{"第 %1 组参数", "group %1"};
inline constexpr Text kWrittenGroups{"第 %1-%2 组参数", "groups %1-%2"};
inline constexpr Text kWrittenAdjust{"第 %1 个调整块", "adjust block %1"};
inline constexpr Text kWrittenAdjusts{"第 %1-%2 个调整块", "adjust blocks %1-%2"};
inline constexpr Text kWrittenPair{"第 %1 对校正系数", "coefficient pair %1"};
inline constexpr Text kWrittenPairs{"第 %1-%2 对校正系数", "coefficient pairs %1-%2"};
inline constexpr Text kWrittenCoefficients{"校正系数", "the coefficients"};

// What a search adds to its report: "%1" the module's ordinal, "%2" its
// line, "%3" its address.
inline constexpr Text kNotReadWholly{"第 %1 个模块（%2，地址 %3）没有完整读出。",
                                     "Module %1 (%2, address %3) could not be read wholly."};

QString openPortFail(const QString& portName, Language language);
QString foundModules(int count, Language language);

}  // namespace velmor::texts::message
