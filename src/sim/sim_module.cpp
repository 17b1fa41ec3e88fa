#include "sim_module.h"

#include "sim_values.h"

#include "protocol/block.h"
#include "protocol/blocks.h"

#include <algorithm>

namespace velmor::sim {
namespace {

constexpr int kLastGroup = kGroupCalibrationFirst + kCalibrationPairs - 1;
constexpr int kMaskLow = kDataOffset + 1;   // balance request: 09, mask low, mask high
constexpr int kMaskHigh = kDataOffset + 2;

quint8 byteAt(QByteArrayView frame, int i) { return static_cast<quint8>(frame[i]); }

// A request's bytes as the block readers take them. The checksum is left out,
// so that it can never land in the module's memory.
Payload payloadOf(QByteArrayView request)
{
    Payload p{};
    const int n = byteAt(request, kLengthOffset);
    for (int i = 0; i < n && i < kPayloadBytes; ++i)
        p[static_cast<size_t>(i)] = byteAt(request, kAddressOffset + i);
    return p;
}

void store(const Payload& p, int group, ModuleRecord& memory)
{
    const Block block = Block::ofSelector(group);
    switch (block.kind) {
    case Block::Kind::Information: {
        // The write carries 34 tail bytes; the module keeps the rest of its own.
        const auto tail = memory.infoTail;
        memory.busAddress = p[layout::kInfoAddress];
        takeInfoBlock(p, memory);
        std::copy(tail.begin() + layout::kInfoTailSent, tail.end(),
                  memory.infoTail.begin() + layout::kInfoTailSent);
        break;
    }
    case Block::Kind::ChannelGroup: takeChannelGroup(p, block.index, memory); break;
    case Block::Kind::AdjustBlock: takeAdjustBlock(p, block.index, memory); break;
    case Block::Kind::CalibrationPair: takeCalibrationPair(p, block.index, memory); break;
    case Block::Kind::Balance: break;
    }
}

}  // namespace

SimModule::SimModule(const ModuleRecord& memory, quint32 seed)
    : memory_(memory)
    , seed_(seed)
{
}

bool SimModule::addressedBy(QByteArrayView request) const
{
    if (request.size() <= kGroupOffset)
        return false;
    const quint8 command = byteAt(request, kCommandOffset);
    const bool toEveryModule = command == kCmdBeckon || (command == kCmdWrite && byteAt(request, kGroupOffset) == kGroupInfo);
    const int address = byteAt(request, kAddressOffset);
    return toEveryModule ? address == kBroadcastAddress : address == memory_.busAddress;
}

bool SimModule::understands(QByteArrayView request)
{
    if (request.size() < kShortRequestLength || request.size() < byteAt(request, kLengthOffset) + 4)
        return false;
    const int n = byteAt(request, kLengthOffset);
    const int group = byteAt(request, kGroupOffset);
    switch (byteAt(request, kCommandOffset)) {
    case kCmdBeckon: return n == 3 && group == kGroupInfo;
    case kCmdRead: return n == 3 && group <= kLastGroup;
    case kCmdWrite: return n == kFullN && group <= kLastGroup;
    case kCmdBalance: return n == kAckN;
    default: return false;
    }
}

Answer SimModule::answer(QByteArrayView request)
{
    const quint8 command = byteAt(request, kCommandOffset);
    const int group = byteAt(request, kGroupOffset);
    Answer a;
    switch (command) {
    case kCmdWrite:
        store(payloadOf(request), group, memory_);
        a.memoryChanged = true;
        a.reply = fullReply(command, group);
        break;
    case kCmdBalance: {
        // The acknowledgement echoes the request's data: 09 and the mask.
        Frame f{};
        for (int i = kDataOffset; i <= kMaskHigh; ++i)
            f[static_cast<size_t>(i)] = byteAt(request, i);
        sealFrame(f, kAckN, static_cast<quint8>(memory_.busAddress), static_cast<quint8>(command + kReplyOffset),
                  static_cast<quint8>(group));
        a.reply = toBytes(f, kAckLength);
        a.balanceMask = static_cast<quint16>(byteAt(request, kMaskLow) | byteAt(request, kMaskHigh) << 8);
        break;
    }
    default:  // beckon and reads
        a.reply = fullReply(command, group);
        break;
    }
    return a;
}

void SimModule::finishBalance(quint16 mask)
{
    const int channels = std::min<int>(memory_.channelCount, kWiredChannels);
    for (int c = 0; c < channels; ++c) {
        if (!(mask & (1u << c)))
            continue;
        ChannelRecord& channel = memory_.channels[static_cast<size_t>(c)];
        channel.balanceValue = balancedValue(seed_, memory_.busAddress, c, channel.balanceValue);
    }
}

QByteArray SimModule::fullReply(quint8 command, int group) const
{
    Frame f{};
    const Block block = Block::ofSelector(group);
    switch (block.kind) {
    case Block::Kind::Information: putInfoBlock(memory_, f); break;
    case Block::Kind::ChannelGroup: putChannelGroup(memory_, block.index, f); break;
    case Block::Kind::AdjustBlock: putAdjustBlock(memory_, block.index, f); break;
    case Block::Kind::CalibrationPair: putCalibrationPair(memory_, block.index, f); break;
    case Block::Kind::Balance: break;
    }
    sealFrame(f, kFullN, static_cast<quint8>(memory_.busAddress), static_cast<quint8>(command + kReplyOffset), static_cast<quint8>(group));
    return toBytes(f, kFullFrameLength);
}

}  // namespace velmor::sim
