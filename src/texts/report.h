#pragma once

#include "language.h"

// Texts of the setup report (PDF and HTML) and of File > Export report. The
// labels and headings that the window already shows (module information,
// grid headings, cell texts) are taken from their own catalogues so that the
// report reads exactly as the window does.
namespace velmor::texts::report {

inline constexpr Text kTitle{"模块设置报告", "Module Setup Report"};
// "%1" is the date and time the report was made.
inline constexpr Text kMadeAt{"生成时间：%1", "Made on %1"};
// Beside the time: the program that made the report and where the record came from.
inline constexpr Text kMadeBy{"程序：Velmor %1；来源：%2", "By Velmor %1; source: %2"};
inline constexpr Text kSourceFile{"文件 %1", "the file %1"};
inline constexpr Text kSourceLine{"线路 %1 上地址 %2 的模块", "the module at address %2 on %1"};

// Section headings that the window has no caption for.
inline constexpr Text kCoefficients{"校正系数", "Calibration Coefficients"};
inline constexpr Text kFrames{"发送帧（命令 18）", "Write Frames (Command 18)"};
// Heading of the frame table's first column.
inline constexpr Text kFrameOf{"内容", "Contents"};
inline constexpr Text kFrameBytes{"帧", "Frame"};
// A frame row: the module information, or "%1"-"%2" the channels of a group.
inline constexpr Text kInfoFrame{"模块信息", "Module information"};
inline constexpr Text kChannelFrame{"参数设置 %1-%2通道", "Channel setup, channels %1-%2"};
inline constexpr Text kAdjustFrame{"调整值 %1-%2通道", "Adjust values, channels %1-%2"};

// The foot of each PDF page.
inline constexpr Text kPage{"第 %1 页，共 %2 页", "Page %1 of %2"};

// File > Export report...
inline constexpr Text kMnuFileExportReport{"导出报告...(&R)", "Export &Report..."};
// The file types its dialog offers.
inline constexpr Text kPdfFilter{"PDF 文件 (*.pdf)", "PDF files (*.pdf)"};
inline constexpr Text kHtmlFilter{"HTML 文件 (*.html *.htm)", "HTML files (*.html *.htm)"};
// "%1" is the file.
inline constexpr Text kNeedsSuffix{"报告的文件名须以 .pdf 或 .html 结尾：%1",
                                   "The report's file name must end in .pdf or .html: %1"};
// The report would replace its own input: "%1" the report, "%2" the input.
inline constexpr Text kOutIsIn{"报告 %1 就是要报告的配置文件 %2；什么也没有写入。",
                               "The report %1 is the configuration file %2 it reports on; nothing was written."};
// "%1" is the file, "%2" the system's reason.
inline constexpr Text kCannotWrite{"无法写入报告 %1：%2", "Cannot write the report %1: %2"};

}  // namespace velmor::texts::report
