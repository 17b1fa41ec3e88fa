#pragma once

#include "language.h"

// Rack files: why one is refused. "%1", "%2" are filled in by QString::arg.
namespace velmor::texts::rack {

inline constexpr Text kNotJson{"%1 不是机架文件：不是 JSON 文档（%2）。", "%1 is not a rack file: it is not a JSON document (%2)."};
inline constexpr Text kNotRack{"%1 不是机架文件。", "%1 is not a rack file."};
inline constexpr Text kUnknownVersion{"%1 的格式版本 %2 不可识别（本程序识别版本 %3）。",
                                      "%1 has format version %2, which this program does not know (it knows %3)."};
inline constexpr Text kBadField{"%1 中“%2”不正确。", "%1: the field \"%2\" is missing or wrong."};
inline constexpr Text kBadModule{"%1 中第 %2 个模块的“%3”不正确。", "%1: module %2 has a missing or wrong \"%3\"."};
inline constexpr Text kBadImage{"%1 中第 %2 个模块的设置已损坏（SHA-256 不符）。",
                                "%1: the setup of module %2 is damaged (its SHA-256 does not match)."};
inline constexpr Text kTwice{"%1 中 %2 地址 %3 出现了两次。", "%1 names %2 at address %3 twice."};
inline constexpr Text kCannotRead{"无法读取 %1（%2）。", "%1 cannot be read (%2)."};

// velmor-cli rack.
inline constexpr Text kRackSynopsis{"save|check|restore|report FILE ...", "save|check|restore|report FILE ..."};
inline constexpr Text kRackSummary{"把所有线路上的全部模块保存为机架文件，与机架文件核对（全部相同退出码 0，否则 1），按机架文件恢复，或写出机架报告。",
                                   "Save every module on every line as a rack file, check the lines against one (exit 0 all same, 1 otherwise), restore them to it, or report it."};
inline constexpr Text kRackUsage{"用法：velmor-cli rack save FILE [--port P]... | check FILE | restore FILE [--only-one-module] [--force] | report FILE --out REPORT.pdf|.html",
                                 "Usage: velmor-cli rack save FILE [--port P]... | check FILE | restore FILE [--only-one-module] [--force] | report FILE --out REPORT.pdf|.html"};
inline constexpr Text kForceOption{"恢复时也写入无应答的位置和序号不同的同型号模块。",
                                   "Restore also writes to places that did not answer and to a module of the same model with another number."};
inline constexpr Text kNotWhollyRead{"%1 地址 %2 的模块没有完整读取，没有存入机架文件。",
                                     "The module on %1 at address %2 was not read wholly and is not in the rack file."};
inline constexpr Text kCannotWrite{"无法写入 %1（%2）。", "%1 cannot be written (%2)."};
// A module's state in a check, as the table shows it.
inline constexpr Text kSame{"相同", "same"};
inline constexpr Text kDifferent{"不同", "different"};
inline constexpr Text kMissing{"无应答", "missing"};
inline constexpr Text kForeign{"不是同一模块", "foreign"};
inline constexpr Text kExtra{"多出", "extra"};

// What a restore did to a module, and why.
inline constexpr Text kUnchanged{"未改变", "unchanged"};
inline constexpr Text kRestored{"已恢复", "restored"};
inline constexpr Text kRestoredInPart{"部分恢复", "restored in part"};
inline constexpr Text kNotRestored{"未恢复", "not restored"};
inline constexpr Text kSkipped{"跳过", "skipped"};
inline constexpr Text kWhyExtra{"机架文件中没有这个模块，未改动", "not in the rack file: left as it is"};
inline constexpr Text kWhyMissing{"核对时没有应答", "it did not answer the check"};
inline constexpr Text kWhyOtherModel{"这里应答的是 %1，不能写入 %2 的设置", "a %1 answers here; a %2's setup cannot be written to it"};
inline constexpr Text kWhyForeign{"这里应答的是另一个模块（%1 序号 %2）", "another module answers here (%1 number %2)"};
inline constexpr Text kWhyInformationShared{"模块信息没有发送：%1 上还有其他模块，而模块信息的写入会到达线路上的每个模块",
                                            "the information was not sent: %1 has other modules, and an information write reaches every module on a line"};
inline constexpr Text kWhyInformationUnconfirmed{"模块信息没有发送：没有确认它是 %1 上唯一的模块",
                                                 "the information was not sent: it was not confirmed to be the only module on %1"};
inline constexpr Text kWhyStopped{"恢复在此之前已停止", "the restore was stopped before it"};
inline constexpr Text kWhyLineStopped{"%1 在地址 %2 处停止：%3", "%1 stopped at address %2: %3"};
inline constexpr Text kWhyFailedAt{"%1 失败：%2", "%1 failed: %2"};
inline constexpr Text kWhySent{"已发送：%1", "sent: %1"};
inline constexpr Text kWhyReadBackFailed{"回读失败：%1", "the read-back failed: %1"};
inline constexpr Text kWhyNotReadBack{"各组均已发送，未能回读（%1）", "every group went out, not read back (%1)"};
inline constexpr Text kWhyReadBackDiffers{"回读结果与文件不同：%1", "the read-back differs from the file: %1"};

// File > Rack and its results window.
inline constexpr Text kMnuFileRack{"机架(&K)", "Rac&k"};
inline constexpr Text kMnuRackSave{"保存机架(&S)...", "&Save..."};
inline constexpr Text kMnuRackCheck{"核对机架(&C)...", "&Check..."};
inline constexpr Text kMnuRackRestore{"恢复机架(&R)...", "&Restore..."};
inline constexpr Text kMnuRackReport{"机架报告(&P)...", "Re&port..."};
inline constexpr Text kResultColumns[] = {{"线路", "Line"},       {"地址", "Address"}, {"型号", "Model"},
                                          {"模块序号", "Module number"}, {"状态", "Status"}, {"详情", "Details"}};
inline constexpr Text kResultsName{"机架结果", "Rack results"};
inline constexpr Text kClose{"关闭", "Close"};
inline constexpr Text kSaveTitle{"保存机架 - %1", "Rack saved - %1"};
inline constexpr Text kCheckTitle{"核对机架 - %1", "Rack check - %1"};
inline constexpr Text kRestoreTitle{"恢复机架 - %1", "Rack restore - %1"};
inline constexpr Text kSaved{"已保存", "saved"};
inline constexpr Text kNotSaved{"未保存：没有完整读取", "not saved: not read wholly"};
inline constexpr Text kSavedSummary{"%1 个模块已保存到 %2。", "%1 modules saved to %2."};
inline constexpr Text kCheckSummary{"%1 个模块：%2 个相同，%3 个不同，%4 个无应答，%5 个不是同一模块，%6 个多出。",
                                    "%1 modules: %2 same, %3 different, %4 missing, %5 foreign, %6 extra."};
inline constexpr Text kRestoreSummary{"%1 个模块：%2 个未改变，%3 个已恢复，%4 个部分恢复，%5 个未恢复，%6 个跳过。",
                                      "%1 modules: %2 unchanged, %3 restored, %4 restored in part, %5 not restored, %6 skipped."};
inline constexpr Text kDidRackSave{"保存了机架 %1", "Saved the rack %1"};
inline constexpr Text kDidRackCheck{"核对了机架 %1", "Checked the rack %1"};
inline constexpr Text kDidRackRestore{"按 %1 恢复了机架", "Restored the rack from %1"};
inline constexpr Text kLineNotListed{"机架文件 %1 中的线路 %2 不在本机的串口列表中；没有发送任何数据。",
                                     "The rack file %1 names the line %2, which is not listed on this computer; nothing was sent."};
inline constexpr Text kRestoreQuestion{"按 %1 恢复机架？\n%2 个模块将被写入，只发送不同的组：\n%3",
                                       "Restore the rack from %1?\n%2 modules will be written, only the groups that differ:\n%3"};
inline constexpr Text kForceQuestion{"以下位置没有应答，或者应答的是同型号的另一个模块：\n%1\n也要写入这些位置吗？",
                                     "These places did not answer, or another module of the same model answers there:\n%1\nWrite to these places too?"};
inline constexpr Text kOnlyOneOnLine{"%1：%2", "%1: %2"};
inline constexpr Text kNothingToRestore{"%1 中的每个模块都与机架文件相同或已跳过；没有发送任何数据。",
                                        "Every module of %1 is the same as the rack file or is skipped; nothing was sent."};
inline constexpr Text kLineProgress{"%1：%2/%3 个模块", "%1: %2 of %3 modules"};
inline constexpr Text kReportWritten{"机架报告已写入 %1。", "The rack report was written to %1."};

}  // namespace velmor::texts::rack
