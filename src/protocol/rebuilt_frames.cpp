#include "rebuilt_frames.h"

#include "requests.h"

namespace velmor {
namespace {

Request writeRequestOf(const ModuleRecord& record, Block block)
{
    switch (block.kind) {
    case Block::Kind::CalibrationPair: return writeCalibrationRequest(record, block.index);
    case Block::Kind::AdjustBlock: return writeAdjustBlockRequest(record, block.index);
    case Block::Kind::ChannelGroup: return writeChannelGroupRequest(record, block.index);
    case Block::Kind::Information:
    case Block::Kind::Balance: break;
    }
    return writeInfoRequest(record);
}

}  // namespace

QByteArray rebuiltFrame(const ModuleRecord& record, Block block, quint8 code)
{
    Request request = writeRequestOf(record, block);
    request.bytes[kCommandOffset] = code == kCmdBeckon ? kBroadcastAddress : code;
    request.bytes[kFullFrameLength - 1] = checksumOf(request.bytes.data(), kFullN);
    return request.frame();
}

}  // namespace velmor
