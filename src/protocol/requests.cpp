#include "requests.h"

#include "blocks.h"

namespace velmor {
namespace {

quint8 addressOf(const ModuleRecord& record) { return static_cast<quint8>(record.busAddress & 0xFF); }

Request shortRequest(quint8 address, quint8 command, Block block, ReplyKind kind)
{
    Request r;
    sealFrame(r.bytes, 3, address, command, static_cast<quint8>(block.selector()));
    r.length = kShortRequestLength;
    r.command = command;
    r.kind = kind;
    r.block = block;
    return r;
}

template <typename Fill>
Request writeRequest(quint8 address, Block block, ReplyKind kind, Fill fill)
{
    Request r;
    fill(r.bytes);
    sealFrame(r.bytes, kFullN, address, kCmdWrite, static_cast<quint8>(block.selector()));
    r.length = kFullFrameLength;
    r.command = kCmdWrite;
    r.kind = kind;
    r.block = block;
    return r;
}

}  // namespace

Request beckonRequest()
{
    // Always AA AA 03 FF 10 00 0F, whatever module is selected.
    return shortRequest(kBroadcastAddress, kCmdBeckon, {Block::Kind::Information}, ReplyKind::Parameter);
}

Request readInfoRequest(int address)
{
    return shortRequest(static_cast<quint8>(address & 0xFF), kCmdRead, {Block::Kind::Information}, ReplyKind::Parameter);
}

Request readChannelGroupRequest(const ModuleRecord& record, int g)
{
    return shortRequest(addressOf(record), kCmdRead, {Block::Kind::ChannelGroup, g}, ReplyKind::Info);
}

Request readAdjustBlockRequest(const ModuleRecord& record, int g)
{
    return shortRequest(addressOf(record), kCmdRead, {Block::Kind::AdjustBlock, g}, ReplyKind::Calibration);
}

Request readCalibrationRequest(const ModuleRecord& record, int k)
{
    return shortRequest(addressOf(record), kCmdRead, {Block::Kind::CalibrationPair, k}, ReplyKind::Calibration);
}

Request writeInfoRequest(const ModuleRecord& record)
{
    // Every module on the line takes it; the address it is to take travels in byte 6.
    return writeRequest(kBroadcastAddress, {Block::Kind::Information}, ReplyKind::Parameter,
                        [&](Frame& f) { putInfoBlock(record, f); });
}

Request writeChannelGroupRequest(const ModuleRecord& record, int g)
{
    return writeRequest(addressOf(record), {Block::Kind::ChannelGroup, g}, ReplyKind::Info,
                        [&](Frame& f) { putChannelGroup(record, g, f); });
}

Request writeAdjustBlockRequest(const ModuleRecord& record, int g)
{
    return writeRequest(addressOf(record), {Block::Kind::AdjustBlock, g}, ReplyKind::Calibration,
                        [&](Frame& f) { putAdjustBlock(record, g, f); });
}

Request writeCalibrationRequest(const ModuleRecord& record, int k)
{
    return writeRequest(addressOf(record), {Block::Kind::CalibrationPair, k}, ReplyKind::Calibration,
                        [&](Frame& f) { putCalibrationPair(record, k, f); });
}

Request balanceRequest(const ModuleRecord& record, qint32 channelMask)
{
    // The mask goes out as a 16-bit pattern; with its bit 15 set (as after the
    // reset to -1) it keeps bits 0..14 and sets the top bit of the high byte.
    // The test is on bit 15, not on the sign of the 32-bit value: a mask that
    // started at -1 stays negative after channel 16 is deselected.
    qint32 m = channelMask & 0xFFFF;
    quint8 top = 0;
    if (m & 0x8000) {
        m &= 0x7FFF;
        top = 0x80;
    }
    Request r;
    r.bytes[kDataOffset] = 9;
    r.bytes[kDataOffset + 1] = static_cast<quint8>(m & 0xFF);
    r.bytes[kDataOffset + 2] = static_cast<quint8>(((m >> 8) | top) & 0xFF);
    sealFrame(r.bytes, kAckN, addressOf(record), kCmdBalance, 0);
    r.length = kAckLength;
    r.command = kCmdBalance;
    r.kind = ReplyKind::Short;
    r.block = {Block::Kind::Balance};
    return r;
}

}  // namespace velmor
