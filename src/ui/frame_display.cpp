#include "frame_display.h"

#include "operation_panels.h"
#include "protocol/rebuilt_frames.h"

namespace velmor {

int FrameDisplay::balanceGroup() const { return frame1_->pane()->shownGroup() == 0 ? 0 : 1; }

void FrameDisplay::showRequest(const Request& request)
{
    const QByteArray frame = request.frame();
    const int g = request.block.index;
    switch (request.block.kind) {
    case Block::Kind::Balance: frame1_->pane()->showSent(balanceGroup(), frame); break;
    case Block::Kind::Information: frame3_->showSent(frame); break;
    case Block::Kind::ChannelGroup:
        frame1_->pane()->selectGroup(g);
        frame1_->pane()->showSent(g, frame);
        break;
    case Block::Kind::AdjustBlock:
        frame2_->pane()->selectGroup(g);
        frame2_->pane()->showSent(g, frame);
        break;
    case Block::Kind::CalibrationPair: break;
    }
}

void FrameDisplay::showReply(const Request& request, const QByteArray& frame, const ModuleRecord& record)
{
    const Block block = request.block;
    if (block.kind == Block::Kind::Balance) {
        // The balance's acknowledgement is shown as it came.
        frame1_->pane()->showReturned(balanceGroup(), frame.first(kAckLength));
        return;
    }
    if (block.kind == Block::Kind::CalibrationPair)
        return;
    // The beckon's answer is rebuilt under its code 16 and so goes to the
    // send label; every other reply under its reply code.
    const quint8 code = request.command == kCmdBeckon ? kCmdBeckon : request.command + kReplyOffset;
    const QByteArray rebuilt = rebuiltFrame(record, block, code);
    const bool returned = code >= kFirstReplyCode;
    if (block.kind == Block::Kind::Information) {
        returned ? frame3_->showReturned(rebuilt) : frame3_->showSent(rebuilt);
        return;
    }
    FrameTextPane* pane = block.kind == Block::Kind::ChannelGroup ? frame1_->pane() : frame2_->pane();
    returned ? pane->showReturned(block.index, rebuilt) : pane->showSent(block.index, rebuilt);
}

void FrameDisplay::showEdit(const ModuleRecord& record, Block::Kind kind, const QList<int>& rows)
{
    FrameTextPane* pane = kind == Block::Kind::ChannelGroup ? frame1_->pane() : frame2_->pane();
    QList<int> groups;
    for (int row : rows)
        if (const int g = (row - 1) / kChannelsPerGroup; !groups.contains(g))
            groups << g;
    for (int g : groups)
        pane->showSent(g, rebuiltFrame(record, {kind, g}, kCmdWrite));
    if (!groups.isEmpty())
        pane->selectGroup(groups.first());
}

}  // namespace velmor
