#pragma once

#include "language.h"
#include "texts/reference_columns.h"

// Captions of the main window: its title, menus and the port and search bar.
// An ampersand marks a menu entry's access key.
namespace velmor::texts::window {

inline constexpr Text kWindowTitle{"Velmor", "Velmor"};

inline constexpr Text kMnuFile{"文件(&F)", "&File"};
inline constexpr Text kMnuFileOpen{"打开(&O)", "&Open"};
inline constexpr Text kMnuFileSave{"保存(&S)", "&Save"};
inline constexpr Text kMnuFileSaveAs{"另存为(&A)", "Save &As"};
inline constexpr Text kMnuFileExit{"退出(&X)", "E&xit"};
inline constexpr Text kMnuOperate{"操作(&O)", "&Operate"};
inline constexpr Text kMnuOperateSearch{"搜索(&S)", "&Search"};
inline constexpr Text kMnuOperateSend{"发送(&T)", "Send(&T)"};
inline constexpr Text kMnuOperateRead{"读取(&R)", "&Read"};
inline constexpr Text kMnuOperateBalance{"桥路平衡(&A)", "B&alance"};
inline constexpr Text kMnuOperateBeckon{"召唤(&B)", "&Beckon"};
inline constexpr Text kMnuHelp{"帮助(&H)", "&Help"};
inline constexpr Text kMnuHelpContent{"内容(&C)", "&Content"};
inline constexpr Text kMnuHelpAbout{"关于...(&A)", "&About..."};

inline constexpr Text kFrame6{"操作区", "Order"};
inline constexpr Text kSearchButton{"搜索模块(&S)", "&Search"};
// The search button while a search runs: a click stops it.
inline constexpr Text kStopSearchButton{"停止(&S)", "&Stop"};

// The three frames that TabStrip1 shows one at a time.
// Frame1's title is the channel grid's own (texts::reference): it changes with
// the grey reference columns.
inline constexpr Text kCaption{"各个通道参数设置", "Channel Setup"};
inline constexpr Text kFrame2{"调整值", "Adjust Values"};
inline constexpr Text kFrame3{"模块信息", "Module Information"};
inline constexpr const Text* kFrameTabs[] = {&reference::kFrameTitle, &kFrame2, &kFrame3};

// Buttons. The group buttons read "读取1-4通道" ... in Chinese and "Read" /
// "Send" in English.
inline constexpr Text kReadGroup[] = {{"读取1-4通道", "Read"}, {"读取5-8通道", "Read"}, {"读取9-12通道", "Read"}, {"读取13-16通道", "Read"}};
inline constexpr Text kSendGroup[] = {{"发送1-4通道", "Send"}, {"发送5-8通道", "Send"}, {"发送9-12通道", "Send"}, {"发送13-16通道", "Send"}};
// cmdFrame1Receive and cmdFrame2Receive.
inline constexpr Text kReadOperation{"读取操作", "Read"};
inline constexpr Text kFrame1Send{"发送", "Send"};
inline constexpr Text kFrame2Send{"发送操作", "Send"};
inline constexpr Text kFrame3Receive{"读取", "Read"};
inline constexpr Text kFrame3Send{"修改模块卡号", "Send"};
inline constexpr Text kBalance{"桥路平衡", "Balance"};
inline constexpr Text kBeckon{"召唤", "Beckon"};
inline constexpr Text kModuleInfoReceive{"读取模块参数", "Read"};
inline constexpr Text kModuleInfoSend{"发送模块参数", "Send"};

// Captions above the frame texts before a group tab is chosen.
inline constexpr Text kSentCaption{"发送字符串", "Sent"};
inline constexpr Text kReturnedCaption{"返回字符串", "Returned"};
inline constexpr Text kReceivedCaption{"接收字符串", "Received"};
// Once a group tab is chosen its captions read in Chinese whatever the
// language: deliberate, kept.
inline constexpr const char* kGroupSentCaptions[] = {"1-4通道发送字符串", "5-8通道发送字符串", "9-12通道发送字符串", "13-16通道发送字符串"};
inline constexpr const char* kGroupReturnedCaptions[] = {"1-4通道返回字符串", "5-8通道返回字符串", "9-12通道返回字符串", "13-16通道返回字符串"};

// cmdShow: Chinese in both languages, deliberately.
inline constexpr const char* kShowCoefficients = "显示校正系数";
inline constexpr const char* kHideCoefficients = "隐藏校正系数";

// Accessible names of controls that have no caption of their own.
inline constexpr Text kSearchProgressName{"搜索进度", "Search progress"};
inline constexpr Text kModuleTabsName{"找到的模块", "Modules found"};
inline constexpr Text kFrameTabsName{"操作页", "Pages"};
inline constexpr Text kGroupTabsName{"通道组", "Channel groups"};
inline constexpr Text kSentFrameName{"发送的帧", "Frame sent"};
inline constexpr Text kReturnedFrameName{"返回的帧", "Frame returned"};
inline constexpr Text kChannelGridName{"通道参数表", "Channel parameters"};
inline constexpr Text kCalibrationGridName{"校正系数表", "Calibration coefficients"};
inline constexpr Text kAdjustGridName{"调整值表", "Adjust values"};

}  // namespace velmor::texts::window
