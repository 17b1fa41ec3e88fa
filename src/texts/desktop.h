#pragma once

#include "language.h"

// The window as a desktop program: its command line, the language choice,
// the status bar's account of what runs and what was done, hints, files.
namespace velmor::texts::desktop {

inline constexpr Text kUsage{
    "用法：velmor [--lang zh|en] [--history STORE|--no-history] [FILE]\n"
    "\n"
    "打开模块参数设置窗口；给出 FILE 时像“文件 > 打开”一样打开这个配置文件。\n"
    "\n"
    "选项：\n"
    "  --lang zh|en  本次运行的语言（默认按“视图 > 语言”的选择）。\n"
    "  --history STORE  历史记录库：一个 SQLite 文件，或 postgresql://用户@主机:端口/库\n"
    "                （默认为 VELMOR_HISTORY，否则是用户数据目录中的 velmor/history.sqlite）。\n"
    "  --no-history  本次运行不写历史记录。\n"
    "  -h, --help    显示本帮助。\n"
    "  --version     显示程序名和版本。\n",
    "Usage: velmor [--lang zh|en] [--history STORE|--no-history] [FILE]\n"
    "\n"
    "Opens the module setup window; with FILE, opens that configuration file as File > Open does.\n"
    "\n"
    "Options:\n"
    "  --lang zh|en  Language of this run (default: the choice under View > Language).\n"
    "  --history STORE  The history store: an SQLite file or postgresql://user@host:port/db\n"
    "                (default: VELMOR_HISTORY, else velmor/history.sqlite in the user's data folder).\n"
    "  --no-history  Record nothing in the history for this run.\n"
    "  -h, --help    Show this help.\n"
    "  --version     Print the program's name and version.\n"};
inline constexpr Text kOneFileOnly{"只能打开一个文件：%1。", "Only one file can be opened: %1."};

// View > Language. The choice is kept in the settings; the window is built
// in one language and takes a new one at its next start.
inline constexpr Text kMnuViewLanguage{"界面语言(&G)", "Lan&guage"};
inline constexpr Text kLanguageFollowSystem{"跟随系统(&S)", "Follow the &system"};
inline constexpr Text kLanguageChinese{"中文(&C)", "中文(&C)"};
inline constexpr Text kLanguageEnglish{"English(&E)", "&English"};
inline constexpr Text kLanguageNextStart{"下次启动时生效", "Applies from the next start"};
inline constexpr Text kLanguageChosen{"界面语言已选定：%1，下次启动时生效。", "Language chosen: %1; it applies from the next start."};

// The status bar after a file was opened or saved.
inline constexpr Text kOpened{"已打开 %1", "Opened %1"};
inline constexpr Text kSaved{"已保存到 %1", "Saved to %1"};

// The status bar while a search asks a line's addresses: the line, the
// address, and how far the line's search is.
inline constexpr Text kAsking{"%1：正在询问地址 %2（第 %3 个，共 %4 个）", "%1: asking address %2 (%3 of %4)"};

// The status bar after an operation: what was done ("%1" names the module,
// as kModuleOnLine; "%2" the channel group or the adjust block), then how
// many frames went out and how long it took.
inline constexpr Text kModuleOnLine{"%3 地址 %4 上的 %1 %2", "%1 %2 on %3 at %4"};
inline constexpr Text kFlowSummary{"%1：%2 帧，%3 秒", "%1: %2 frames, %3 s"};
inline constexpr Text kDidReadEverything{"读取了%1的全部", "Read everything of %1"};
inline constexpr Text kDidWriteEverything{"向%1发送了全部通道", "Sent every channel to %1"};
inline constexpr Text kDidReadChannelGroup{"读取了%1的 %2", "Read %2 of %1"};
inline constexpr Text kDidWriteChannelGroup{"向%1发送了 %2", "Sent %2 to %1"};
inline constexpr Text kDidReadChannelGroups{"读取了%1的全部通道", "Read every channel of %1"};
inline constexpr Text kDidBalance{"%1 桥路平衡并读回", "Balanced %1 and read it back"};
inline constexpr Text kDidReadAdjustBlock{"读取了%1的第 %2 组调整值", "Read adjust block %2 of %1"};
inline constexpr Text kDidWriteAdjustBlock{"向%1发送了第 %2 组调整值", "Sent adjust block %2 to %1"};
inline constexpr Text kDidReadAdjustBlocks{"读取了%1的全部调整值", "Read every adjust value of %1"};
inline constexpr Text kDidWriteAdjustBlocks{"向%1发送了全部调整值", "Sent every adjust value to %1"};
inline constexpr Text kDidReadInfo{"读取了%1的模块信息", "Read the information of %1"};
inline constexpr Text kDidWriteInfo{"向%1写入了模块信息", "Wrote the information of %1"};
inline constexpr Text kDidBeckon{"召唤了 %1 上的模块", "Beckoned the module on %1"};
inline constexpr Text kDidSearch{"搜索了 %1 条线路", "Searched %1 lines"};

// File > Recent Files, and a file of that list that is no longer there.
inline constexpr Text kMnuFileRecent{"最近的文件(&R)", "&Recent Files"};
inline constexpr Text kRecentGone{"文件 %1 已不存在，已从最近的文件中去掉。", "The file %1 is gone; it was taken off the recent files."};

// The window's title: the module, the file, the program.
inline constexpr Text kTitleModule{"%1（地址 %2）", "%1 at address %2"};
inline constexpr Text kTitleSeparator{" — ", " — "};

// Edits shown and not yet sent to a module: a marked cell's description
// ("%1" is what the module holds), the status bar's count, one module's
// edits ("%1" the module as kTitleModule names it, "%2" its cells), and the
// last message before the window closes with edits not sent ("%1" what the
// save said, "%2" the modules' edits).
inline constexpr Text kUnsentCell{"已修改，未发送：模块中为 %1。", "Edited, not sent: the module holds %1."};
inline constexpr Text kUnsentCount{"未发送的修改：%1 处", "Edits not sent: %1"};
inline constexpr Text kUnsentOfModule{"%1：%2", "%1: %2"};
inline constexpr Text kNameSeparator{"、", ", "};
inline constexpr Text kClosingWithUnsent{"%1。未发送到模块的修改：%2", "%1. Edits not sent to the modules: %2"};

}  // namespace velmor::texts::desktop
