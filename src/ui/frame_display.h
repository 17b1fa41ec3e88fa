#pragma once

#include "link/operations.h"

#include <QByteArray>

namespace velmor {

class AdjustPanel;
class ChannelSetupPanel;
class ModuleInfoPanel;

// Puts each frame under its label: a request as it goes out (its group's tab
// chosen first), a stored reply rebuilt from the record. Calibration frames
// are not shown.
class FrameDisplay {
public:
    FrameDisplay(ChannelSetupPanel* frame1, AdjustPanel* frame2, ModuleInfoPanel* frame3)
        : frame1_(frame1), frame2_(frame2), frame3_(frame3)
    {
    }

    void showRequest(const Request& request);
    void showReply(const Request& request, const QByteArray& frame, const ModuleRecord& record);
    // A grid edit changed these rows (1-based): the write frames of their
    // channel groups or adjust blocks, rebuilt from the record, under the send
    // labels, the first of them on show. `kind` is ChannelGroup or AdjustBlock.
    void showEdit(const ModuleRecord& record, Block::Kind kind, const QList<int>& rows);

private:
    // The balance's frames go under the first group while it is on show,
    // else under the second.
    int balanceGroup() const;

    ChannelSetupPanel* frame1_;
    AdjustPanel* frame2_;
    ModuleInfoPanel* frame3_;
};

}  // namespace velmor
