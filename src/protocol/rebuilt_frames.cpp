#include "rebuilt_frames.h"

#include "requests.h"

namespace velmor {
namespace {

Request writeRequestOf(const ModuleRecord& record, int group)
{
    if (group >= kGroupCalibrationFirst)
        return writeCalibrationRequest(record, group - kGroupCalibrationFirst);
    if (group >= kGroupAdjustFirst)
        return writeAdjustBlockRequest(record, group - kGroupAdjustFirst);
    if (group >= kGroupChannelsFirst)
        return writeChannelGroupRequest(record, group - kGroupChannelsFirst);
    return writeInfoRequest(record);
}

}  // namespace

QByteArray rebuiltFrame(const ModuleRecord& record, int group, quint8 code)
{
    Request request = writeRequestOf(record, group);
    request.bytes[kCommandOffset] = code == kCmdBeckon ? kBroadcastAddress : code;
    request.bytes[kFullFrameLength - 1] = checksumOf(request.bytes.data(), kFullN);
    return request.frame();
}

}  // namespace velmor
