#pragma once

#include "language.h"

// The window as a desktop program: its command line, the language choice,
// the status bar's account of what runs and what was done, hints, files.
namespace velmor::texts::desktop {

inline constexpr Text kUsage{
    "用法：velmor [--lang zh|en] [FILE]\n"
    "\n"
    "打开模块参数设置窗口；给出 FILE 时像“文件 > 打开”一样打开这个配置文件。\n"
    "\n"
    "选项：\n"
    "  --lang zh|en  本次运行的语言（默认按“视图 > 语言”的选择）。\n"
    "  -h, --help    显示本帮助。\n"
    "  --version     显示程序名和版本。\n",
    "Usage: velmor [--lang zh|en] [FILE]\n"
    "\n"
    "Opens the module setup window; with FILE, opens that configuration file as File > Open does.\n"
    "\n"
    "Options:\n"
    "  --lang zh|en  Language of this run (default: the choice under View > Language).\n"
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

// The window's title: the module, the file, the program.
inline constexpr Text kTitleModule{"%1（地址 %2）", "%1 at address %2"};
inline constexpr Text kTitleSeparator{" — ", " — "};

}  // namespace velmor::texts::desktop
