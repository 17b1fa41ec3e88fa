#pragma once

#include "block.h"
#include "frame.h"
#include "model/module_table.h"

namespace velmor {

// Which parser takes the reply to a request.
enum class ReplyKind : int {
    Info = 1,         // channel-parameter groups (and module information of group 0)
    Calibration = 2,  // adjust blocks and calibration pairs
    Parameter = 3,    // module information of a full read, beckon, information write
    Short = 4,        // the 10-byte balance acknowledgement
};

// One request as it goes on the wire: the send buffer, how many of its bytes
// are written, what the reply must look like, and the block it is about.
struct Request {
    Frame bytes{};
    int length = 0;
    quint8 command = 0;
    ReplyKind kind = ReplyKind::Parameter;
    Block block;

    QByteArray frame() const { return toBytes(bytes, length); }
    // A balance is acknowledged in 10 bytes; everything else in 55.
    int replyLength() const { return command == kCmdBalance ? kAckLength : kFullFrameLength; }
};

Request beckonRequest();
Request readInfoRequest(int address);
Request readChannelGroupRequest(const ModuleRecord& record, int g);
Request readAdjustBlockRequest(const ModuleRecord& record, int g);
Request readCalibrationRequest(const ModuleRecord& record, int k);

Request writeInfoRequest(const ModuleRecord& record);
Request writeChannelGroupRequest(const ModuleRecord& record, int g);
Request writeAdjustBlockRequest(const ModuleRecord& record, int g);
Request writeCalibrationRequest(const ModuleRecord& record, int k);

// channelMask: bit c for channel c; -1 selects every channel.
Request balanceRequest(const ModuleRecord& record, qint32 channelMask);

}  // namespace velmor
