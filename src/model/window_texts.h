#pragma once

#include "language.h"

// Captions of the main window: its title, menus and the port and search bar.
// An ampersand marks a menu entry's access key.
namespace velmor::win {

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

inline constexpr Text kSearchButton{"搜索模块(&S)", "&Search"};

// Accessible names of controls that have no caption of their own.
inline constexpr Text kPortListName{"串口", "Serial port"};
inline constexpr Text kModuleIndexName{"模块卡号", "Module index"};
inline constexpr Text kSearchProgressName{"搜索进度", "Search progress"};
inline constexpr Text kModuleTabsName{"找到的模块", "Modules found"};

}  // namespace velmor::win
