#pragma once

#include "language.h"

// The history of setups: where it is kept, and what is said when it cannot be
// written. "%1", "%2" are filled in by QString::arg.
namespace velmor::texts::history {

inline constexpr Text kNotAStore{
    "%1 不是历史记录库：请给出 off、一个文件，或 postgresql://用户@主机:端口/库（密码放在 ~/.pgpass 或 PGPASSWORD 中）。",
    "Not a history store: %1. Give off, a file, or postgresql://user@host:port/db (the password goes in ~/.pgpass or "
    "PGPASSWORD)."};
inline constexpr Text kOutage{"历史记录库无法写入（%1）；记录暂存在 %2，恢复后再写入。",
                              "The history store cannot be written (%1); entries wait in %2 until it is back."};
inline constexpr Text kNotKept{"一条历史记录未能写入（%1），也无法暂存到 %2。",
                               "A history entry was not written (%1) and could not wait in %2 either."};
inline constexpr Text kMovedAside{"历史记录库已损坏：已移到 %1，并新建了一个。",
                                  "The history store was damaged: it was moved to %1 and a new one started."};

// velmor-cli history and diff.
inline constexpr Text kHistorySynopsis{"[选项] | export ID --out FILE", "[options] | export ID --out FILE"};
inline constexpr Text kHistorySummary{"列出历史记录（最新的在前）；export 把一条记录写成配置文件。",
                                      "List the history, newest first; export writes an entry as a configuration file."};
inline constexpr Text kDiffSynopsis{"A B（各为配置文件、history:ID 或 live:PORT:ADDRESS）",
                                    "A B (each a configuration file, history:ID or live:PORT:ADDRESS)"};
inline constexpr Text kDiffSummary{"逐格比较两个设置，按表格中的文字显示不同之处（相同退出码 0，不同 1）。",
                                   "Compare two setups cell by cell, in the grids' texts (exit 0 same, 1 different)."};
inline constexpr Text kOutFileOption{"写入的配置文件。", "The configuration file to write."};
inline constexpr Text kModuleOption{"只列出这个模块序号的记录。", "Only the entries of this module number."};
inline constexpr Text kSinceOption{"只列出这一时刻以后的记录（如 2026-11-01 或 2026-11-01T08:00）。",
                                   "Only the entries from this time on (such as 2026-11-01 or 2026-11-01T08:00)."};
inline constexpr Text kKindOption{"只列出这一类记录：read、write、balance、search、save、open、failure。",
                                  "Only entries of this kind: read, write, balance, search, save, open, failure."};
inline constexpr Text kNumberValue{"N", "N"};
inline constexpr Text kDateValue{"DATE", "DATE"};
inline constexpr Text kKindValue{"K", "K"};
inline constexpr Text kHistoryOff{"历史记录已关闭（--no-history 或 VELMOR_HISTORY=off）。",
                                  "The history is off (--no-history or VELMOR_HISTORY=off)."};
inline constexpr Text kCannotOpen{"无法打开历史记录库：%1", "The history store cannot be opened: %1"};
inline constexpr Text kNoEntry{"历史记录中没有第 %1 条。", "The history has no entry %1."};
inline constexpr Text kNoImage{"第 %1 条记录没有模块设置（%2）。", "Entry %1 holds no module setup (%2)."};
inline constexpr Text kBadModule{"--module 需要 0 到 65535 之间的模块序号。", "--module takes a module number from 0 to 65535."};
inline constexpr Text kBadSince{"--since 需要一个日期或时刻，如 2026-11-01 或 2026-11-01T08:00。",
                                "--since takes a date or a time, such as 2026-11-01 or 2026-11-01T08:00."};
inline constexpr Text kBadKind{"--kind 取 read、write、balance、search、save、open 或 failure。",
                               "--kind takes read, write, balance, search, save, open or failure."};
inline constexpr Text kAddressNeedsPort{"--address 要和 --port 一起给出。", "--address goes with --port."};
inline constexpr Text kExportUsage{"用法：velmor-cli history export ID --out FILE", "Usage: velmor-cli history export ID --out FILE"};
inline constexpr Text kDiffUsage{"diff 取两个设置：配置文件、history:ID 或 live:PORT:ADDRESS。",
                                 "diff takes two setups: a configuration file, history:ID or live:PORT:ADDRESS."};
inline constexpr Text kSame{"两个设置相同。", "The two setups are the same."};
inline constexpr Text kGroupsToSend{"把 A 变为 B 的写入须发送：%1。", "A write that turns A into B sends: %1."};
// The parts of a setup, as the window's pages and grids name them.
inline constexpr Text kPartInformation{"模块信息", "information"};
inline constexpr Text kPartChannels{"通道参数", "channels"};
inline constexpr Text kPartAdjust{"调整值", "adjust"};
inline constexpr Text kPartCalibration{"校正系数", "calibration"};
inline constexpr Text kGroupChannels{"通道组 %1", "channel group %1"};
inline constexpr Text kGroupAdjust{"调整值组 %1", "adjust block %1"};
inline constexpr Text kGroupCalibration{"校正系数对 %1", "calibration pair %1"};

// The words the store keeps for kinds and outcomes (the English side, the
// same in every language), as the history window shows them.
inline constexpr Text kStoredWords[] = {
    {"读取", "read"},         {"写入", "write"},         {"桥路平衡", "balance"},     {"搜索", "search"},
    {"保存", "save"},         {"打开", "open"},          {"失败", "failure"},         {"完成", "done"},
    {"无应答", "no reply"},   {"应答被拒绝", "reply refused"}, {"串口无法打开", "port not opened"},
    {"线路被占用", "line busy"}, {"未找到模块", "none found"},
};

// File > History... and its window.
inline constexpr Text kMnuFileHistory{"历史记录(&H)...", "&History..."};
inline constexpr Text kHistoryTitle{"历史记录 - %1", "History - %1"};
inline constexpr Text kModuleName{"%1 序号 %2", "%1 number %2"};
inline constexpr Text kAllKinds{"全部类别", "All kinds"};
inline constexpr Text kSinceLabel{"自(&S)", "&Since"};
inline constexpr Text kKindLabel{"类别(&K)", "&Kind"};
inline constexpr Text kEntriesName{"历史记录", "History entries"};
inline constexpr Text kColumns[] = {{"编号", "Id"},      {"时间", "Time"},        {"类别", "Kind"},
                                    {"线路", "Line"},    {"地址", "Address"},     {"结果", "Outcome"},
                                    {"工作站", "Workstation"}, {"用户", "User"}, {"说明", "Detail"}};
inline constexpr Text kCompare{"比较(&C)", "&Compare"};
inline constexpr Text kCompareFile{"与文件比较(&F)...", "Compare with a &file..."};
inline constexpr Text kRestore{"恢复(&R)...", "&Restore..."};
inline constexpr Text kCompareHint{"选两条记录互相比较，或选一条与当前模块比较。",
                                   "Two entries are compared with each other; one with the module now."};
inline constexpr Text kRestoreHint{"把所选记录的设置写入当前模块，只发送不同的组。",
                                   "Writes the chosen entry's setup to the module, only the groups that differ."};
inline constexpr Text kChooseEntries{"请选择一条或两条记录。", "Choose one or two entries."};
inline constexpr Text kChooseOne{"请选择一条记录。", "Choose one entry."};
inline constexpr Text kEntryName{"第 %1 条（%2 %3）", "entry %1 (%2, %3)"};
inline constexpr Text kModuleNow{"当前模块", "the module now"};
inline constexpr Text kComparing{"A：%1　　B：%2　　不同的格：%3", "A: %1    B: %2    cells that differ: %3"};
inline constexpr Text kDiffersFrom{"不同：A 中为 %1。", "Differs: A holds %1."};
inline constexpr Text kInfoColumns[] = {{"模块信息", "Information"}, {"A", "A"}, {"B", "B"}};
inline constexpr Text kUnavailable{"历史记录不可用：%1", "The history is not available: %1"};
inline constexpr Text kRestoreQuestion{"把第 %1 条记录的设置写入 %2？\n将改变的格：%3\n将发送：%4。",
                                       "Write the setup of entry %1 to %2?\nCells that change: %3\nSent: %4."};
inline constexpr Text kRestoreOtherModel{"第 %1 条记录是 %2 的设置，当前模块是 %3：没有写入。",
                                         "Entry %1 is a setup of a %2 and the module is a %3: nothing was written."};
inline constexpr Text kNothingToRestore{"模块已是第 %1 条记录的设置。", "The module holds the setup of entry %1 already."};
inline constexpr Text kDidRestore{"把第 %2 条记录恢复到%1", "Restored entry %2 to %1"};

}  // namespace velmor::texts::history
