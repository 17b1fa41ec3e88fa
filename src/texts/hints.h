#pragma once

#include "language.h"

// One-line tool tips: what a command button or a list does, and what a
// grid's column holds.
namespace velmor::texts::hints {

// A control's hint by its name; the buttons of the channel groups and the
// adjust blocks share one per kind ("cmdReceive" for cmdReceive[0] to [3]).
struct Hint {
    const char* name;
    Text text;
};

inline constexpr Hint kControls[] = {
    {"cmbComPort", {"模块所在的串口或网络线路", "The serial port or network line the modules are on"}},
    {"cmbModuleIndex", {"要操作的模块的总线地址", "The bus address of the module to work with"}},
    {"cmdSearch", {"在所选线路上搜索模块（F5）", "Search the chosen line for modules (F5)"}},
    {"cmdShow", {"在通道参数和校正系数之间切换", "Switch between the channel parameters and the calibration coefficients"}},
    {"cmdReceive", {"从模块读取这一组四个通道", "Read this group of four channels from the module"}},
    {"cmdSend", {"把这一组四个通道发送到模块", "Send this group of four channels to the module"}},
    {"cmdFrame1Receive", {"读取所有通道的参数", "Read the parameters of every channel"}},
    {"cmdFrame1Send", {"发送所有通道的参数", "Send the parameters of every channel"}},
    {"cmdBalance", {"启动所选通道的桥路平衡，然后读回结果", "Start the bridge balance of the chosen channels, then read the results back"}},
    {"cmdNoOperateReceive", {"从模块读取这一组调整值", "Read this block of adjust values from the module"}},
    {"cmdNoOperateSend", {"把这一组调整值发送到模块", "Send this block of adjust values to the module"}},
    {"cmdFrame2Receive", {"读取所有调整值", "Read every adjust value"}},
    {"cmdFrame2Send", {"发送所有调整值", "Send every adjust value"}},
    {"cmdModuleInfoReceive", {"读取模块信息", "Read the module's information"}},
    {"cmdModuleInfoSend", {"把模块信息写入模块", "Write the module's information to the module"}},
    {"cmdBeckon", {"召唤线路上唯一的模块，得知它的地址", "Beckon the only module on the line to learn its address"}},
    {"cmdFrame3Receive", {"读取模块的全部：信息、通道和调整值", "Read everything of the module: information, channels and adjust values"}},
    {"cmdFrame3Send", {"确认后把模块信息写入模块", "Write the module's information to the module, after a confirmation"}},
    {"cmdFrameLogExport", {"把帧记录保存为 CSV 文件", "Save the frame log as a CSV file"}},
    {"cmdFrameLogClear", {"清空帧记录", "Clear the frame log"}},
    {"cmbGain", {"为所选的格选择一个值", "Choose a value for the chosen cells"}},
    {"cmbModuleType", {"模块的型号", "The module's model"}},
    {"cmbExcitationType", {"模块的激励类型", "The module's kind of excitation"}},
    {"cmbBalanceType", {"模块的桥路平衡类型", "The module's kind of bridge balance"}},
    {"cmbACType", {"模块的耦合类型", "The module's kind of input coupling"}},
    {"cmbGainType", {"模块的放大倍数类型", "The module's kind of gain"}},
    {"cmbFilterType", {"模块的滤波器类型", "The module's kind of filter"}},
    {"cmbHoldType", {"模块的同步采保类型", "The module's kind of synchronous sample-and-hold"}},
    {"cmbZeroType", {"模块的零点调整类型", "The module's kind of zero adjust"}},
    {"cmbAdjustType", {"模块的增益调整类型", "The module's kind of gain adjust"}},
    {"cmbIntegral", {"模块的积分器类型", "The module's kind of integrator"}},
};

// The search button while a search runs.
inline constexpr Text kStopSearch{"问完当前地址后停止搜索，并读取已找到的模块（Esc）",
                                  "Stop after the address being asked and read the modules found so far (Esc)"};

// The channel grid's columns 0 to 10, in column order.
inline constexpr Text kChannelColumns[] = {
    {"通道号", "The channel's number"},
    {"电桥激励电压", "Bridge excitation voltage"},
    {"桥路平衡值", "Bridge balance value"},
    {"是否参加自动桥路平衡", "Whether the channel takes part in the automatic balance"},
    {"输入耦合：AC 或 DC", "Input coupling: AC or DC"},
    {"放大倍数", "Amplifier gain"},
    {"低通滤波器的截止频率", "Cut-off frequency of the low-pass filter"},
    {"SSH：同步采样保持", "SSH: synchronous sample-and-hold"},
    {"零点调整值", "Zero adjust value"},
    {"增益调整值", "Gain adjust value"},
    {"积分器开或关", "Integrator on or off"},
};
// Every grey reference column of the channel grid.
inline constexpr Text kReferenceColumn{"参考列：保存在文件中，从不发送到模块", "Reference: kept in the file, never sent to a module"};
// The numbered columns of the adjust and coefficient grids; %1 is the number.
inline constexpr Text kZeroAdjustColumn{"零点调整表第 %1 项", "Entry %1 of the zero adjust table"};
inline constexpr Text kGainAdjustColumn{"增益调整表第 %1 项", "Entry %1 of the gain adjust table"};
inline constexpr Text kGainCoefColumn{"第 %1 个增益校正系数", "Gain calibration coefficient %1"};
inline constexpr Text kZeroCoefColumn{"第 %1 个零点偏移校正系数", "Zero offset calibration coefficient %1"};

// The frame log's columns, in column order.
inline constexpr Text kFrameLogColumns[] = {
    {"帧收发的时间", "When the frame went or came"},
    {"帧所在的线路", "The line of the frame"},
    {"发出或收到", "Out to a module or in from one"},
    {"帧的结果：已发送、已接受或被拒绝的原因", "What became of the frame: sent, accepted, or why it was refused"},
    {"帧的字节，十六进制", "The frame's bytes, in hexadecimal"},
};

}  // namespace velmor::texts::hints
