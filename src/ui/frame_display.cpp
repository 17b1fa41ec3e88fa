#include "frame_display.h"

#include "operation_panels.h"
#include "protocol/rebuilt_frames.h"

namespace velmor {

int FrameDisplay::balanceGroup() const { return frame1_->pane()->shownGroup() == 0 ? 0 : 1; }

void FrameDisplay::showRequest(const Request& request, Panel panel, int group)
{
    const QByteArray frame = request.frame();
    const int selector = request.bytes[kGroupOffset];
    if (request.command == kCmdBalance) {
        frame1_->pane()->showSent(balanceGroup(), frame);
    } else if (panel == Panel::ModuleInfo) {
        frame3_->showSent(frame);
    } else if (panel == Panel::ChannelSetup) {
        frame1_->pane()->selectGroup(group);
        frame1_->pane()->showSent(group, frame);
    } else if (selector < kGroupCalibrationFirst) {
        frame2_->pane()->selectGroup(group);
        frame2_->pane()->showSent(group, frame);
    }
}

void FrameDisplay::showReply(const Request& request, const QByteArray& frame, const ModuleRecord& record)
{
    const int group = request.bytes[kGroupOffset];
    if (request.kind == ReplyKind::Short) {
        // The balance's acknowledgement is shown as it came.
        frame1_->pane()->showReturned(balanceGroup(), frame.first(kAckLength));
        return;
    }
    if (group >= kGroupCalibrationFirst)
        return;
    // The beckon's answer is rebuilt under its code 16 and so goes to the
    // send label; every other reply under its reply code.
    const quint8 code = request.command == kCmdBeckon ? kCmdBeckon : request.command + kReplyOffset;
    const QByteArray rebuilt = rebuiltFrame(record, group, code);
    const bool returned = code >= kFirstReplyCode;
    if (group == kGroupInfo) {
        returned ? frame3_->showReturned(rebuilt) : frame3_->showSent(rebuilt);
        return;
    }
    FrameTextPane* pane = group < kGroupAdjustFirst ? frame1_->pane() : frame2_->pane();
    const int g = (group - kGroupChannelsFirst) % kChannelGroups;
    returned ? pane->showReturned(g, rebuilt) : pane->showSent(g, rebuilt);
}

void FrameDisplay::showEdit(const ModuleRecord& record, Panel panel, const QList<int>& rows)
{
    FrameTextPane* pane = panel == Panel::ChannelSetup ? frame1_->pane() : frame2_->pane();
    const int first = panel == Panel::ChannelSetup ? kGroupChannelsFirst : kGroupAdjustFirst;
    QList<int> groups;
    for (int row : rows)
        if (const int g = (row - 1) / kChannelsPerGroup; !groups.contains(g))
            groups << g;
    for (int g : groups)
        pane->showSent(g, rebuiltFrame(record, first + g, kCmdWrite));
    if (!groups.isEmpty())
        pane->selectGroup(groups.first());
}

}  // namespace velmor
