#pragma once

#include "language.h"

// The command line's own texts: its help, its usage errors and the refusals
// of its guards. "%1", "%2" ... are filled in by QString::arg.
namespace velmor::texts::cli {

inline constexpr Text kUsage{
    "用法：velmor-cli [--json] [--trace] [--log FILE] [--lang zh|en] [--history STORE|--no-history] 命令 [选项]\n"
    "\n"
    "在命令行中设置共用一条串行线的信号调理模块。\n"
    "\n"
    "全局选项：\n"
    "  --json        在标准输出上打印一个 JSON 文档。\n"
    "  --trace       在标准错误上打印发送（\"> \"）和接收（\"< \"）的每一帧。\n"
    "  --log FILE    把本次收发的每一帧以 CSV 追加到 FILE（新文件或空文件先写表头）。\n"
    "  --lang zh|en  消息和文字的语言（默认跟随系统区域设置）。\n"
    "  --history STORE  历史记录库：一个 SQLite 文件，或 postgresql://用户@主机:端口/库\n"
    "                （默认为 VELMOR_HISTORY，否则是用户数据目录中的 velmor/history.sqlite）。\n"
    "  --no-history  本次运行不写历史记录。\n"
    "  -h, --help    显示本帮助；\"velmor-cli 命令 --help\" 说明一个命令。\n"
    "  --version     显示程序名和版本。\n"
    "\n"
    "退出码：0 完成，1 通讯失败，2 用法错误或拒绝执行，\n"
    "3 串口无法打开，4 文件无法读取或写入。\n"
    "\n"
    "命令：\n",
    "Usage: velmor-cli [--json] [--trace] [--log FILE] [--lang zh|en] [--history STORE|--no-history] COMMAND [options]\n"
    "\n"
    "Sets up signal-conditioning modules on a serial line from the shell.\n"
    "\n"
    "Global options:\n"
    "  --json        Print one JSON document on standard output.\n"
    "  --trace       Print every frame sent (\"> \") and received (\"< \") on standard error.\n"
    "  --log FILE    Append every frame of the run to FILE as CSV (a header first when FILE is new or empty).\n"
    "  --lang zh|en  Language of messages and texts (default: from the system locale).\n"
    "  --history STORE  The history store: an SQLite file or postgresql://user@host:port/db\n"
    "                (default: VELMOR_HISTORY, else velmor/history.sqlite in the user's data folder).\n"
    "  --no-history  Record nothing in the history for this run.\n"
    "  -h, --help    Show this help; 'velmor-cli COMMAND --help' describes a command.\n"
    "  --version     Print the program's name and version.\n"
    "\n"
    "Exit codes: 0 done, 1 an exchange failed, 2 usage error or refusal,\n"
    "3 the port would not open, 4 a file could not be read or written.\n"
    "\n"
    "Commands:\n"};
inline constexpr Text kCommandUsage{"用法：%1 %2", "Usage: %1 %2"};
inline constexpr Text kOptionsSynopsis{"[选项]", "[options]"};
inline constexpr Text kShowSynopsis{"[选项] FILE", "[options] FILE"};
inline constexpr Text kReportSynopsis{"[选项] FILE --out REPORT", "[options] FILE --out REPORT"};
inline constexpr Text kEditSynopsis{"[选项] FILE FIELD=VALUE...", "[options] FILE FIELD=VALUE..."};

// Command summaries, in the order the help lists them.
inline constexpr Text kPortsSummary{"列出串口：名称、编号、设备；用 --port 给出的串口也列出。",
                                    "List the serial ports: NAME, NUMBER, DEVICE; ports given with --port too."};
inline constexpr Text kSearchSummary{"在地址 0..16 上搜索串口（默认全部），再完整读取找到的每个模块。",
                                     "Search ports (default: all) at addresses 0..16, then read every module found."};
inline constexpr Text kReadSummary{"完整读取一个模块并打印；--save 保存它的配置文件。",
                                   "Read a module wholly and print it; --save keeps its configuration file."};
inline constexpr Text kWriteSummary{"把配置文件中的参数、调整值和系数发送给一个同型号的模块。",
                                    "Send a configuration file's parameters, adjust values and coefficients to a module of its model."};
inline constexpr Text kWriteInfoSummary{"把文件中的模块信息写入线路上唯一的模块（地址 255）。",
                                        "Write a file's module information to the only module on the line (address 255)."};
inline constexpr Text kBeckonSummary{"让线路上的模块回复它的模块信息。", "Ask the module on the line to answer with its information."};
inline constexpr Text kBalanceSummary{"对所选通道做桥平衡，等待 3 秒，再读取模块。",
                                      "Balance the bridges of the chosen channels, wait 3 s, then read the module."};
inline constexpr Text kShowSummary{"解析一个配置文件并打印其中的记录。", "Decode a configuration file and print its record."};
inline constexpr Text kReportSummary{"把配置文件中模块的设置报告写成 PDF 或单个 HTML 文件（按 --out 的后缀）。",
                                     "Write the setup report of a configuration file's module as PDF or one HTML file (by the suffix of --out)."};
inline constexpr Text kEditSummary{"按通道表格的规则修改配置文件中所选通道的参数，再保存文件。",
                                   "Change channel parameters in a configuration file by the channel grid's rules, then save it."};

// Options.
inline constexpr Text kHelpOption{"显示本帮助。", "Show this help."};
inline constexpr Text kPortOption{"串口：设备路径、tcp://主机:端口、rfc2217://主机:端口，或 ports 列出的名称或编号。",
                                  "Port: a device path, tcp://HOST:PORT, rfc2217://HOST:PORT, or a name or a number "
                                  "as 'ports' lists it."};
inline constexpr Text kPortsOption{"串口：设备路径、tcp://主机:端口、rfc2217://主机:端口，或 ports 列出的名称或编号；可多次给出。",
                                   "Port: a device path, tcp://HOST:PORT, rfc2217://HOST:PORT, or a name or a number "
                                   "as 'ports' lists it; may be given several times."};
inline constexpr Text kAddressOption{"模块的总线地址，0 到 254。", "Bus address of the module, 0 to 254."};
inline constexpr Text kSaveOption{"同时写入模块的配置文件（8679 字节）。", "Also write the module's configuration file (8679 bytes)."};
inline constexpr Text kConfigOption{"要载入的配置文件。", "Configuration file to load."};
inline constexpr Text kOnlyOneOption{
    "确认线路上只有一个模块：模块信息写入发往地址 255，线路上的每个模块都会接受。",
    "Confirm that only one module is on the line: the information write goes to address 255, "
    "which every module on the line takes."};
inline constexpr Text kChannelsOption{"要平衡的通道，从 1 起，例如 1,2,5-8（默认全部）；不能超过模块的通道数。",
                                      "Channels to balance, 1-based, e.g. 1,2,5-8 (default: all); at most the module's channel count."};
inline constexpr Text kForceWriteOption{
    "即使文件不像模块记录，或与模块的型号不同，也照样发送。",
    "Send the file even when it is not a module record or holds another model than the module's."};
inline constexpr Text kForceBalanceOption{"即使 --channels 超出模块的通道数，也照样发送平衡请求。",
                                          "Send the balance even when --channels names channels the module does not have."};
inline constexpr Text kOutOption{"报告文件：REPORT.pdf 或 REPORT.html（语言由全局选项 --lang 决定）。",
                                 "Report file: REPORT.pdf or REPORT.html (its language is the global --lang)."};
inline constexpr Text kReportValue{"REPORT", "REPORT"};
inline constexpr Text kReportFileArgument{"要写成报告的配置文件（8679 字节）。", "Configuration file to report on (8679 bytes)."};
inline constexpr Text kFileArgument{"要解析的配置文件。", "Configuration file to decode."};
inline constexpr Text kEditChannelsOption{"要修改的通道，从 1 起，例如 1,3-8（默认：文件中模块的全部通道）；不能超过它的通道数。",
                                          "Channels to edit, 1-based, e.g. 1,3-8 (default: every channel of the file's module); "
                                          "at most its channel count."};
inline constexpr Text kForceEditOption{"即使文件不像模块记录，也照样修改。", "Edit the file even when it is not a module record."};
inline constexpr Text kEditFileArgument{"要修改的配置文件（8679 字节）。", "Configuration file to edit (8679 bytes)."};
inline constexpr Text kAssignmentValue{"FIELD=VALUE", "FIELD=VALUE"};
inline constexpr Text kAssignmentArgument{
    "从左到右逐个应用，和在通道表格中编辑一样。FIELD 是 excitation, balance, coupling, gain, cutoff, division, "
    "zero-adjust, gain-adjust, integral, bridge, coef, sensitivity, range, type 之一。列表字段取表格显示的选项文字"
    "（中文或英文）或它的代码（从 0 起；gain 和 division 的选项本身是数）；其余取数；cutoff 取频率（Hz），"
    "按频率对话框取可设置的值。",
    "Applied left to right, as edits in the channel grid. Fields: excitation, balance, coupling, gain, cutoff, "
    "division, zero-adjust, gain-adjust, integral, bridge, coef, sensitivity, range, type. A list field takes an "
    "item as the grid shows it, in Chinese or English, or its code from 0 (the items of gain and division are "
    "numbers themselves); the others take a number; cutoff takes a frequency in Hz, set to a reachable one as "
    "the frequency dialog does."};
inline constexpr Text kListValue{"LIST", "LIST"};
inline constexpr Text kFileValue{"FILE", "FILE"};

// Why a file is refused before it is opened.
inline constexpr Text kNotRegular{"不是普通文件", "not a regular file"};
// Standard output could not be written; "%1" is the system's reason.
inline constexpr Text kCannotWriteOutput{"无法写入标准输出：%1", "Cannot write the standard output: %1"};

// Usage errors.
inline constexpr Text kLogValue{"--log 需要一个文件名。", "--log takes a file name."};
inline constexpr Text kUnknownCommand{"未知命令 %1。", "Unknown command %1."};
inline constexpr Text kPortRequired{"需要 --port。", "--port is required."};
inline constexpr Text kConfigRequired{"需要 --config。", "--config is required."};
inline constexpr Text kAddressRange{"--address 取 0 到 254 的数。", "--address takes a number from 0 to 254."};
inline constexpr Text kAddress255{
    "在地址 255 上模块只应答召唤、只接受模块信息写入；请给出模块自己的地址（velmor-cli beckon 会告诉它）。",
    "At address 255 a module answers only the beckon and takes only the information write; give the module's "
    "own address (velmor-cli beckon tells it)."};
inline constexpr Text kChannelsSyntax{"--channels 取 1 到 16 的通道号，例如 1,2,5-8。",
                                      "--channels takes channel numbers 1 to 16, e.g. 1,2,5-8."};
inline constexpr Text kShowTakesOneFile{"show 只取一个配置文件。", "show takes one configuration file."};
inline constexpr Text kReportTakesOneFile{"report 只取一个配置文件。", "report takes one configuration file."};
inline constexpr Text kOutRequired{"需要 --out。", "--out is required."};
inline constexpr Text kEditTakesFileAndAssignments{"edit 取一个配置文件和至少一个 FIELD=VALUE。",
                                                   "edit takes a configuration file and at least one FIELD=VALUE."};
inline constexpr Text kGivenTwice{"--%1 只能给出一次。", "--%1 takes one value; give it once."};
// A global option after the command: "%1" the option.
inline constexpr Text kGlobalAfterCommand{"%1 是全局选项，须放在命令之前：velmor-cli %1 命令 ...",
                                          "%1 is a global option and goes before the command: velmor-cli %1 COMMAND ..."};
inline constexpr Text kNotAnAssignment{"%1 不是 FIELD=VALUE。", "%1 is not FIELD=VALUE."};

// Refusals that keep a module or a file from harm.
inline constexpr Text kNotModuleRecord{"%1 不是模块的配置文件：%2。什么也没有发送；用 --force 仍然发送。",
                                       "%1 is not a module's configuration file: %2. Nothing was sent; give --force to send it anyway."};
inline constexpr Text kWrongSize{"它有 %1 字节，而不是 8679 字节", "it has %1 bytes, not 8679"};
inline constexpr Text kWrongSizeOne{"它只有 1 字节，而不是 8679 字节", "it has 1 byte, not 8679"};
inline constexpr Text kBadModelCode{"它的型号代码 %1 大于 9", "its model code %1 is above 9"};
inline constexpr Text kBadModelName{"它的型号名称不是可打印的文字", "its model name is not printable text"};
inline constexpr Text kBadChannelCount{"它的通道数 %1 不是 4、8 或 16", "its channel count %1 is not 4, 8 or 16"};
inline constexpr Text kModelDiffers{
    "地址 %1 上的模块是 %2，而文件中是 %3；什么也没有写入。用 --force 仍然写入。",
    "The module at address %1 is a %2, but the file holds a %3; nothing was written. Give --force to write it anyway."};
inline constexpr Text kChannelBeyondModule{
    "--channels 指定了通道 %1，但地址 %2 上的模块只有 %3 个通道；没有发送平衡请求。用 --force 仍然发送。",
    "--channels names channel %1, but the module at address %2 has %3 channels; no balance was sent. Give --force to send it anyway."};
inline constexpr Text kOnlyOneRefused{
    "什么也没有发送：模块信息写入发往地址 255，线路上的每个模块都会接受；确认只连接了一个模块时请给出 --only-one-module。",
    "Nothing was sent: the information write goes to address 255, which every module on the line takes; give "
    "--only-one-module when only one module is connected."};
// show of a file that write would refuse: said, the record printed all the same.
inline constexpr Text kShownNotModuleRecord{"%1 不是模块的配置文件：%2；write 会拒绝发送它。",
                                            "%1 is not a module's configuration file: %2; write would refuse to send it."};
inline constexpr Text kNotModuleRecordToReport{"%1 不是模块的配置文件：%2。没有写出报告。",
                                               "%1 is not a module's configuration file: %2. No report was written."};
inline constexpr Text kNotModuleRecordToEdit{
    "%1 不是模块的配置文件：%2。什么也没有写入；用 --force 仍然修改。",
    "%1 is not a module's configuration file: %2. Nothing was written; give --force to edit it anyway."};
inline constexpr Text kChannelBeyondFile{"--channels 指定了通道 %1，但文件中的 %2 只有 %3 个通道；什么也没有写入。",
                                         "--channels names channel %1, but the file's %2 has %3 channels; nothing was written."};

// An edit the channel grid would refuse: the assignment as given, then the
// reason. English reasons end in their own full stop, Chinese ones do not
// (the window's "输入数据错误" has none), so each language adds what it needs.
inline constexpr Text kEditRefused{"%1：%2。什么也没有写入。", "%1: %2 Nothing was written."};

inline constexpr Text kNoSuchPort{"没有这个串口", "no such port"};
inline constexpr Text kPublisherGone{"发布它的模拟器已不在运行", "the simulator that published it is no longer running"};

}  // namespace velmor::texts::cli
