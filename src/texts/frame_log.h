#pragma once

#include "language.h"

// Texts of the frame log: its pane in the window, its rows, and the message
// when its file cannot be written. The CSV file itself uses fixed English
// tokens (see link/frame_log_csv.h), so these never reach it.
namespace velmor::texts::frame_log {

inline constexpr Text kMnuView{"查看(&V)", "&View"};
inline constexpr Text kMnuViewFrameLog{"帧记录(&L)", "Frame &Log"};
inline constexpr Text kPaneTitle{"帧记录", "Frame log"};
inline constexpr Text kExport{"导出为 CSV...(&E)", "&Export to CSV..."};
inline constexpr Text kClear{"清除(&C)", "&Clear"};
inline constexpr Text kTableName{"收发的帧", "Frames sent and received"};

// Column headers, in column order.
inline constexpr Text kColumns[] = {{"时间", "Time"}, {"线路", "Line"}, {"方向", "Direction"}, {"结果", "Outcome"},
                                    {"帧", "Frame"}};

inline constexpr Text kOut{"发出", "Out"};
inline constexpr Text kIn{"收到", "In"};

inline constexpr Text kSent{"已发送", "Sent"};
inline constexpr Text kAccepted{"已接受", "Accepted"};
// "%1" is the reply check's status, "%2" its reason below.
inline constexpr Text kRefused{"被拒绝（状态 %1：%2）", "Refused (status %1: %2)"};
inline constexpr Text kTimedOut{"超时", "Timed out"};
inline constexpr Text kSkippedLate{"迟到，已跳过", "Skipped as late"};

// Why a reply was refused, by the reply check's status 1 to 5.
inline constexpr Text kRefusalReasons[] = {
    {"起始字节不是 AA AA", "start is not AA AA"},
    {"长度字节过大", "length byte too large"},
    {"校验和不符", "checksum mismatch"},
    {"回应的命令不符", "echo is not the command's"},
    {"组号超出范围", "group out of range"},
};

// "%1" is the file, "%2" the system's reason.
inline constexpr Text kCannotWrite{"无法写入帧记录 %1：%2", "Cannot write the frame log %1: %2"};
// The same while a run goes on: said once; the exchanges are done as asked.
inline constexpr Text kStoppedWriting{"无法写入帧记录 %1：%2；通讯照常进行，之后的帧没有记录。",
                                      "Cannot write the frame log %1: %2; the exchanges go on as asked, their frames "
                                      "unlogged."};

}  // namespace velmor::texts::frame_log
